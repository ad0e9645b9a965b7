#pragma once

#include "records/text/TextLines.h"

#include <span>
#include <string>

class CAsn1OtherHash;

// What an advanced signature keeps for its later check (RFC 5126, 6.2, 6.3): certificates and
// revocation data, or references to them. Each text begins with a count.

namespace ca {

/// "SHA-256: hex"
std::wstring OtherHashText(const CAsn1OtherHash& hash);

// Formatters of attributes; they throw ca::Exception for a value that is of another type.
void SayRevocationRefs(std::span<const unsigned char> value, CTextLines& lines);
void SayCertificateValues(std::span<const unsigned char> value, CTextLines& lines);
/// RevocationValues, and RevocationInfoArchival of documents (ISO 32000-1 12.8.3.3.2).
void SayRevocationValues(std::span<const unsigned char> value, CTextLines& lines);

}  // namespace ca
