#pragma once

#include "asn1/views/NameViews.h"
#include "records/text/TextLines.h"

#include <string>

namespace ca {

/// Says a GeneralName (RFC 5280, 4.2.1.6) as one line, "DNS: a.example"; X.400 and EDI names as
/// lines below a caption. What is not one is said as unreadable.
void SayGeneralName(const CAsn1GeneralNameView& name, CTextLines& lines);

/// Each name of GeneralNames.
void SayGeneralNames(const CAsn1GeneralNamesView& names, CTextLines& lines);

/// An IPv4 or IPv6 address, the latter as RFC 5952 has it; "" for another number of octets.
std::wstring IpAddressText(Octets address);

/// Address and mask one after the other, as name constraints hold them (RFC 5280, 4.2.1.10):
/// "192.0.2.0/24", the mask itself where it is not a prefix; "" for another number of octets.
std::wstring IpRangeText(Octets addressAndMask);

/// "Name (OID)"; the identifier alone when it has no name.
std::wstring OidWithName(Octets oid);

}  // namespace ca
