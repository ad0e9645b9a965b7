#pragma once

#include "providers/openssl/Chain.h"

#include <span>

namespace ca {

/// Adds to what helps to judge a message's certificates what stands in it beside its certificates
/// and lists: OCSP answers as revocation information of another format (RFC 5940), and the values
/// in unsigned attributes (RFC 5126, 6.3.3, 6.3.4).
void CollectEvidence(const COpenSslLibrary& library, CMS_ContentInfo* message,
                     std::span<const unsigned char> encoding, Companions& companions);

/// An OCSP answer for the companions. False for what is none.
bool AddOcspAnswer(std::span<const unsigned char> octets, Companions& companions);

/// Adds the certificates and lists of others, which both keep.
void AddCompanions(const Companions& others, Companions& companions);

}  // namespace ca
