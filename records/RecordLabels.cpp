#include "records/RecordLabels.h"

#include "common/Encode.h"
#include "common/Lazy.h"
#include "records/text/FieldNames.h"

#include <unordered_map>

namespace {

using ca::RecordLabel;
using LabelTable = std::unordered_map<std::string_view, RecordLabel>;
using enum ca::MemberForm;

#define HOST_LABEL(key, english, russian, form) {key, {english, russian, form, ""}},
#define HOST_FORM(key, base, english, russian) {key, {english, russian, kForm, base}},

ca::CLazy<LabelTable> recordLabels([] {
    return LabelTable{
#include "records/RecordLabels.inc"
    };
});

// Members that are something else in the records of an envelope's recipients, which are those of
// certificates that are only named.
ca::CLazy<LabelTable> recipientLabels([] {
    return LabelTable{
#include "records/RecipientLabels.inc"
    };
});

#undef HOST_FORM
#undef HOST_LABEL

// The captions of descriptions' own fields.
ca::CLazy<LabelTable> fieldLabels([] {
    LabelTable table;
    for (const ca::FieldName& name : ca::AllFieldNames()) {
        table.emplace(name.key, RecordLabel{ca::u16u8(name.english), ca::u16u8(name.russian)});
    }
    return table;
});

const RecordLabel* FindIn(const LabelTable& labels, std::string_view key) {
    const auto found = labels.find(key);
    return found == labels.end() ? nullptr : &found->second;
}

// Two records have named texts, with different keys.
constexpr ca::NamedTextKeys kNamedTexts[] = {
    {"OidFriendlyName", "OidValue", "FormattedData", "RawData", nullptr},
    {"ExtensionName", "ExtensionOID", "ExtensionInterpretedString", "ExtensionInterpretedData",
     "Attributes"},
};

}  // namespace

namespace ca {

const RecordLabel* FindRecordLabel(std::string_view key, RecordSort sort) {
    const RecordLabel* special = nullptr;
    if (sort != RecordSort::kRecord) {
        special =
            FindIn((sort == RecordSort::kRecipient ? recipientLabels : fieldLabels).Get(), key);
    }
    return special != nullptr ? special : FindIn(recordLabels.Get(), key);
}

const NamedTextKeys* FindNamedText(const JsonValue& object) {
    for (const NamedTextKeys& keys : kNamedTexts) {
        if (object.IsObject() && object.HasMember(keys.oid)) {
            return &keys;
        }
    }
    return nullptr;
}

}  // namespace ca
