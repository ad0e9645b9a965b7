#include "records/SignerCertificates.h"

#include "asn1/cms/SignerIdentifier.h"
#include "records/AttrCertInfoFill.h"
#include "records/CertInfoFill.h"
#include "records/text/Elements.h"

#include <algorithm>

namespace {

using ca::Octets;

// CertificateChoices: v1AttrCert [1], v2AttrCert [2], both implicit.
constexpr unsigned char kAttributesV1 = ca::ContextConstructed(1);
constexpr unsigned char kAttributesV2 = ca::ContextConstructed(2);

// The extensions of a certificate, [3] EXPLICIT SEQUENCE; they are its last member.
CAsn1Element ExtensionsOf(std::span<unsigned char> certificate) {
    CAsn1Element member;
    CAsn1Cursor cursor(ca::Child(ca::FirstElement(certificate), 0).content);
    while (!cursor.AtEnd() && cursor.Next(member) == Asn1Fault::kNone) {
        if (member.tag == ca::ContextConstructed(3)) {
            return ca::Child(member, 0);
        }
    }
    return {};
}

// The subject key identifier (RFC 5280 4.2.1.2); empty when there is none.
Octets KeyIdentifier(std::span<unsigned char> certificate) {
    CAsn1Element extension;
    CAsn1Cursor cursor(ExtensionsOf(certificate).content);
    while (!cursor.AtEnd() && cursor.Next(extension) == Asn1Fault::kNone) {
        const Octets type = ca::ContentIf(ca::Child(extension, 0), kAsn1ObjectIdentifier);
        if (std::ranges::equal(type, ca::kSubjectKeyIdentifier)) {
            const bool isCritical = ca::Child(extension, 1).tag == kAsn1Boolean;
            const CAsn1Element value = ca::Child(extension, isCritical ? 2 : 1);
            return ca::ContentIf(ca::FirstElement(value.content), kAsn1OctetString);
        }
    }
    return {};
}

template <class Index, class Key>
ca::SignerCertificate* FindIn(const Index& index, const Key& key) {
    const auto found = index.find(key);
    return found != index.end() ? found->second : nullptr;
}

}  // namespace

namespace ca {

CSignerCertificates::CSignerCertificates(std::span<unsigned char> choices) {
    CAsn1Element choice;
    CAsn1Cursor cursor(choices);
    while (!cursor.AtEnd() && cursor.Next(choice) == Asn1Fault::kNone) {
        Add(choice);
    }
}

void CSignerCertificates::Add(const CAsn1Element& choice) {
    if (choice.tag == kAttributesV1 || choice.tag == kAttributesV2) {
        auto& copy = m_copies.emplace_back(choice.raw.begin(), choice.raw.end());
        copy[0] = kAsn1Sequence;
        AddAttributes(copy);
    } else if (LooksLikeCertificate(choice.raw)) {
        SignerCertificate& certificate =
            m_certificates.emplace_back(SignerCertificate{choice.raw, NamesOf(choice.raw), false});
        const CertificateNames& names = certificate.names;
        m_bySerial.emplace(IssuerSerial(names.issuer, names.serial), &certificate);
    } else {
        AddAttributes(choice.raw);
    }
}

void CSignerCertificates::AddAttributes(std::span<unsigned char> certificate) {
    if (!LooksLikeAttributeCertificate(certificate)) {
        return;
    }
    SignerCertificate& attributes =
        m_attributes.emplace_back(SignerCertificate{certificate, HolderNames(certificate), false});
    const CertificateNames& holder = attributes.names;
    if (!holder.issuer.empty()) {
        m_attributesBySerial.emplace(IssuerSerial(holder.issuer, holder.serial), &attributes);
    }
    if (!holder.subject.empty()) {
        m_attributesBySubject.emplace(holder.subject, &attributes);
    }
}

// Most messages name their signers by issuer and serial number.
void CSignerCertificates::IndexKeys() {
    for (SignerCertificate& certificate : m_certificates) {
        if (const Octets key = KeyIdentifier(certificate.der); !key.empty()) {
            m_byKey.emplace(AsText(key), &certificate);
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

}  // namespace ca
