#pragma once

#include "records/text/TextLines.h"

#include <string>

class CAsn1Any;
class CAsn1Object;
class CAsn1PolicyInformation;

namespace ca {

/// Says a certificate policy, "Name (OID)", with its qualifiers below (RFC 5280, 4.2.1.4).
void SayPolicy(const CAsn1PolicyInformation& policy, CTextLines& lines);

/// Says a UserNotice: its text, below that organization and numbers. Throws ca::Exception for a
/// value that is none.
void SayNotice(const CAsn1Any& notice, CTextLines& lines);

/// A magnitude as a decimal number where it fits, in hexadecimal digits otherwise.
std::wstring NumberText(const CAsn1Object* number);

}  // namespace ca
