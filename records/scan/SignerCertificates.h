#pragma once

#include "asn1/Asn1Element.h"
#include "records/scan/CertificateNames.h"

#include <cstddef>
#include <deque>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class CAsn1SignerIdentifier;

namespace ca {

/// A certificate of a message.
struct SignerCertificate {
    std::span<const unsigned char> der;
    CertificateNames names;  ///< of an attribute certificate those of its holder
    /// Of its description; 0 until it is described. Kept by who describes it.
    std::size_t textOctets = 0;
    bool sharesSerial = false;  ///< the message has another one of this issuer and serial number
    bool sharesKey = false;     ///< or of this key identifier
    /// The attribute certificate whose holder is a digest of this one or its key; null for none.
    SignerCertificate* attributes = nullptr;
};

/// The certificates that a message carries for its signers, found by what names them there. Trees
/// and not hash tables: what they are searched by is chosen by strangers. One thread at a time.
class CSignerCertificates {
  public:
    /// \param choices  content of CertificateSet (RFC 5652, 10.2.3), which outlives this. What is
    ///                 not a certificate is passed over, and so is what there is no room for
    ///                 (CAnswerBudget).
    explicit CSignerCertificates(std::span<const unsigned char> choices);

    /// Elements that there was no room for.
    std::size_t Hidden() const { return m_hidden; }
    /// The first element, or octets that are not one, that is not a certificate of either kind: a
    /// view; empty when there is none.
    std::span<const unsigned char> Odd() const { return m_odd; }

    /// The certificate of issuer and serial number, or with that subject key identifier; null when
    /// there is none. Of several it is the first.
    SignerCertificate* Find(const CAsn1SignerIdentifier& signer);

    /// The attribute certificate that names the holder of a certificate, by issuer and serial
    /// number or else by subject; null when there is none.
    SignerCertificate* FindAttributes(const CertificateNames& holder);
    /// The same, or else the one whose holder is a SHA-1 digest of the certificate or its key.
    SignerCertificate* FindAttributes(const SignerCertificate& holder);

  private:
    using IssuerSerial = std::pair<std::string_view, std::string_view>;
    template <class Key>
    using Index = std::map<Key, SignerCertificate*>;

    template <class Key>
    static void AddTo(Index<Key>& index, Key key, SignerCertificate& certificate,
                      bool SignerCertificate::*isShared);
    bool Add(const CAsn1Element& choice);
    bool AddAttributes(std::span<const unsigned char> certificate);
    void IndexKeys();
    void LinkByDigest();

    std::deque<SignerCertificate> m_certificates;
    std::deque<SignerCertificate> m_attributes;
    std::deque<std::vector<unsigned char>> m_copies;  // of attribute certificates, with their tag
    Index<IssuerSerial> m_bySerial;
    Index<std::string_view> m_byKey;
    bool m_hasKeys = false;
    std::size_t m_hidden = 0;
    std::span<const unsigned char> m_odd;
    Index<IssuerSerial> m_attributesBySerial;
    Index<std::string_view> m_attributesBySubject;
    Index<std::wstring> m_attributesByDigest;  // hexadecimal
};

}  // namespace ca
