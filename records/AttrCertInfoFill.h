#pragma once

#include "records/AttrCertInfo.h"
#include "records/CertificateBundle.h"

#include <span>

namespace ca {

/// True for octets that begin with the frame of an attribute certificate: a signed SEQUENCE whose
/// first part has the holder where a certificate has its serial number. Looks at a few tags only.
bool LooksLikeAttributeCertificate(std::span<const unsigned char> octets);

/// What names the certificate of the holder (RFC 5755 4.2.2): issuer and serial number, the
/// subject, or a digest; of names that are no directory's nothing. Views the octets.
CertificateNames HolderNames(std::span<const unsigned char> attributeCertificate);

/// Describes an attribute certificate, version 2 (RFC 5755 4) or 1 (RFC 5652 10.2.7, X.509-1997).
///
/// What cannot be read leaves its fields empty, or as "Unreadable value: " and digits, and is named
/// in `record.error`; everything else is filled, as far as there is room for it (CAnswerBudget).
/// Cost is linear in the octets.
/// \param der     one element, as received; never changed. Octets behind it are named as a fault.
/// \param record  a fresh one; owns all it gets.
/// Throws only std::bad_alloc.
void FillAttrCertInfo(std::span<const unsigned char> der, AttrCertInfo& record);

}  // namespace ca
