#pragma once

#include "records/CertInfo.h"

#include <span>
#include <string>

class CAsn1IssuerAndSerialNumber;

namespace ca {

/// True when the octets begin as a certificate does and end inside it: a file that was not copied
/// whole. Linear in the octets.
bool LooksLikeCutCertificate(std::span<const unsigned char> octets);

/// Describes a certificate. What cannot be read is said in `record.error`, never hides the rest,
/// and so is how many extensions there was no room for (CAnswerBudget). Of one that was cut off all
/// in front of the cut is filled, and the fault says where the octets end.
/// Names, texts and words are in the current language; "HasPrivateKey" stays as it is.
/// \param der  the certificate as received; kept as it is.
/// Throws ca::Exception 16113 for octets that are not a certificate at all.
void FillCertInfo(std::span<const unsigned char> der, CertInfo& record);

/// What a message says of a certificate that it names: the forms of its issuer, and its serial
/// number (RFC 5652, 10.2.4). Members that could not be read are left out.
void FillFromIdentifier(const CAsn1IssuerAndSerialNumber& identifier, CertInfo& record);

}  // namespace ca
