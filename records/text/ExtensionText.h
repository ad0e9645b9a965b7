#pragma once

#include "asn1/Asn1Typed.h"
#include "asn1/Oid.h"
#include "asn1/views/ExtensionView.h"
#include "records/text/TextLines.h"

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ca {

/// Says the value of one type of extension, a line an element.
/// \param value  the encoding inside extnValue.
/// Throws ca::Exception for a value that is not of that type.
using ExtensionFormatter = void (*)(std::span<const unsigned char> value, CTextLines& lines);

/// Which formatter an extension has.
struct ExtensionRow {
    COid type;
    ExtensionFormatter say;
};

/// Finds formatters by their identifier.
class CFormatterTable {
  public:
    explicit CFormatterTable(std::initializer_list<std::span<const ExtensionRow>> subjects);

    /// Null for an identifier without one.
    ExtensionFormatter Find(std::span<const unsigned char> oid) const;

  private:
    COidMap<ExtensionFormatter> m_formatters;
};

// The rows by subject.
std::span<const ExtensionRow> StandardExtensionRows();    ///< RFC 5280, certificates and CRLs
std::span<const ExtensionRow> AttributeExtensionRows();   ///< attribute certificates
std::span<const ExtensionRow> QualifiedExtensionRows();   ///< qualified and national profiles
std::span<const ExtensionRow> ProfessionExtensionRows();  ///< professions, powers of attorney
std::span<const ExtensionRow> NetworkExtensionRows();     ///< TLS, transparency, routing
std::span<const ExtensionRow> MediaExtensionRows();       ///< logotypes, biometrics
std::span<const ExtensionRow> VendorExtensionRows();      ///< makers' own, obsolete ones

/// Key usage bits as records carry them: the first octet in bits 7 to 0, the second in 15 to 8
/// (RFC 5280, 4.2.1.3). Bits after the last one are not usages.
std::uint32_t KeyUsageOf(const CAsn1Bits& bits);

/// The names of key usage bits as KeyUsageOf() gives them, ", " between them.
std::wstring KeyUsageText(std::uint32_t bits);

/// Says a key usage in words, after them its octets (RFC 5280, 4.2.1.3).
void SayKeyUsage(const CAsn1Bits& bits, CTextLines& lines);

/// A value in words.
struct ValueForms {
    std::wstring text;
    std::wstring error;  ///< the object identifier and what was wrong; empty when nothing was
};

/// The text of an extension's value; an outline, or digits for what is not an element, for a type
/// without a formatter and, "Unreadable value: " in front, for a value that is not of its type.
/// Cost is linear in the value.
ValueForms DescribeExtension(std::span<const unsigned char> oid,
                             std::span<const unsigned char> value);

/// Says a value, by its formatter or, when that is null or refuses it, as an outline or digits.
/// \return why the formatter refused it; empty when it did not.
std::wstring SayValue(ExtensionFormatter say, std::span<const unsigned char> value,
                      CTextLines& lines);

/// Where the parts of an extension stand; empty what could not be read.
struct ExtensionParts {
    std::span<const unsigned char> oid;    ///< content octets of extnID
    std::span<const unsigned char> value;  ///< the encoding inside extnValue
    std::vector<unsigned char> joined;     ///< what it views when extnValue came in segments
};

/// An Extension (RFC 5280, 4.1) in words.
struct ExtensionForms {
    ExtensionParts parts;
    std::span<const unsigned char> shown;  ///< the value, or the octets that could not be read
    std::wstring text;                     ///< what they say
    bool isCritical = false;
};

/// Describes one extension; what is wrong is appended to `error`. The identifier is there whatever
/// stands after it.
/// \param extension  of octets that are not an element those alone are said
/// (CAsn1Cursor::StepOrRest()).
ExtensionForms DescribeExtension(const CAsn1ExtensionView& extension, std::wstring& error);

/// Adds a fault to a record's "Error", one a line. What is past MaxValueText() characters is an
/// ellipsis.
void AddError(std::wstring& errors, std::wstring_view fault);
/// The same with the place in front, "Issuer: fault"; no fault adds nothing.
void AddError(std::wstring& errors, Sentence place, std::wstring_view fault);
/// The same for a fault in a value of a type, "Name (OID): fault"; no type has no place.
void AddValueError(std::wstring& errors, std::span<const unsigned char> type,
                   std::wstring_view fault);

/// Notes each type that stands among `types` more than once. Sorts them.
void NoteRepeated(std::vector<std::span<const unsigned char>>& types, std::wstring& errors);

/// Says in a record's "Error" how many more elements there are than are described; 0 says nothing.
void AddMore(std::wstring& errors, std::size_t count);

}  // namespace ca
