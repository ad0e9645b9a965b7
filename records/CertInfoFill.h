#pragma once

#include "records/CertInfo.h"

#include <span>
#include <string>

namespace ca {

/// True when the octets begin with what has the outer form of a certificate (RFC 5280 4.1): a cheap
/// look at the first members, nothing is judged.
bool LooksLikeCertificate(std::span<const unsigned char> octets);

/// Describes a certificate. What cannot be read is said in `record.error`, never hides the rest.
/// Names, texts and words are in the current language; "HasPrivateKey" stays as it is.
/// \param der  the certificate as received; kept as it is.
/// Throws ca::Exception 16113 for octets that are no certificate at all.
void FillCertInfo(std::span<unsigned char> der, CertInfo& record);

/// The SHA-1 of octets as 40 lower-case hexadecimal digits.
std::wstring Sha1Hex(std::span<const unsigned char> octets);

}  // namespace ca
