#include "records/fill/CertInfoFill.h"

#include "asn1/Elements.h"
#include "asn1/OidTable.h"
#include "asn1/TruncatedObject.h"
#include "asn1/cms/SignerIdentifier.h"
#include "asn1/views/CertificateViews.h"
#include "asn1/x509/Certificate.h"
#include "common/DecimalText.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/sha1.h"
#include "records/fill/ExtensionFill.h"
#include "records/fill/RecordMeter.h"
#include "records/fill/SignedFill.h"
#include "records/fill/ValidityText.h"
#include "records/scan/LooksLike.h"
#include "records/scan/ObjectTests.h"
#include "records/text/AlgorithmText.h"
#include "records/text/DescriptionWords.h"
#include "records/text/ExtensionList.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/SerialText.h"

#include <optional>
#include <string_view>
#include <utility>

namespace {

using ca::CertInfo;
using ca::Octets;
using CMeter = ca::CRecordMeter<CertInfo>;

void FillIssuer(const CAsn1Name* name, CertInfo& record) {
    if (name == nullptr) {
        return;
    }
    ca::NameForms issuer = ca::DescribeName(*name);
    ca::AddError(record.error, kMsgIssuer, issuer.error);
    record.issuer = std::move(issuer);
}

void FillNames(const CAsn1TbsCertificate& tbs, CertInfo& record, CMeter& meter) {
    FillIssuer(tbs.Issuer(), record);
    meter.Take();
    if (tbs.Subject() != nullptr) {
        ca::NameForms subject = ca::DescribeName(*tbs.Subject());
        ca::AddError(record.error, kMsgFieldSubject, subject.error);
        record.description = std::move(subject);
        meter.Take();
    }
}

// The texts of both times in their places; without a period nothing is said against the
// certificate.
void FillPeriod(const CAsn1TbsCertificate& tbs, CertInfo& record) {
    ca::TimeForms from;
    ca::TimeForms to;
    if (tbs.Validity() != nullptr) {
        from = ca::TimeOf(tbs.Validity()->NotBefore(), kMsgNotBefore, record.error);
        to = ca::TimeOf(tbs.Validity()->NotAfter(), kMsgNotAfter, record.error);
    }
    ca::FillValidity(from, to, record.validity, record.validityNumber);
    record.validFrom = std::move(from);
    record.validTo = std::move(to);
}

void FillPublicKey(const CAsn1TbsCertificate& tbs, CertInfo& record) {
    if (tbs.SubjectPublicKeyInfo() == nullptr) {
        return;
    }
    ca::PublicKeyForms key = ca::DescribePublicKey(*tbs.SubjectPublicKeyInfo());
    record.publicKeyAlg = std::move(key.algorithm);
    record.publicKey = std::move(key.key);
    record.publicKeyParams = std::move(key.params);
    record.publicKeyHashAlgs = std::move(key.hashAlgs);
    ca::AddError(record.error, key.error);
}

// Version 1 ends with the key, version 2 with the unique identifiers (RFC 5280, 4.1.2.1).
void NoteVersion(const CAsn1TbsCertificate& tbs, std::wstring& error) {
    const std::int64_t version = tbs.Version() != nullptr ? IntegerOf(tbs.Version(), -1) : 0;
    const bool hasIds = tbs.IssuerUniqueId() != nullptr || tbs.SubjectUniqueId() != nullptr;
    if (version == 0 && hasIds) {
        ca::AddError(error, kMsgFieldUniqueId, ca::WordText(ca::Word::kNotOfVersion));
    }
    if ((version == 0 || version == 1) && tbs.Extensions() != nullptr) {
        ca::AddError(error, kMsgFieldExtensions, ca::WordText(ca::Word::kNotOfVersion));
    }
}

// Also read here as a number, for hosts that filter by it; the extension's own text is made
// elsewhere.
void FillKeyUsage(std::span<const unsigned char> value, CertInfo& record) {
    const Octets content = ca::ContentIf(ca::FirstElement(value), kAsn1BitString);
    constexpr unsigned kMostUnused = 7;
    if (content.empty() || content[0] > kMostUnused) {
        return;
    }
    record.keyUsage = ca::KeyUsageOf({content.subspan(1), content[0]});
    record.keyUsageStr = ca::CertInfo2::GetKeyUsageStr(record.keyUsage);
}

// What is there of a certificate that was cut off; nothing for whole ones and for anything else.
std::optional<CAsn1Beginning> MendIfCertificate(std::span<const unsigned char> octets) {
    auto cut = MendTruncated(octets);
    const CAsn1Element certificate =
        cut ? ca::FirstElement(std::span(cut->octets)) : CAsn1Element();
    if (!cut || !ca::IsCertificate(certificate, cut->octets.data() + cut->end)) {
        return std::nullopt;
    }
    // A half of what stands after the signed part, the signature's algorithm, tells nothing.
    const CAsn1Element algorithm = CAsn1CertificateView(certificate).SignatureAlgorithm().Element();
    if (algorithm.raw.empty()) {
        return cut;
    }
    const auto offset = static_cast<std::size_t>(algorithm.raw.data() - cut->octets.data());
    CAsn1Element whole;
    const bool isWhole = CAsn1Cursor(octets.subspan(offset)).Next(whole) == Asn1Fault::kNone;
    return isWhole ? std::move(cut) : MendTruncated(octets.first(offset));
}

// What begins as a certificate. Throws ca::Exception 16113 for what is not one after all.
void FillFrom(std::span<const unsigned char> der, CertInfo& record) {
    // kRead: nobody walks the tree of this certificate.
    CAsn1Root<CAsn1Certificate> certificate(der, Asn1Blocks::kRead);
    try {
        certificate->Decode();
    } catch (const ca::Exception& fault) {
        ca::AddError(record.error, fault.message);
    }
    // The signed part is what makes a certificate: without any of it there is nothing to describe.
    if (certificate->TbsCertificate() == nullptr) {
        throw ca::Exception(ca::kErrCertificate, record.error);
    }
    record.FromAsn1(*certificate);
}

}  // namespace

