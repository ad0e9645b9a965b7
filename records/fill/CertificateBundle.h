#pragma once

#include "asn1/Asn1Element.h"
#include "records/CertInfo.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace ca {

/// The certificates found in what a client handed in.
struct CertificateBundle {
    std::vector<std::span<const unsigned char>> certificates;  ///< encodings, in order; views
    /// All came out of one PKCS #7 message, which is how a certificate travels with its chain.
    bool isMessage = false;
};

/// Collects the certificates of one object: certificates one after the other, or those that a
/// SignedData carries (RFC 5652, 5.1). Other elements are passed over.
void CollectCertificates(std::span<const unsigned char> object, CertificateBundle& bundle);

/// Stands for no index of a bundle.
inline constexpr std::size_t kNoCertificate = static_cast<std::size_t>(-1);

/// Who issued whom in a bundle: the index of each certificate's issuer, kNoCertificate where there
/// is none and for what issued itself. Issuers are found by name and, where stated, key identifier.
std::vector<std::size_t> FindIssuers(const CertificateBundle& bundle);

/// Index of the one certificate of the bundle that issued no other and whose path of issuers, as
/// far as it is nested, covers all of them; kNoCertificate when there is none.
std::size_t FindLeaf(const CertificateBundle& bundle);

/// Records of issuers that may be nested in one description.
inline constexpr std::size_t kMaxIssuers = 16;

/// Describes certificate `index` with its issuers nested, each once, as far as the bundle holds
/// them and to kMaxIssuers. Issuers are found by name and, where stated, key identifier. Throws
/// what FillCertInfo() throws for the first.
void FillWithIssuers(const CertificateBundle& bundle, std::size_t index, CertInfo2& record);

}  // namespace ca
