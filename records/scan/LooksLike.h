#pragma once

#include <span>

// Cheap looks at what octets are; nothing is judged.

namespace ca {

/// True when the octets begin with what has the outer form of a certificate (RFC 5280, 4.1): a cheap
/// look at the first members, nothing is judged.
bool LooksLikeCertificate(std::span<const unsigned char> octets);

/// True for octets that begin with the frame of an attribute certificate: a signed SEQUENCE whose
/// first part has the holder where a certificate has its serial number. Looks at a few tags only.
bool LooksLikeAttributeCertificate(std::span<const unsigned char> octets);

/// True for octets that begin with the frame of a certificate revocation list: a signed SEQUENCE
/// whose first part goes on as only TBSCertList does. Looks at a few tags only.
bool LooksLikeCrl(std::span<const unsigned char> octets);

}  // namespace ca
