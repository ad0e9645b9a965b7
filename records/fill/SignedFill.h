#pragma once

#include "asn1/Asn1Time.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "common/Lng.h"
#include "records/text/TimeText.h"

#include <cstdint>
#include <string>

// What records of signed objects (certificates, lists, attribute certificates) have in common. All
// accept null for a member that is absent or could not be read; faults are added to `error`.

namespace ca {

/// "V2" for the number 1; an absent one is V1. \param highest  the last number that is known.
std::wstring VersionText(const CAsn1Integer* version, std::int64_t highest, std::wstring& error);

/// The texts of a time; an impossible one is a fault, told with its place, and leaves them empty.
TimeForms TimeOf(const CAsn1Time* time, Sentence place, std::wstring& error);

/// "SignatureAlg" and "HashAlg", from the outer identifier where there is one. That the signed one
/// inside differs is a fault.
void FillSignatureAlgorithm(const CAsn1AlgorithmIdentifier* outer,
                            const CAsn1AlgorithmIdentifier* inner, std::wstring& signatureAlg,
                            std::wstring& hashAlg, std::wstring& error);

}  // namespace ca
