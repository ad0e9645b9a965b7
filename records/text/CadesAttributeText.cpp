#include "asn1/Oid.h"
#include "asn1/attributes/AttributeCertificate.h"
#include "asn1/attributes/SignaturePolicy.h"
#include "asn1/attributes/SignerAttributes.h"
#include "asn1/attributes/SigningCertificate.h"
#include "asn1/cms/EvidenceRecord.h"
#include "asn1/views/AttributeViews.h"
#include "records/text/AlgorithmText.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/OutlineText.h"
#include "records/text/PolicyText.h"
#include "records/text/RevocationText.h"
#include "records/text/SerialText.h"
#include "records/text/SignatureParts.h"

// The attributes of advanced signatures (RFC 5126, ETSI EN 319 122-1).

namespace {

using ca::CTextLines;
using ca::Octets;
using Value = std::span<const unsigned char>;

std::wstring TextOf(const CAsn1Any& any) {
    return ca::ValueText(ca::FirstElement(any.Raw()));
}

// The name of a type, below it an outline of the value.
void SayTypedValue(Octets type, const CAsn1Any* value, CTextLines& lines) {
    if (value == nullptr) {
        lines.Line(ca::OidWithName(type));
        return;
    }
    lines.Line(ca::OidWithName(type), L"");
    const CTextLines::Level level(lines);
    ca::SayUnknownValue(value->Raw(), lines);
}

// SigPolicyQualifierInfo: where the policy is, and what its user should read (RFC 5126, 5.8.1).
void SayPolicyQualifier(const CAsn1SigPolicyQualifierInfo& qualifier, CTextLines& lines) {
    const Octets type = OctetsOf(qualifier.SigPolicyQualifierId());
    const CAsn1Any* value = qualifier.SigQualifier();
    if (ca::IsOid(type, "id-spq-ets-uri") && value != nullptr) {
        lines.Line(kMsgAddress, TextOf(*value));
    } else if (ca::IsOid(type, "id-spq-ets-unotice") && value != nullptr) {
        ca::SayNotice(*value, lines);
    } else {
        SayTypedValue(type, value, lines);
    }
}

// SignaturePolicy ::= CHOICE { signaturePolicyId SignaturePolicyId,
//     signaturePolicyImplied NULL }     RFC 5126, 5.8.1
void SaySignaturePolicy(Value value, CTextLines& lines) {
    if (ca::FirstElement(value).tag == kAsn1Null) {
        lines.Line(kMsgPolicyImplied);
        return;
    }
    const ca::CDecoded<CAsn1SignaturePolicyId> policy(value);
    lines.Line(kMsgPolicy, ca::OidWithName(OctetsOf(policy->SigPolicyId())));
    if (const CAsn1OtherHashAlgAndValue* digest = policy->SigPolicyHash()) {
        lines.Line(ca::DigestText(*digest->HashAlgorithm(), digest->HashValue()));
    }
    if (policy->SigPolicyQualifiers() != nullptr) {
        ca::SayEach(*policy->SigPolicyQualifiers(), lines,
                    [&](const CAsn1SigPolicyQualifierInfo& qualifier) {
                        SayPolicyQualifier(qualifier, lines);
                    });
    }
}

// CommitmentTypeQualifier ::= SEQUENCE { commitmentTypeIdentifier OBJECT IDENTIFIER,
//     qualifier ANY OPTIONAL }     -- as SigPolicyQualifierInfo     RFC 5126, 5.11.1
void SayCommitment(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1CommitmentTypeIndication> commitment(value);
    lines.Line(ca::OidWithName(OctetsOf(commitment->CommitmentTypeId())));
    if (commitment->CommitmentTypeQualifier() == nullptr) {
        return;
    }
    const CTextLines::Level level(lines);
    ca::SayEach(*commitment->CommitmentTypeQualifier(), lines, [&](const CAsn1Any& qualifier) {
        const ca::CDecoded<CAsn1SigPolicyQualifierInfo> info(qualifier.Raw());
        SayTypedValue(OctetsOf(info->SigPolicyQualifierId()), info->SigQualifier(), lines);
    });
}

// Named as in a certificate's subject, so that readers find the same place by the same word.
void SayNamed(ca::COid type, const std::wstring& text, CTextLines& lines) {
    lines.Line(type->Name(), text);
}

// SEQUENCE SIZE (1..6) OF DirectoryString; some writers put it into another SEQUENCE.
void SayPostalAddress(const CAsn1SequenceOf<CAsn1Any>& address, CTextLines& lines) {
    const CAsn1Element first = ca::FirstElement(address.ContentOctets());
    if (first.tag == kAsn1Sequence) {
        const ca::CDecoded<CAsn1SequenceOf<CAsn1Any>> strings(first.raw);
        ca::SayEach(*strings, lines, [&](const CAsn1Any& line) { lines.Line(TextOf(line)); });
    } else {
        ca::SayEach(address, lines, [&](const CAsn1Any& line) { lines.Line(TextOf(line)); });
    }
}

// SignerLocation (RFC 5126, 5.11.2). Its members are explicitly tagged strings.
void SaySignerLocation(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SignerLocation> location(value);
    if (location->CountryName() != nullptr) {
        SayNamed("C", TextOf(*location->CountryName()), lines);
    }
    if (location->LocalityName() != nullptr) {
        SayNamed("L", TextOf(*location->LocalityName()), lines);
    }
    if (location->PostalAddress() != nullptr) {
        SayNamed("postalAddress", L"", lines);
        const CTextLines::Level level(lines);
        SayPostalAddress(*location->PostalAddress(), lines);
    }
}

void SayClaimed(const CAsn1ClaimedAttributes& attributes, CTextLines& lines) {
    lines.Line(kMsgClaimedAttributes, L"");
    const CTextLines::Level level(lines);
    ca::SayEach(attributes, lines, [&](const CAsn1Attribute& attribute) {
        ca::SayClaimedAttribute(attribute, lines);
    });
}

// No more than who gave it and what it certifies: the certificate is described where it stands
// itself.
void SayAttributeCertificate(const CAsn1Any& any, CTextLines& lines) {
    const ca::CDecoded<CAsn1AttributeCertificate> certificate(any.Raw());
    const CAsn1AttributeCertificateInfo& info = *certificate->AcInfo();
    lines.Line(kMsgAttributeCertificate, L"");
    const CTextLines::Level level(lines);
    if (const CAsn1V2Form* issuer = info.Issuer()->V2Form();
        issuer != nullptr && issuer->IssuerName() != nullptr) {
        lines.Line(kMsgIssuer, ca::GeneralNamesLine(*issuer->IssuerName(), lines));
    }
    lines.Line(kMsgSerial, ca::SerialText(OctetsOf(info.SerialNumber())));
    ca::SayEach(*info.Attributes(), lines, [&](const CAsn1Attribute& attribute) {
        ca::SayClaimedAttribute(attribute, lines);
    });
}

// SignerAttribute (RFC 5126, 5.11.3): what the signer claims, or what is certified of him.
void SaySignerAttributes(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1SignerAttribute>> list(value);
    ca::SayEach(*list, lines, [&](const CAsn1SignerAttribute& attribute) {
        if (attribute.ClaimedAttributes() != nullptr) {
            SayClaimed(*attribute.ClaimedAttributes(), lines);
        } else {
            SayAttributeCertificate(*attribute.CertifiedAttributes(), lines);
        }
    });
}

// SignerAttributeV2 (ETSI EN 319 122-1, 5.2.6.1).
void SaySignerAttributesV2(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SignerAttributeV2> attributes(value);
    if (attributes->ClaimedAttributes() != nullptr) {
        SayClaimed(*attributes->ClaimedAttributes(), lines);
    }
    if (attributes->CertifiedAttributes() != nullptr) {
        ca::SayEach(*attributes->CertifiedAttributes(), lines,
                    [&](const CAsn1CertifiedAttributeV2& certified) {
                        if (certified.AttributeCertificate() != nullptr) {
                            SayAttributeCertificate(*certified.AttributeCertificate(), lines);
                        } else {
                            ca::SayUnknownValue(certified.OtherAttributeCertificate()->Raw(),
                                                lines);
                        }
                    });
    }
    // Assertions come in a language of their own, as SAML: outlined.
    if (attributes->SignedAssertions() != nullptr) {
        lines.Line(kMsgSignedAssertions, L"");
        const CTextLines::Level level(lines);
        ca::SayUnknownValue(attributes->SignedAssertions()->ContentOctets(), lines);
    }
}

// CompleteCertificateRefs (RFC 5126, 6.2.1); those of attribute certificates are the same (6.2.3).
void SayCertificateRefs(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1OtherCertId>> references(value);
    ca::SayCount(kMsgCertificates, references->Count(), lines);
    const CTextLines::Level level(lines);
    ca::SayEach(*references, lines, [&](const CAsn1OtherCertId& reference) {
        std::wstring line = ca::OtherHashText(*reference.OtherCertHash());
        if (reference.IssuerSerial() != nullptr) {
            line += L", " + ca::IssuerSerialText(*reference.IssuerSerial(), lines);
        }
        lines.Line(line);
    });
}

// One of the three lists of a hash index: how many, then each digest.
void SayHashes(Sentence label, const CAsn1Element& hashes, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1OctetString>> list(hashes.raw);
    ca::SayCount(label, list->Count(), lines);
    const CTextLines::Level level(lines);
    ca::SayEach(*list, lines,
                [&](const CAsn1OctetString& hash) { lines.Line(ca::OctetsText(&hash)); });
}

// ATSHashIndex in its versions (ETSI EN 319 122-1, 5.5.2): the first leaves the algorithm out.
void SayHashIndex(Value value, CTextLines& lines) {
    const CAsn1HashIndexView index(ca::FirstElement(value));
    if (index.HasAlgorithm()) {
        lines.Line(kMsgFieldHashAlg, ca::AlgorithmText(index.HashIndAlgorithm()));
    }
    SayHashes(kMsgCertificates, index.CertificatesHashIndex(), lines);
    SayHashes(kMsgCrls, index.CrlsHashIndex(), lines);
    SayHashes(kMsgUnsignedAttributes, index.UnsignedAttrsHashIndex(), lines);
}

// EvidenceRecord (RFC 4998, 3.1).
// Each time stamp of each chain: what it stamps, and with which digest its tree was made.
void SayEvidenceRecord(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1EvidenceRecord> record(value);
    ca::SayEach(*record->DigestAlgorithms(), lines, [&](const CAsn1AlgorithmIdentifier& digest) {
        lines.Line(kMsgFieldHashAlg, ca::AlgorithmText(digest));
    });
    ca::SayEach(*record->ArchiveTimeStampSequence(), lines, [&](const auto& chain) {
        ca::SayEach(chain, lines, [&](const CAsn1ArchiveTimeStamp& stamp) {
            lines.Line(kMsgStamp, L"");
            const CTextLines::Level level(lines);
            ca::SaySignedMessage(stamp.TimeStamp()->Raw(), lines);
        });
    });
}

// A text such as "text/xml", of the content that is signed.
void SayMimeType(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1UTF8String> type(value);
    lines.Line(ca::ValueText(*type));
}

constexpr ca::ExtensionRow kRows[] = {
    // Time stamps are signed messages, whatever they stamp.
    {"id-aa-timeStampToken", ca::SaySignedMessage},
    {"id-aa-ets-contentTimestamp", ca::SaySignedMessage},
    {"id-aa-ets-escTimeStamp", ca::SaySignedMessage},
    {"id-aa-ets-certCRLTimestamp", ca::SaySignedMessage},
    {"id-aa-ets-archiveTimestamp", ca::SaySignedMessage},
    {"id-aa-ets-archiveTimestampV2", ca::SaySignedMessage},
    {"id-aa-ets-archiveTimestampV3", ca::SaySignedMessage},
    {"id-aa-ATSHashIndex", SayHashIndex},
    {"id-aa-ATSHashIndex-v2", SayHashIndex},
    {"id-aa-ATSHashIndex-v3", SayHashIndex},
    {"id-aa-er-internal", SayEvidenceRecord},
    {"id-aa-er-external", SayEvidenceRecord},
    {"id-aa-ets-sigPolicyId", SaySignaturePolicy},
    {"id-aa-ets-commitmentType", SayCommitment},
    {"id-aa-ets-signerLocation", SaySignerLocation},
    {"id-aa-ets-signerAttr", SaySignerAttributes},
    {"id-aa-ets-signerAttrV2", SaySignerAttributesV2},
    {"id-aa-ets-mimeType", SayMimeType},
    {"id-aa-ets-certificateRefs", SayCertificateRefs},
    {"id-aa-ets-attrCertificateRefs", SayCertificateRefs},
    {"id-aa-ets-revocationRefs", ca::SayRevocationRefs},
    {"id-aa-ets-attrRevocationRefs", ca::SayRevocationRefs},
    {"id-aa-ets-certValues", ca::SayCertificateValues},
    {"id-aa-ets-revocationValues", ca::SayRevocationValues},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> CadesAttributeRows() {
    return kRows;
}

}  // namespace ca
