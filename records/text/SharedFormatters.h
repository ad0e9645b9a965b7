#pragma once

#include "asn1/Elements.h"
#include "records/text/TextLines.h"

#include <span>
#include <string>

// Formatters that several extensions and attributes share, and parts of such texts. A formatter
// throws ca::Exception for a value that is not of that type.

namespace ca {

/// The text of a member of any type, ValueText(); "" for null.
std::wstring MemberText(const CAsn1Object* member);

/// The characters of a UTF-8 text inside an OCTET STRING.
std::wstring HiddenText(const CAsn1Object* octets);

/// "more" after ", " where a list has begun; nothing for an empty one.
void AppendListed(std::wstring& text, std::wstring_view more);

void SayText(std::span<const unsigned char> value, CTextLines& lines);  ///< any string type
void SayOctetString(std::span<const unsigned char> value,
                    CTextLines& lines);                                      ///< hexadecimal digits
void SayTimeValue(std::span<const unsigned char> value, CTextLines& lines);  ///< UTC or generalised
void SayOidValue(std::span<const unsigned char> value, CTextLines& lines);   ///< "Name (OID)"
void SayOidList(std::span<const unsigned char> value, CTextLines& lines);    ///< SEQUENCE OF them
void SayNames(std::span<const unsigned char> value, CTextLines& lines);      ///< GeneralNames
void SayPrivateKeyUsagePeriod(std::span<const unsigned char> value, CTextLines& lines);
void SayPresent(std::span<const unsigned char> value, CTextLines& lines);  ///< of any value

}  // namespace ca
