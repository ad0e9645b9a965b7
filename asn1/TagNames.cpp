#include "asn1/TagNames.h"

#include "common/DecimalText.h"

#include <string_view>

namespace {

// In which form a type is called by its outline name. OCTET STRINGs in segments are common; other
// strings in segments are shown by their number, so that they are noticed.
enum class Form : unsigned char { kPrimitive, kConstructed, kEither };

struct TagRow {
    const char* listing;       // ITU-T X.680, 8.6, table 1
    const char* dump;          // the words of the typed classes; "" without a class
    std::string_view outline;  // "": its number
    Form outlined;
};

// By tag number.
// clang-format off
constexpr TagRow kUniversal[] = {
    {"END OF CONTENTS", "", "", Form::kPrimitive},
    {"BOOLEAN", "BOOLEAN", "BOOLEAN", Form::kPrimitive},
    {"INTEGER", "INTEGER", "INTEGER", Form::kPrimitive},
    {"BIT STRING", "BIT STRING", "BIT STRING", Form::kPrimitive},
    {"OCTET STRING", "OCTET STRING", "OCTET STRING", Form::kEither},
    {"NULL", "NULL", "NULL", Form::kPrimitive},
    {"OBJECT IDENTIFIER", "OBJECT IDENTIFIER", "OBJECT IDENTIFIER", Form::kPrimitive},
    {"ObjectDescriptor", "", "", Form::kPrimitive},
    {"EXTERNAL", "", "", Form::kPrimitive},
    {"REAL", "", "", Form::kPrimitive},
    {"ENUMERATED", "", "ENUMERATED", Form::kPrimitive},
    {"EMBEDDED PDV", "", "", Form::kPrimitive},
    {"UTF8String", "UTF8 STRING", "UTF8 STRING", Form::kPrimitive},
    {"RELATIVE-OID", "", "RELATIVE OID", Form::kPrimitive},
    {"TIME", "", "", Form::kPrimitive},
    {"[UNIVERSAL 15]", "", "", Form::kPrimitive},
    {"SEQUENCE", "", "SEQUENCE", Form::kConstructed},
    {"SET", "", "SET", Form::kConstructed},
    {"NumericString", "NUMERIC STRING", "NUMERIC STRING", Form::kPrimitive},
    {"PrintableString", "PRINTABLE STRING", "PRINTABLE STRING", Form::kPrimitive},
    {"TeletexString", "TELETEX STRING", "TELETEX STRING", Form::kPrimitive},
    {"VideotexString", "", "", Form::kPrimitive},
    {"IA5String", "IA5 STRING", "IA5 STRING", Form::kPrimitive},
    {"UTCTime", "UTC TIME", "UTC TIME", Form::kPrimitive},
    {"GeneralizedTime", "GENERALIZED TIME", "GENERALIZED TIME", Form::kPrimitive},
    {"GraphicString", "", "", Form::kPrimitive},
    {"VisibleString", "", "VISIBLE STRING", Form::kPrimitive},
    {"GeneralString", "", "GENERAL STRING", Form::kPrimitive},
    {"UniversalString", "", "UNIVERSAL STRING", Form::kPrimitive},
    {"CHARACTER STRING", "", "", Form::kPrimitive},
    {"BMPString", "UNICODE STRING", "UNICODE STRING", Form::kPrimitive},
    {"[UNIVERSAL 31]", "", "", Form::kPrimitive},
};
// clang-format on

constexpr unsigned kNumberBits = 0x1F;
constexpr unsigned kConstructedBit = 0x20;

unsigned ClassOf(unsigned tag) {
    return tag >> 6U;
}

bool IsOutlined(const TagRow& row, bool isConstructed) {
    return !row.outline.empty() &&
           (row.outlined == Form::kEither || (row.outlined == Form::kConstructed) == isConstructed);
}

}  // namespace

const char* Asn1TagName(unsigned char tag) noexcept {
    // What is constructed or of another class has no word in the dump.
    return tag <= kNumberBits ? kUniversal[tag].dump : "";
}

namespace ca {

std::string TagText(std::uint8_t tag) {
    static constexpr const char* kClasses[] = {"", "APPLICATION ", "", "PRIVATE "};
    // Tag numbers are those of one octet: 31 stands for all that go on in further ones.
    const unsigned number = tag & kNumberBits;
    if (ClassOf(tag) == 0) {
        return kUniversal[number].listing;
    }
    return std::string("[") + kClasses[ClassOf(tag)] + std::to_string(number) + "]";
}

std::wstring OutlineTagText(std::uint8_t tag) {
    static constexpr std::string_view kClasses[] = {"[UNIVERSAL ", "[APPLICATION ", "[",
                                                    "[PRIVATE "};
    const unsigned number = tag & kNumberBits;
    const TagRow& row = kUniversal[number];
    if (ClassOf(tag) == 0 && IsOutlined(row, (tag & kConstructedBit) != 0)) {
        return {row.outline.begin(), row.outline.end()};
    }
    const std::string_view start = kClasses[ClassOf(tag)];
    return std::wstring(start.begin(), start.end()) + DecimalText(number) + L"]";
}

}  // namespace ca
