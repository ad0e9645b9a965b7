#pragma once

#include <span>
#include <string_view>

namespace ca {

/// What names a certificate or its holder, as encoded: views of the octets.
struct CertificateNames {
    std::string_view issuer;   ///< the Name
    std::string_view serial;   ///< content of the INTEGER
    std::string_view subject;  ///< the Name
    std::string_view digest;   ///< of a holder: SHA-1 of its certificate or its key, as octets
};

/// The names in something that looks like a certificate.
CertificateNames NamesOf(std::span<const unsigned char> certificate);

/// The subject key identifier of what looks like a certificate (RFC 5280, 4.2.1.2): a view, empty
/// when there is none.
std::span<const unsigned char> SubjectKeyIdentifier(std::span<const unsigned char> certificate);
/// The same of its issuer, as the certificate names it (RFC 5280, 4.2.1.1).
std::span<const unsigned char> IssuerKeyIdentifier(std::span<const unsigned char> certificate);

/// What names the certificate of the holder (RFC 5755, 4.2.2): issuer and serial number, the
/// subject, or a digest; of names other than a directory's nothing. Views the octets.
CertificateNames HolderNames(std::span<const unsigned char> attributeCertificate);

}  // namespace ca
