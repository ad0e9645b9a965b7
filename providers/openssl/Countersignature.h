#pragma once

#include "providers/openssl/OpenSslLibrary.h"

#include <span>

namespace ca {

/// A signature on the value of another one (RFC 5652, 11.4). OpenSSL reads and checks signers of
/// messages only, and wants of their attributes what those of this one must not have; so it is read
/// as the signer of a message that holds nothing else, and its value is verified here.
class CCountersignature {
  public:
    /// \param signer  a SignerInfo as encoded. Throws 16308 for what is none.
    CCountersignature(const COpenSslLibrary& library, std::span<const unsigned char> signer);

    CMS_SignerInfo* Signer() const noexcept { return m_signer; }
    /// Whether the attributes are those of a signature over `value`: a digest of it, and no content
    /// type but that of plain data, which older programs add. Without attributes nothing is to fit.
    bool HasDigestOf(std::span<const unsigned char> value) const;
    /// Whether the signature is the key's, over the attributes, or without any over `value` itself.
    bool IsSignedBy(EVP_PKEY* key, std::span<const unsigned char> value) const;

  private:
    const COpenSslLibrary& m_library;
    CmsPtr m_message;          // the one that is made around it
    CMS_SignerInfo* m_signer;  // of m_message
};

}  // namespace ca
