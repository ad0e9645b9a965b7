#include "records/text/FieldNames.h"

#include "common/Lng.h"

namespace {

constexpr ca::FieldName kFieldNames[] = {
#define CA_FIELD(name, key, english, russian) {key, english, russian},
#include "records/text/DescriptionFields.inc"
#undef CA_FIELD
};

}  // namespace

namespace ca {

const wchar_t* FieldName::Caption() const noexcept {
    return IsRussian() ? russian : english;
}

const FieldName& NameOf(FieldId id) noexcept {
    return kFieldNames[static_cast<std::size_t>(id)];
}

std::span<const FieldName> AllFieldNames() noexcept {
    return kFieldNames;
}

}  // namespace ca
