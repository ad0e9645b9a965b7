#include "records/fill/AttrCertInfoFill.h"

#include "asn1/Elements.h"
#include "asn1/attributes/AttributeCertificateV1.h"
#include "asn1/views/AttributeCertificateViews.h"
#include "asn1/views/AttributeViews.h"
#include "asn1/views/NameViews.h"
#include "common/Exception.h"
#include "common/sha1.h"
#include "records/AnswerBudget.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/ExtensionFill.h"
#include "records/fill/RecordMeter.h"
#include "records/fill/SignedFill.h"
#include "records/fill/ValidityText.h"
#include "records/text/AttributeText.h"
#include "records/text/ExtensionList.h"
#include "records/text/ExtensionText.h"
#include "records/text/NameText.h"
#include "records/text/OutlineText.h"
#include "records/text/SerialText.h"

namespace {

using ca::AttrCertInfo;
using ca::Octets;
using CMeter = ca::CRecordMeter<AttrCertInfo>;

// The forms of a name of GeneralNames. What has no name of a directory has a readable form only.
ca::NameTexts TextsOf(const CAsn1GeneralNames* names, Sentence place, std::wstring& error) {
    ca::NameForms forms;
    if (names == nullptr) {
        return {};
    }
    const CAsn1NameView directory = CAsn1GeneralNamesView(*names).DirectoryName();
    if (!directory.IsThere()) {
        ca::CTextLines faults;
        forms.readable = ca::GeneralNamesLine(*names, faults);
        ca::AddError(error, place, faults.TakeFaults());
        return forms;
    }
    forms = ca::DescribeName(directory);
    ca::AddError(error, place, forms.error);
    return forms;
}

void FillHolderName(const CAsn1GeneralNames* names, AttrCertInfo& record) {
    record.holderIssuer = TextsOf(names, kMsgHolder, record.error);
}

// Holder (RFC 5755, 4.2.2): the certificate before the name before the digest, as the most exact
// comes first.
void FillHolder(const CAsn1IssuerSerial* base, const CAsn1GeneralNames* entity,
                const CAsn1ObjectDigestInfo* digest, AttrCertInfo& record) {
    if (base != nullptr) {
        FillHolderName(base->Issuer(), record);
        record.holderSerial = ca::SerialText(OctetsOf(base->Serial()));
    } else if (entity != nullptr) {
        FillHolderName(entity, record);
    } else if (digest != nullptr) {
        record.holderIssuer.readable = ca::ObjectDigestText(*digest);
    }
}

void FillIssuer(const CAsn1GeneralNames* names, AttrCertInfo& record) {
    record.issuer = TextsOf(names, kMsgIssuer, record.error);
}

// Version 2 (RFC 5755, 4.1). A V2Form should hold a name alone (4.2.3); others are shown by what
// they have.
void FillHolderAndIssuer(const CAsn1AttributeCertificateInfo& info, AttrCertInfo& record,
                         CMeter& meter) {
    if (info.Holder() != nullptr) {
        FillHolder(info.Holder()->BaseCertificateId(), info.Holder()->EntityName(),
                   info.Holder()->ObjectDigestInfo(), record);
        meter.Take();
    }
    if (info.Issuer() == nullptr) {
        return;
    }
    const CAsn1V2Form* form = info.Issuer()->V2Form();
    if (form == nullptr) {
        FillIssuer(info.Issuer()->V1Form(), record);
    } else if (form->IssuerName() == nullptr && form->BaseCertificateId() != nullptr) {
        FillIssuer(form->BaseCertificateId()->Issuer(), record);
    } else if (form->IssuerName() == nullptr && form->ObjectDigestInfo() != nullptr) {
        record.issuer.readable = ca::ObjectDigestText(*form->ObjectDigestInfo());
    } else {
        FillIssuer(form->IssuerName(), record);
    }
}

// Version 1 (X.509 of 1997): the subject is a certificate or a name.
void FillHolderAndIssuer(const CAsn1AttributeCertificateInfoV1& info, AttrCertInfo& record,
                         CMeter& meter) {
    if (info.Subject() != nullptr) {
        FillHolder(info.Subject()->BaseCertificateId(), info.Subject()->SubjectName(), nullptr,
                   record);
        meter.Take();
    }
    FillIssuer(info.Issuer(), record);
}

void FillPeriod(const CAsn1AttCertValidityPeriod* period, AttrCertInfo& record) {
    ca::TimeForms from;
    ca::TimeForms to;
    if (period != nullptr) {
        from = ca::TimeOf(period->NotBeforeTime(), kMsgNotBefore, record.error);
        to = ca::TimeOf(period->NotAfterTime(), kMsgNotAfter, record.error);
    }
    ca::FillValidity(from, to, record.validity, record.validityNumber);
    record.validFrom = std::move(from);
    record.validTo = std::move(to);
}

void FillAttributes(const CAsn1SequenceOf<CAsn1Attribute>* attributes, AttrCertInfo& record) {
    CAsn1Cursor cursor(attributes != nullptr ? attributes->ContentOctets()
                                             : std::span<const unsigned char>());
    std::vector<Octets> types;  // each stands once (RFC 5755, 4.2.7)
    while (!cursor.AtEnd() && record.attributes.items.size() < ca::kMaxListed) {
        const CAsn1Cursor before = cursor;
        CAsn1Element attribute;
        cursor.StepOrRest(attribute);
        if (!ca::CAnswerBudget::HasRoomFor(attribute.raw.size())) {
            cursor = before;
            break;
        }
        const std::size_t errorsBefore = record.error.size();
        if (const Octets type = CAsn1AttributeView(attribute).Type(); !type.empty()) {
            types.push_back(type);
        }
        ca::FillAttribute(attribute, record.attributes, record.error);
        ca::CAnswerBudget::Take(CostOf(*record.attributes.items.back()) +
                                ca::CostOfText(record.error.size() - errorsBefore));
    }
    ca::NoteRepeated(types, record.error);
    ca::AddMore(record.error, ca::CountElements(cursor));
}

// Both versions; their parts have the same names.
template <class Certificate>
void Fill(std::span<const unsigned char> der, AttrCertInfo& record) {
    // kRead: nobody walks the tree of this certificate.
    CAsn1Root<Certificate> certificate(der, Asn1Blocks::kRead);
    try {
        certificate->Decode();
    } catch (const ca::Exception& fault) {
        ca::AddError(record.error, fault.message);
    }
    const auto* info = certificate->AcInfo();
    if (info == nullptr) {
        return;
    }
    // AttCertVersion: v1(0), v2(1).
    record.version = ca::VersionText(info->Version(), /*highest=*/1, record.error);
    CMeter meter(record);
    FillHolderAndIssuer(*info, record, meter);
    record.serial = ca::SerialText(OctetsOf(info->SerialNumber()));
    ca::FillSignatureAlgorithm(certificate->SignatureAlgorithm(), info->Signature(),
                               record.signatureAlg, record.hashAlg, record.error);
    FillPeriod(info->AttCertValidityPeriod(), record);
    record.issuerUniqueId = ca::Hex(BitsOf(info->IssuerUniqueId()).octets);
    meter.Take();
    FillAttributes(info->Attributes(), record);
    if (info->Extensions() != nullptr) {
        ca::FillExtensions(*info->Extensions(), record.extensions, record.error);
    }
}

}  // namespace

namespace ca {

void FillAttrCertInfo(std::span<const unsigned char> der, AttrCertInfo& record) {
    const CAnswerBudget budget(der.size());
    const CAsn1Element whole = FirstElement(der);
    if (whole.raw.empty()) {
        AddError(record.error, UnreadableText(der));
        return;
    }
    // Of the element alone: what follows it is not the certificate's.
    record.id = Sha1Hex(whole.raw);
    record.rawData = Base64Text(whole.raw);
    if (whole.raw.size() < der.size()) {
        AddError(record.error, SetZORNAMessage(kMsgAsn1TrailingData));
    }
    try {
        if (CAsn1AttributeCertificateView(whole).AcInfo().IsV1()) {
            Fill<CAsn1AttributeCertificateV1>(whole.raw, record);
        } else {
            Fill<CAsn1AttributeCertificate>(whole.raw, record);
        }
    } catch (const Exception& fault) {
        AddError(record.error, fault.message);
    }
}

}  // namespace ca
