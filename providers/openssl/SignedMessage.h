#pragma once

#include "providers/openssl/OpenSslLibrary.h"
#include "records/FileData.h"

#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace ca {

/// Who signs, and how.
struct Signer {
    X509Ptr certificate;
    KeyPtr key;
    DigestPtr digest;
    bool isPss = false;               ///< RSASSA-PSS with an RSA key (RFC 4056)
    std::vector<X509Ptr> companions;  ///< certificates that the message is to carry
};

/// A CMS SignedData (RFC 5652 5) that is being signed, with the attributes of CAdES-BES (ETSI EN
/// 319 122-1): content type, digest, signing time, signing certificate.
class CSignedMessage {
  public:
    /// A message without signers.
    explicit CSignedMessage(const COpenSslLibrary& library);
    /// One that has some. Throws 16308 for what is not a signed message.
    CSignedMessage(const COpenSslLibrary& library, std::span<const unsigned char> message);
    CSignedMessage(CSignedMessage&& other) noexcept
        : m_message(std::move(other.m_message)),
          m_held(std::exchange(other.m_held, nullptr)),
          m_latest(std::exchange(other.m_latest, nullptr)) {}
    CSignedMessage& operator=(CSignedMessage&&) = delete;
    ~CSignedMessage();

    /// Signs content, which the message views afterwards when `isAttached`; for a message without
    /// signers only. Throws what OpenSSL's failure means.
    void SignContent(const Signer& signer, std::span<const unsigned char> content, bool isAttached);
    /// Adds a signature over the same content as the others'.
    /// \param content  where the message does not hold it. Throws 16307 when it is missing.
    void AddSignature(const Signer& signer, std::optional<std::span<const unsigned char>> content);

    /// Adds a signature over content by its digest. Throws 16268 for one of another length.
    void AddDigest(const Signer& signer, std::span<const unsigned char> digest);
    /// Signs the value of one of the signatures (RFC 5652, 11.4). Throws 16268 when there is none of
    /// that index.
    void Countersign(const COpenSslLibrary& library, const Signer& signer, std::uint32_t index);
    /// The octets of the signature that was added last.
    std::span<const unsigned char> LatestSignature() const;
    /// Adds a time stamp of it (RFC 3161, appendix A; CAdES-T). Throws 16197.
    void AddTimeStamp(std::span<const unsigned char> token);

    void Write(FileData& encoded) const;

  private:
    CMS_SignerInfo* NewSigner(const Signer& signer);
    void AddCompanions(const Signer& signer);
    void Finish(CMS_SignerInfo* added, const Signer& signer, std::span<const unsigned char> digest);

    CmsPtr m_message;
    ASN1_OCTET_STRING* m_held = nullptr;  // of m_message: views the content that was signed
    CMS_SignerInfo* m_latest = nullptr;   // of m_message
};

/// The digest of octets.
std::vector<unsigned char> DigestOf(const EVP_MD* digest, std::span<const unsigned char> octets);

}  // namespace ca
