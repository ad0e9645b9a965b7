#include "records/scan/SignerCertificates.h"

#include "asn1/Elements.h"
#include "asn1/cms/SignerIdentifier.h"
#include "asn1/views/CertificateViews.h"
#include "common/Hex.h"
#include "common/sha1.h"
#include "records/AnswerBudget.h"
#include "records/scan/CertificateCursor.h"
#include "records/scan/CertificateNames.h"
#include "records/scan/LooksLike.h"

#include <algorithm>

namespace {

using ca::Octets;

// CertificateChoices (RFC 5652, 10.2.2): v1AttrCert [1], v2AttrCert [2], both implicit.
constexpr unsigned char kAttributesV1 = ca::ContextConstructed(1);
constexpr unsigned char kAttributesV2 = ca::ContextConstructed(2);

Octets PublicKeyInfoOf(std::span<const unsigned char> certificate) {
    return CAsn1CertificateView(ca::FirstElement(certificate))
        .TbsCertificate()
        .SubjectPublicKeyInfo()
        .Element()
        .raw;
}

// Of memory, with its places in the indices.
constexpr std::size_t kOctetsOfOne = sizeof(ca::SignerCertificate) + 160;

template <class Index, class Key>
ca::SignerCertificate* FindIn(const Index& index, const Key& key) {
    const auto found = index.find(key);
    return found != index.end() ? found->second : nullptr;
}

}  // namespace

namespace ca {

CSignerCertificates::CSignerCertificates(std::span<const unsigned char> choices) {
    CAsn1Element choice;
    CCertificateCursor cursor(choices);
    // Bounded by memory, since strangers may put millions of tiny ones there.
    const std::size_t most = CAnswerBudget::Left() / 2 / kOctetsOfOne;  // the rest is for signers
    std::size_t count = 0;
    while (count < most && cursor.Next(choice)) {
        if (!Add(choice) && m_odd.empty()) {
            m_odd = choice.raw;
        }
        ++count;
    }
    // The first that is odd, by its place in the message.
    if (!cursor.Unread().empty() && (m_odd.empty() || cursor.Unread().data() < m_odd.data())) {
        m_odd = cursor.Unread();
    }
    CAnswerBudget::Take(count * kOctetsOfOne);
    m_hidden = count == most ? CountElements(cursor.Rest()) : 0;
    // Only then are the certificates digested: it takes longer than all else here.
    if (!m_attributesByDigest.empty()) {
        LinkByDigest();
    }
}

// The first of a key is kept; the same certificate again is none other.
template <class Key>
void CSignerCertificates::AddTo(Index<Key>& index, Key key, SignerCertificate& certificate,
                                bool SignerCertificate::*isShared) {
    const auto [at, isNew] = index.emplace(std::move(key), &certificate);
    if (!isNew && !std::ranges::equal(at->second->der, certificate.der)) {
        at->second->*isShared = true;
    }
}

bool CSignerCertificates::Add(const CAsn1Element& choice) {
    if (choice.tag == kAttributesV1 || choice.tag == kAttributesV2) {
        // A copy with its own tag: what describes it expects a SEQUENCE.
        auto& copy = m_copies.emplace_back(choice.raw.begin(), choice.raw.end());
        copy[0] = kAsn1Sequence;
        return AddAttributes(copy);
    }
    if (LooksLikeCertificate(choice.raw)) {
        SignerCertificate& certificate = m_certificates.emplace_back(
            SignerCertificate{.der = choice.raw, .names = NamesOf(choice.raw)});
        const CertificateNames& names = certificate.names;
        AddTo(m_bySerial, IssuerSerial(names.issuer, names.serial), certificate,
              &SignerCertificate::sharesSerial);
        return true;
    }
    return AddAttributes(choice.raw);
}

bool CSignerCertificates::AddAttributes(std::span<const unsigned char> certificate) {
    if (!LooksLikeAttributeCertificate(certificate)) {
        return false;
    }
    SignerCertificate& attributes = m_attributes.emplace_back(
        SignerCertificate{.der = certificate, .names = HolderNames(certificate)});
    const CertificateNames& holder = attributes.names;
    if (!holder.issuer.empty()) {
        m_attributesBySerial.emplace(IssuerSerial(holder.issuer, holder.serial), &attributes);
    }
    if (!holder.subject.empty()) {
        m_attributesBySubject.emplace(holder.subject, &attributes);
    }
    if (!holder.digest.empty()) {
        std::wstring digits;  // in the form of Sha1Hex()
        AddHex({reinterpret_cast<const unsigned char*>(holder.digest.data()), holder.digest.size()},
               digits);
        m_attributesByDigest.emplace(std::move(digits), &attributes);
    }
    return true;
}

// Each certificate is digested once, however many signers name it.
void CSignerCertificates::LinkByDigest() {
    for (SignerCertificate& certificate : m_certificates) {
        SignerCertificate* found = FindIn(m_attributesByDigest, Sha1Hex(certificate.der));
        certificate.attributes =
            found != nullptr
                ? found
                : FindIn(m_attributesByDigest, Sha1Hex(PublicKeyInfoOf(certificate.der)));
    }
}

// Most messages name their signers by issuer and serial number.
void CSignerCertificates::IndexKeys() {
    for (SignerCertificate& certificate : m_certificates) {
        if (const Octets key = SubjectKeyIdentifier(certificate.der); !key.empty()) {
            AddTo(m_byKey, AsText(key), certificate, &SignerCertificate::sharesKey);
        }
    }
    m_hasKeys = true;
}

SignerCertificate* CSignerCertificates::Find(const CAsn1SignerIdentifier& signer) {
    if (const CAsn1OctetString* key = signer.SubjectKeyIdentifier()) {
        if (!m_hasKeys) {
            IndexKeys();
        }
        const std::vector<unsigned char> octets = OctetStringOf(key);
        return FindIn(m_byKey, AsText(octets));
    }
    const CAsn1IssuerAndSerialNumber* name = signer.IssuerAndSerialNumber();
    if (name == nullptr || name->Issuer() == nullptr) {
        return nullptr;
    }
    return FindIn(m_bySerial, IssuerSerial(AsText(name->Issuer()->Raw()),
                                           AsText(OctetsOf(name->SerialNumber()))));
}

SignerCertificate* CSignerCertificates::FindAttributes(const CertificateNames& holder) {
    SignerCertificate* found =
        FindIn(m_attributesBySerial, IssuerSerial(holder.issuer, holder.serial));
    return found != nullptr ? found : FindIn(m_attributesBySubject, holder.subject);
}

SignerCertificate* CSignerCertificates::FindAttributes(const SignerCertificate& holder) {
    SignerCertificate* found = FindAttributes(holder.names);
    return found != nullptr ? found : holder.attributes;
}

}  // namespace ca
