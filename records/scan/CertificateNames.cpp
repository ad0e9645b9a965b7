#include "records/scan/CertificateNames.h"

#include "asn1/Asn1Tags.h"
#include "asn1/Elements.h"
#include "asn1/Oid.h"
#include "asn1/views/AttributeCertificateViews.h"
#include "asn1/views/CertificateViews.h"

namespace {

using ca::Octets;

CAsn1CertificateView ViewOf(std::span<const unsigned char> certificate) {
    return ca::FirstElement(certificate);
}

// The digest, when it is the one that can be computed here.
Octets Sha1OfHolder(const CAsn1ObjectDigestInfoView& info) {
    const ca::OidInfo* type = ca::FindOid(info.DigestAlgorithm().Algorithm());
    const CAsn1Element digest = info.ObjectDigest();
    const bool isSha1 = type == ca::COid("id-sha1");
    return isSha1 && digest.tag == kAsn1BitString ? ca::BitOctets(digest) : Octets();
}

// Holder (RFC 5755, 4.2.2): a certificate, a name or a digest, each optional.
void AddNames(const CAsn1HolderPartView& part, ca::CertificateNames& names) {
    if (part.IsBaseCertificateId()) {
        const CAsn1IssuerSerialView base = part.BaseCertificateId();
        names.issuer = ca::AsText(base.Issuer().DirectoryName().Element().raw);
        names.serial = ca::AsText(base.Serial());
    } else if (part.IsEntityName()) {
        names.subject = ca::AsText(part.EntityName().DirectoryName().Element().raw);
    } else if (part.IsObjectDigestInfo()) {
        names.digest = ca::AsText(Sha1OfHolder(part.ObjectDigestInfo()));
    }
}

}  // namespace

namespace ca {

// Names are compared as octets: issuers copy the encoding (RFC 5280, 4.1.2.4).
CertificateNames NamesOf(std::span<const unsigned char> certificate) {
    const CAsn1TbsCertificateView tbs = ViewOf(certificate).TbsCertificate();
    return {AsText(tbs.Issuer().Element().raw),
            AsText(tbs.SerialNumber().content),
            AsText(tbs.Subject().Element().raw),
            {}};
}

Octets SubjectKeyIdentifier(std::span<const unsigned char> certificate) {
    return ContentIf(ViewOf(certificate).ExtensionValue("subjectKeyIdentifier"), kAsn1OctetString);
}

Octets IssuerKeyIdentifier(std::span<const unsigned char> certificate) {
    const CAsn1Element value = ViewOf(certificate).ExtensionValue("authorityKeyIdentifier");
    return CAsn1AuthorityKeyIdView(value).KeyIdentifier();
}

CertificateNames HolderNames(std::span<const unsigned char> attributeCertificate) {
    const CAsn1AttributeCertificateInfoView info =
        CAsn1AttributeCertificateView(FirstElement(attributeCertificate)).AcInfo();
    CertificateNames names;
    if (info.IsV1()) {
        AddNames(info.Subject(), names);
    } else {
        for (std::size_t part = 0; part < CAsn1HolderView::kMostParts; ++part) {
            AddNames(info.Holder().Part(part), names);
        }
    }
    return names;
}

}  // namespace ca
