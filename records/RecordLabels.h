#pragma once

#include "common/Json.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace ca {

/// How a member of a record is shown to people.
enum class MemberForm : std::uint8_t {
    kShown,
    kHidden,
    kRows,  ///< a list of short records, each in a line
    kForm,  ///< another form of a member that is shown: for those who want all of them
};

/// What a member of a record is called in a text for people.
struct RecordLabel {
    std::string english;  ///< UTF-8, as `russian`
    std::string russian;
    MemberForm form = MemberForm::kShown;
    const char* base = "";  ///< of another form: the key of the member that is shown, "" for none

    const std::string& In(bool inRussian) const { return inRussian ? russian : english; }
};

/// Where keys mean something else.
enum class RecordSort : std::uint8_t {
    kRecord,
    kRecipient,    ///< of an envelope
    kDescription,  ///< an ObjectDescription, with records inside
};

/// The label of a member by its JSON key; null for a key without one, which is shown as it stands.
const RecordLabel* FindRecordLabel(std::string_view key, RecordSort sort = RecordSort::kRecord);

/// The members of an extension or attribute, by which it is shown: name, object identifier, text
/// and encoding; the key of the label that a list of them has, where that is not the one of its
/// own key.
struct NamedTextKeys {
    const char* name;
    const char* oid;
    const char* text;
    const char* data;
    const char* list;
};

/// The keys of an object that is an extension or attribute; null for another one.
const NamedTextKeys* FindNamedText(const JsonValue& object);

}  // namespace ca
