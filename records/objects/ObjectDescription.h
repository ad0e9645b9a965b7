#pragma once

#include "common/Json.h"
#include "records/text/FieldNames.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

// What a file holds that no request of the protocol describes: an ordered tree of fields with
// captions, in the current language. Whoever shows it needs to know nothing of the object's kind.

namespace ca {

struct ObjectKind;

/// What a field is.
enum class FieldForm : std::uint8_t {
    kText,    ///< a value, lines with "\n" between them
    kGroup,   ///< members
    kList,    ///< elements of any form; a text among groups says how many more there are
    kNamed,   ///< an extension or an attribute: it has a name of its own
    kObject,  ///< an object with a description of its own, such as a certificate
};

struct DescriptionField {
    FieldId id = {};  ///< of an element: that of its list
    FieldForm form = FieldForm::kText;
    std::wstring text;  ///< of a text and of what is named; of an object: what it is about
    std::wstring name;  ///< of what is named: "Key usage"
    std::wstring oid;   ///< of what is named: dotted
    std::optional<bool> isCritical;        ///< of an extension
    std::vector<DescriptionField> fields;  ///< members or elements
    const ObjectKind* kind = nullptr;      ///< of an object
    /// The encoding of an object or of an extension's value.
    std::vector<unsigned char> octets;

    /// "Key usage" of what is named, else the caption of its id.
    std::wstring Caption() const;
};

/// Objects nested in one another that ToJson() describes.
inline constexpr unsigned kMaxNestedObjects = 4;

/// The description of one object.
struct ObjectDescription {
    const ObjectKind* kind = nullptr;  ///< never null when it comes from DescribeObject()
    std::vector<DescriptionField> fields;
    std::wstring error;      ///< what is wrong with the object, a fault a line
    std::size_t octets = 0;  ///< of the object

    /// Writes one object with the fields under their keys, lists as arrays, and "error". What is
    /// named is an object as extensions are in records ("OidFriendlyName", "OidValue", ...), a
    /// nested object is its record or its own description, as far as there is room for it
    /// (CAnswerBudget).
    /// \param nested  objects that stand around this one.
    void ToJson(JsonWriter& writer, unsigned nested = 0) const;
};

}  // namespace ca
