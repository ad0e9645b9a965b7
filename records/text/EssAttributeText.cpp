#include "asn1/OidTable.h"
#include "asn1/attributes/EssAttributes.h"
#include "asn1/attributes/SigningCertificate.h"
#include "asn1/cms/SignerInfo.h"
#include "common/DecimalText.h"
#include "records/text/AlgorithmText.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/OutlineText.h"
#include "records/text/ParametersText.h"
#include "records/text/PolicyText.h"
#include "records/text/RevocationText.h"
#include "records/text/SerialText.h"
#include "records/text/SharedFormatters.h"
#include "records/text/SignatureParts.h"
#include "records/text/TimeText.h"

// The attributes of RFC 5652 (11), the enhanced security services (RFC 2634, RFC 5035), S/MIME
// (RFC 8551, 2.5) and SCEP (RFC 8894, 3.2).

namespace {

using ca::CTextLines;
using Value = std::span<const unsigned char>;

// BinaryTime ::= INTEGER (0..MAX)     -- seconds since 1970     RFC 6019, 2
void SayBinaryTime(Value value, CTextLines& lines) {
    // The first second that four digits of a year cannot say.
    constexpr std::int64_t kYear10000 = 253402300800;
    const ca::CDecoded<CAsn1Integer> seconds(value);
    const std::int64_t number = IntegerOf(&*seconds, -1);
    if (number < 0 || number >= kYear10000) {
        throw MakeAsn1Fault(Asn1Fault::kMalformed, "BinaryTime", 0);
    }
    lines.Line(ca::TimeLine(ca::DescribeTime(number)));
}

// A signature of a signature (RFC 5652, 11.4). Its certificate, if any, is among the message's.
void SayCountersignature(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SignerInfo> signer(value, Asn1Blocks::kRead);
    ca::SaySigner(*signer, /*own=*/nullptr, lines);
}

// What SigningCertificate and SigningCertificateV2 have in common.
template <class Attribute, class Digest>
void SaySigningCertificates(Value value, CTextLines& lines, Digest digest) {
    const ca::CDecoded<Attribute> attribute(value);
    ca::SayEach(*attribute->Certs(), lines, [&](const auto& certificate) {
        lines.Line(digest(certificate));
        if (const CAsn1IssuerSerial* id = certificate.IssuerSerial()) {
            const CTextLines::Level level(lines);
            lines.Line(kMsgIssuer, ca::GeneralNamesLine(*id->Issuer(), lines));
            lines.Line(kMsgSerial, ca::SerialText(OctetsOf(id->Serial())));
        }
    });
    if (attribute->Policies() != nullptr) {
        lines.Line(kMsgPolicy, L"");
        const CTextLines::Level level(lines);
        ca::SayEach(*attribute->Policies(), lines,
                    [&](const CAsn1PolicyInformation& policy) { ca::SayPolicy(policy, lines); });
    }
}

// RFC 2634, 5.4: the digest can only be SHA-1.
void SaySigningCertificate(Value value, CTextLines& lines) {
    SaySigningCertificates<CAsn1SigningCertificate>(value, lines, [](const CAsn1EssCertId& id) {
        return ca::DigestText("id-sha1", id.CertHash());
    });
}

// RFC 5035, 3: the digest is SHA-256 where none is named.
void SaySigningCertificateV2(Value value, CTextLines& lines) {
    SaySigningCertificates<CAsn1SigningCertificateV2>(value, lines, [](const CAsn1EssCertIdV2& id) {
        return id.HashAlgorithm() != nullptr ? ca::DigestText(*id.HashAlgorithm(), id.CertHash())
                                             : ca::DigestText("id-sha256", id.CertHash());
    });
}

// RFC 5126, 5.7.3.3.
void SayOtherSigningCertificate(Value value, CTextLines& lines) {
    SaySigningCertificates<CAsn1OtherSigningCertificate>(
        value, lines,
        [](const CAsn1OtherCertId& id) { return ca::OtherHashText(*id.OtherCertHash()); });
}

// RFC 2634, 2.9.
void SayContentHints(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1ContentHints> hints(value);
    if (hints->ContentDescription() != nullptr) {
        lines.Line(kMsgDescription, ca::ValueText(*hints->ContentDescription()));
    }
    lines.Line(kMsgContent, ca::OidWithName(OctetsOf(hints->ContentType())));
}

// RFC 2634, 2.11: the message that this one answers.
void SayContentReference(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1ContentReference> reference(value);
    lines.Line(kMsgContent, ca::OidWithName(OctetsOf(reference->ContentType())));
    lines.Line(kMsgIdentity, ca::OctetsText(reference->SignedContentIdentifier()));
    lines.Line(kMsgSignatureValue, ca::OctetsText(reference->OriginatorSignatureValue()));
}

// A line for each list: the lists are those of different recipients.
void SayNameLists(Sentence label, const CAsn1SequenceOf<CAsn1GeneralNames>& lists,
                  CTextLines& lines) {
    ca::SayEach(lists, lines, [&](const CAsn1GeneralNames& names) {
        lines.Line(label, ca::GeneralNamesLine(names, lines));
    });
}

// ReceiptRequest (RFC 2634, 2.7).
void SayReceiptRequest(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1ReceiptRequest> request(value);
    lines.Line(kMsgIdentity, ca::OctetsText(request->SignedContentIdentifier()));
    if (request->ReceiptList() != nullptr) {
        SayNameLists(kMsgReceiptsFrom, *request->ReceiptList(), lines);
    } else {
        // allReceipts (0), firstTierRecipients (1).
        const std::int64_t kind = IntegerOf(request->AllOrFirstTier(), -1);
        lines.Line(kMsgReceiptsFrom, kind == 0   ? SetZORNAMessage(kMsgAllRecipients)
                                     : kind == 1 ? SetZORNAMessage(kMsgFirstTier)
                                                 : ca::Hex(OctetsOf(request->AllOrFirstTier())));
    }
    SayNameLists(kMsgReceiptsTo, *request->ReceiptsTo(), lines);
}

// ESSSecurityLabel (RFC 2634, 3.2).
void SaySecurityLabel(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1EssSecurityLabel> label(value);
    lines.Line(kMsgSecurityPolicy, ca::OidWithName(OctetsOf(label->SecurityPolicyIdentifier())));
    if (const CAsn1Integer* level = label->SecurityClassification()) {
        const std::int64_t number = IntegerOf(level, -1);
        lines.Line(kMsgClassification,
                   number >= 0 ? ca::ClearanceLevelText(static_cast<std::uint64_t>(number))
                               : ca::Hex(OctetsOf(level)));
    }
    if (label->PrivacyMark() != nullptr) {
        lines.Line(kMsgPrivacyMark, ca::ValueText(ca::FirstElement(label->PrivacyMark()->Raw())));
    }
    ca::SaySecurityCategories(label->SecurityCategories(), lines);
}

// MLExpansionHistory: a list of the lists that the message went through (RFC 2634, 4.4).
// MLReceiptPolicy ::= CHOICE { none [0] NULL, insteadOf [1] SEQUENCE OF GeneralNames,
//     inAdditionTo [2] SEQUENCE OF GeneralNames }     RFC 2634, 4.4
void SayMailListHistory(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1MlData>> history(value);
    ca::SayEach(*history, lines, [&](const CAsn1MlData& step) {
        lines.Line(kMsgTime, ca::TimeLine(*step.ExpansionTime()));
        const CTextLines::Level level(lines);
        const Value id = step.MailListIdentifier()->Raw();
        lines.Line(kMsgIdentity,
                   step.MailListIdentifier()->Tag() == kAsn1Sequence
                       ? ca::IssuerSerialText(*ca::CDecoded<CAsn1IssuerAndSerialNumber>(id))
                       : ca::OctetsText(&*ca::CDecoded<CAsn1OctetString>(id)));
        if (step.MlReceiptPolicy() != nullptr) {
            lines.Line(kMsgPolicy, L"");
            const CTextLines::Level below(lines);
            ca::SayUnknownValue(step.MlReceiptPolicy()->Raw(), lines);
        }
    });
}

// SMIMECapability (RFC 8551, 2.5.2).
// Parameters are those of the algorithm or a key size as a rule; other ones are outlined.
void SayCapability(const CAsn1SmimeCapability& capability, CTextLines& lines) {
    const std::wstring name = ca::OidWithName(OctetsOf(capability.CapabilityId()));
    const CAsn1Any* parameters = capability.Parameters();
    if (parameters == nullptr || parameters->Tag() == kAsn1Null) {
        lines.Line(name);
        return;
    }
    // A key size in bits, as RC2 has it.
    std::uint32_t size = 0;
    if (ca::ReadSmallInteger(ca::FirstElement(parameters->Raw()), size)) {
        lines.Line(name + L", " + ca::DecimalText(size));
        return;
    }
    const ca::ParametersForms forms = ca::DescribeParameters(ca::ElementOf(capability));
    if (!forms.text.empty() && forms.error.empty()) {
        lines.Line(name + L", " + forms.text);
        return;
    }
    lines.Line(name, L"");
    const CTextLines::Level level(lines);
    ca::SayUnknownValue(parameters->Raw(), lines);
}

void SayCapabilities(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1SmimeCapability>> list(value);
    ca::SayEach(*list, lines,
                [&](const CAsn1SmimeCapability& capability) { SayCapability(capability, lines); });
}

// SMIMEEncryptionKeyPreference (RFC 8551, 2.5.3): one of three ways to name a certificate.
void SayKeyPreference(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SmimeEncryptionKeyPreference> preference(value);
    if (const CAsn1IssuerAndSerialNumber* id = preference->IssuerAndSerialNumber()) {
        lines.Line(kMsgIssuer, ca::ReadableName(*id->Issuer()));
        lines.Line(kMsgSerial, ca::SerialText(OctetsOf(id->SerialNumber())));
    } else if (preference->RecipientKeyId() != nullptr) {
        lines.Line(kMsgKey, ca::OctetsText(preference->RecipientKeyId()->SubjectKeyIdentifier()));
    } else {
        lines.Line(kMsgKey, ca::OctetsText(preference->SubjectAltKeyIdentifier()));
    }
}

// CMSAlgorithmProtection (RFC 6211, 2): one of the last two is there, never both.
void SayAlgorithmProtection(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1CmsAlgorithmProtection> protection(value);
    const std::pair<Sentence, const CAsn1AlgorithmIdentifier*> algorithms[] = {
        {kMsgFieldHashAlg, protection->DigestAlgorithm()},
        {kMsgFieldSignatureAlg, protection->SignatureAlgorithm()},
        {kMsgMacAlgorithm, protection->MacAlgorithm()},
    };
    for (const auto& [label, algorithm] : algorithms) {
        if (algorithm != nullptr) {
            lines.Line(label, ca::AlgorithmText(*algorithm));
        }
    }
}

constexpr ca::ExtensionRow kRows[] = {
    {"id-contentType", ca::SayOidValue},
    {"id-messageDigest", ca::SayOctetString},
    {"id-signingTime", ca::SayTimeValue},
    {"id-countersignature", SayCountersignature},
    {"signingDescription", ca::SayText},
    {"smimeCapabilities", SayCapabilities},
    {"id-aa-receiptRequest", SayReceiptRequest},
    {"id-aa-securityLabel", SaySecurityLabel},
    {"id-aa-mlExpandHistory", SayMailListHistory},
    {"id-aa-contentHint", SayContentHints},
    {"id-aa-contentIdentifier", ca::SayOctetString},
    {"id-aa-msgSigDigest", ca::SayOctetString},
    {"id-aa-signatureType", ca::SayOidValue},
    {"id-aa-contentReference", SayContentReference},
    {"id-aa-encrypKeyPref", SayKeyPreference},
    {"id-aa-signingCertificate", SaySigningCertificate},
    {"id-aa-signingCertificateV2", SaySigningCertificateV2},
    {"id-aa-ets-otherSigCert", SayOtherSigningCertificate},
    {"id-aa-binarySigningTime", SayBinaryTime},
    {"id-aa-CMSAlgorithmProtection", SayAlgorithmProtection},
    {"scepMessageType", ca::SayText},
    {"scepPkiStatus", ca::SayText},
    {"scepFailInfo", ca::SayText},
    {"scepSenderNonce", ca::SayOctetString},
    {"scepRecipientNonce", ca::SayOctetString},
    {"scepTransactionId", ca::SayText},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> EssAttributeRows() {
    return kRows;
}

}  // namespace ca
