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

    // Codes whose text is a message of its own, or that have none.
    kErrNone = 0,
    kErrPrivateKeyAccess = 50,  ///< A gated mode without permission; has no text.
    kErrNoData = 232,
    kErrFileOperation = 16101,
    kErrStore = 16102,
    kErrNeedMore = 16104,
    kErrSignatureInvalid = 16109,
    kErrCertTimeInvalid = 16123,
    kErrNotVerified = 16199,  ///< A verdict: nothing was checked.
    kErrChainValid = 16200,   ///< A verdict: checked and found good.

    // The ASN.1 engine's codes.
    kErrAsn1UnexpectedEnd = 0x80093102,
    kErrAsn1Corrupted = 0x80093103,
    kErrAsn1BadTag = 0x8009310B,
};

}  // namespace ca
