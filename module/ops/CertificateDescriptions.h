#pragma once

#include "records/Payload.h"
#include "records/fill/CertificateBundle.h"

#include <vector>

namespace ca {

/// The certificates among the objects of a payload, counted in the answer's budget. Throws 16113,
/// with what the objects are instead, when there is none.
/// \param orCut  a certificate that was cut off will do where there is no whole one.
CertificateBundle RequireCertificates(const std::vector<PayloadItem>& items, bool orCut = false);

/// Throws what describing the certificates of a payload throws: they must be readable. Nothing is
/// kept of them.
void CheckCertificates(const std::vector<PayloadItem>& items);

}  // namespace ca