namespace ca {

bool LooksLikeCutCertificate(std::span<const unsigned char> octets) {
    return MendIfCertificate(octets).has_value();
}

void CertInfo::FillFromTbsCert(const CAsn1TbsCertificate& tbs) {
    // Version: v1(0) to v3(2) (RFC 5280, 4.1.2.1).
    version = VersionText(tbs.Version(), /*highest=*/2, error);
    serial = SerialText(OctetsOf(tbs.SerialNumber()));
    CMeter meter(*this);
    FillNames(tbs, *this, meter);
    FillPeriod(tbs, *this);
    FillPublicKey(tbs, *this);
    NoteVersion(tbs, error);
    meter.Take();
    // A BIT STRING; its unused bits are zero as a rule, so that its octets are shown.
    issuerUniqueId = Hex(BitsOf(tbs.IssuerUniqueId()).octets);
    subjectUniqueId = Hex(BitsOf(tbs.SubjectUniqueId()).octets);
    meter.Take();
    if (tbs.Extensions() != nullptr) {
        // keyUsage is the one extension that has members of its own in the record.
        FillExtensions(*tbs.Extensions(), extensions, error,
                       [this](const OidInfo* type, std::span<const unsigned char> value) {
                           if (type == ca::COid("keyUsage")) {
                               FillKeyUsage(value, *this);
                           }
                       });
    }
}

void CertInfo::FromAsn1(const CAsn1Certificate& certificate) {
    id = Sha1Hex(certificate.Raw());
    rawData = Base64Text(certificate.Raw());
    FillSignatureAlgorithm(certificate.SignatureAlgorithm(),
                           certificate.TbsCertificate()->Signature(), signatureAlg, hashAlg, error);
    FillFromTbsCert(*certificate.TbsCertificate());
}

void FillCertInfo(std::span<const unsigned char> der, CertInfo& record) {
    const CAnswerBudget budget(der.size());
    if (LooksLikeCertificate(der)) {
        FillFrom(der, record);
        return;
    }
    // Cut off, but with the form of a certificate: described as far as it goes.
    auto cut = MendIfCertificate(der);
    if (!cut) {
        throw Exception(kErrCertificate);
    }
    AddError(record.error, WordText(Word::kCutOff) + DecimalText(der.size()));
    FillFrom(cut->octets, record);
    // The octets as they came, not as they were mended.
    record.id = Sha1Hex(der);
    record.rawData = Base64Text(der);
}

// Of a certificate that is only named: the record has nothing else to say.
void FillFromIdentifier(const CAsn1IssuerAndSerialNumber& identifier, CertInfo& record) {
    FillIssuer(identifier.Issuer(), record);
    record.serial = SerialText(OctetsOf(identifier.SerialNumber()));
    const CMeter meter(record);
}

}  // namespace ca
