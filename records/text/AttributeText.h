#pragma once

#include "asn1/Asn1List.h"
#include "records/AttrCertInfo.h"
#include "records/text/Elements.h"
#include "records/text/ExtensionText.h"
#include "records/text/TextLines.h"

#include <span>
#include <string>

class CAsn1ObjectDigestInfo;

namespace ca {

/// Says each value of an attribute, of signatures and of attribute certificates: an outline or
/// hexadecimal digits for a type without a formatter; a value that is not of its type is said as
/// unreadable, and added to `error`. Throws ca::Exception for values that are no elements.
void SayAttributeValues(Octets type, const CAsn1SetOf<CAsn1Any>& values, CTextLines& lines,
                        std::wstring& error);

/// Appends the record of one attribute of an attribute certificate (RFC 5755 4.4); what is wrong is
/// added to `error`. The raw data is the encoding of its values, one behind the other.
void FillAttribute(const CAsn1Element& attribute, CertInfoAttributeCollection& records,
                   std::wstring& error);

/// "SHA-256: hex"
std::wstring ObjectDigestText(const CAsn1ObjectDigestInfo& digest);

/// A name of GeneralNames for use inside a line: a directory's as such, others with their kind.
std::wstring GeneralNameLine(const CAsn1Element& name);
/// All names of GeneralNames in a line, ", " between them; at most kMaxListed.
std::wstring GeneralNamesLine(std::span<unsigned char> content);

}  // namespace ca
