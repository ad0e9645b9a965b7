#pragma once

#include <cstdint>
#include <span>

namespace ca {

/// What the fields are called; the rows of DescriptionFields.inc.
enum class FieldId : std::uint8_t {
#define CA_FIELD(name, key, english, russian) name,
#include "records/text/DescriptionFields.inc"
#undef CA_FIELD
};

/// One row of them.
struct FieldName {
    const char* key;  ///< in JSON; never changes
    const wchar_t* english;
    const wchar_t* russian;

    /// The caption in the current language.
    const wchar_t* Caption() const noexcept;
};

const FieldName& NameOf(FieldId id) noexcept;
/// All of them.
std::span<const FieldName> AllFieldNames() noexcept;

}  // namespace ca
