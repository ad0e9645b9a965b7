#pragma once

#include "providers/openssl/Owners.h"
#include "records/CertInfo.h"

#include <cstddef>
#include <vector>

namespace ca {

/// Nests the issuers of a chain's first certificate into its record, as far as there is room: in
/// the answer, and in `room`, octets of encodings, from which what was described is taken. How many
/// are left out is said in "Error".
void FillIssuers(const std::vector<X509Ptr>& chain, std::size_t& room, CertInfo2& record);

}  // namespace ca
