#pragma once

#include <cstdint>

namespace ca {

/// Codes that have a row in one of the text tables.
enum ErrorCode : std::uint32_t {
#define CA_ERROR(name, code, english, russian) name = code,
#include "common/ErrorTable.inc"
#undef CA_ERROR
#define CA_MODULE_ERROR(name, code, english, russian) name = code,
#include "common/ModuleErrorTable.inc"
#undef CA_MODULE_ERROR
#define CA_CHAIN_ERROR(name, code, english, russian) name = code,
#include "common/ChainErrorTable.inc"
#undef CA_CHAIN_ERROR
#define CA_FIXED_ERROR(name, code, meaning) name = code,
#include "common/FixedErrorTable.inc"
#undef CA_FIXED_ERROR
};

}  // namespace ca
