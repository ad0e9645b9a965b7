#include "asn1/Asn1Oid.h"
#include "asn1/OidTable.h"
#include "asn1/x509/AccessDescription.h"
#include "asn1/x509/AuthorityKeyIdentifier.h"
#include "asn1/x509/BasicConstraints.h"
#include "asn1/x509/DistributionPoint.h"
#include "asn1/x509/NameConstraints.h"
#include "asn1/x509/PolicyInformation.h"
#include "asn1/x509/PolicyMapping.h"
#include "common/ErrorCodes.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/PolicyText.h"
#include "records/text/ReasonText.h"
#include "records/text/SerialText.h"
#include "records/text/SharedFormatters.h"
#include "records/text/SignatureParts.h"

// The extensions of RFC 5280 (certificates 4.2, CRLs 5.2, CRL entries 5.3).

namespace {

using ca::CTextLines;
using ca::Octets;
using Value = std::span<const unsigned char>;

// RFC 5280, 4.2.1.9.
void SayBasicConstraints(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1BasicConstraints> constraints(value);
    lines.Line(kMsgCa, SetZORNAMessage(constraints->IsCa() ? kMsgYes : kMsgNo));
    const CAsn1Integer* length = constraints->PathLenConstraint();
    // A length without a CA means nothing, but is shown: it is in the certificate.
    if (length != nullptr || constraints->IsCa()) {
        lines.Line(kMsgPathLength,
                   length != nullptr ? ca::NumberText(length) : SetZORNAMessage(kMsgNotLimited));
    }
}

// RFC 5280, 4.2.1.3.
void SayUsage(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1BitString> bits(value);
    ca::SayKeyUsage(BitsOf(&*bits), lines);
}

// RFC 5280, 4.2.1.1: each member optional.
void SayAuthorityKeyIdentifier(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1AuthorityKeyIdentifier> id(value);
    if (id->KeyIdentifier() != nullptr) {
        lines.Line(kMsgKey, ca::OctetsText(id->KeyIdentifier()));
    }
    if (id->AuthorityCertIssuer() != nullptr) {
        lines.Line(kMsgIssuer, L"");
        const CTextLines::Level level(lines);
        ca::SayGeneralNames(ca::ElementOf(*id->AuthorityCertIssuer()), lines);
    }
    if (id->AuthorityCertSerialNumber() != nullptr) {
        lines.Line(kMsgSerial, ca::SerialText(OctetsOf(id->AuthorityCertSerialNumber())));
    }
}

// DistributionPointName ::= CHOICE { fullName [0] GeneralNames,
//                                    nameRelativeToCRLIssuer [1] RelativeDistinguishedName }
// Relative to the issuer's name: one RDN, not a whole name.
void SayPointName(const CAsn1Any* name, CTextLines& lines) {
    if (name == nullptr) {
        return;
    }
    if (name->Tag() == ca::ContextConstructed(0)) {
        ca::SayGeneralNames(ca::ElementOf(*name), lines);
    } else {
        lines.Line(kMsgRelativeName, ca::ReadableRdn(ca::FirstElement(name->Raw())));
    }
}

// RFC 5280, 4.2.1.13; freshestCRL is the same (4.2.1.15).
void SayDistributionPoints(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1DistributionPoint>> points(value);
    ca::SayEach(*points, lines, [&](const CAsn1DistributionPoint& point) {
        SayPointName(point.Name(), lines);
        if (point.Reasons() != nullptr) {
            lines.Line(kMsgReasons, ca::ReasonFlagsText(BitsOf(point.Reasons())));
        }
        if (point.CrlIssuer() != nullptr) {
            lines.Line(kMsgCrlIssuer, L"");
            const CTextLines::Level level(lines);
            ca::SayGeneralNames(ca::ElementOf(*point.CrlIssuer()), lines);
        }
    });
}

// RFC 5280, 5.2.5. The flags are FALSE where they are left out: only those that are set are said.
void SayIssuingDistributionPoint(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1IssuingDistributionPoint> point(value);
    SayPointName(point->Name(), lines);
    const std::pair<bool, Sentence> flags[] = {
        {point->OnlyContainsUserCerts(), kMsgOnlyUserCerts},
        {point->OnlyContainsCaCerts(), kMsgOnlyCaCerts},
        {point->OnlyContainsAttributeCerts(), kMsgOnlyAttributeCerts},
        {point->IndirectCrl(), kMsgIndirectCrl},
    };
    for (const auto& [isSet, text] : flags) {
        if (isSet) {
            lines.Line(text);
        }
    }
    if (point->OnlySomeReasons() != nullptr) {
        lines.Line(kMsgReasons, ca::ReasonFlagsText(BitsOf(point->OnlySomeReasons())));
    }
}

// The counterpart for attribute certificates. Its flags have a default of TRUE, so that each is
// said.
void SayAttributeIssuingPoint(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1AaIssuingDistributionPoint> point(value);
    SayPointName(point->Name(), lines);
    const std::pair<bool, std::wstring> contained[] = {
        {point->ContainsUserAttributeCerts(), SetZORNAMessage(kMsgAttributeCertificate)},
        {point->ContainsAaCerts(), SetZORNAMessage(kMsgAttributeAuthority)},
        {point->ContainsSoaPublicKeyCerts(), ca::COid("sOAIdentifier")->Name()},
    };
    for (const auto& [isContained, label] : contained) {
        lines.Line(label, SetZORNAMessage(isContained ? kMsgYes : kMsgNo));
    }
    if (point->IndirectCrl()) {
        lines.Line(kMsgIndirectCrl);
    }
    if (point->OnlySomeReasons() != nullptr) {
        lines.Line(kMsgReasons, ca::ReasonFlagsText(BitsOf(point->OnlySomeReasons())));
    }
}

// RFC 5280, 4.2.2.1 and 4.2.2.2: a service and where it is.
void SayInformationAccess(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1AccessDescription>> list(value);
    ca::SayEach(*list, lines, [&](const CAsn1AccessDescription& access) {
        const std::wstring method = ca::OidName(OctetsOf(access.AccessMethod()));
        CAsn1Element location = ca::FirstElement(access.AccessLocation()->Raw());
        // [6], an address: it goes on the line, as readers look for it.
        if (location.tag == ca::ContextTag(6)) {
            location.tag = kAsn1Ia5String;
            lines.Line(method, ca::ValueText(location));
            return;
        }
        lines.Line(method, L"");
        const CTextLines::Level level(lines);
        ca::SayGeneralName(location, lines);
    });
}

void SayPolicies(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1PolicyInformation>> list(value);
    ca::SayEach(*list, lines,
                [&](const CAsn1PolicyInformation& policy) { ca::SayPolicy(policy, lines); });
}

// RFC 5280, 4.2.1.5: the issuer's policy, then the one of the subject that it allows instead.
void SayPolicyMappings(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1PolicyMapping>> list(value);
    ca::SayEach(*list, lines, [&](const CAsn1PolicyMapping& mapping) {
        lines.Line(ca::OidText(OctetsOf(mapping.IssuerDomainPolicy())) + L" -> " +
                   ca::OidText(OctetsOf(mapping.SubjectDomainPolicy())));
    });
}

// RFC 5280, 4.2.1.11: the number of certificates after which each begins.
void SayPolicyConstraints(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1PolicyConstraints> constraints(value);
    if (constraints->RequireExplicitPolicy() != nullptr) {
        lines.Line(kMsgRequireExplicitPolicy, ca::NumberText(constraints->RequireExplicitPolicy()));
    }
    if (constraints->InhibitPolicyMapping() != nullptr) {
        lines.Line(kMsgInhibitPolicyMapping, ca::NumberText(constraints->InhibitPolicyMapping()));
    }
}

void SayInhibitAnyPolicy(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1Integer> certificates(value);
    lines.Line(kMsgInhibitAnyPolicy, ca::NumberText(&*certificates));
}

// minimum and maximum are not used with any form of name (RFC 5280, 4.2.1.10): the base is all that
// is said.
void SaySubtrees(Sentence label, const CAsn1SequenceOf<CAsn1GeneralSubtree>* subtrees,
                 CTextLines& lines) {
    if (subtrees == nullptr) {
        return;
    }
    lines.Line(label, L"");
    const CTextLines::Level level(lines);
    ca::SayEach(*subtrees, lines, [&](const CAsn1GeneralSubtree& subtree) {
        ca::SayGeneralName(ca::FirstElement(subtree.Base()->Raw()), lines);
    });
}

void SayNameConstraints(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1NameConstraints> constraints(value);
    SaySubtrees(kMsgPermitted, constraints->PermittedSubtrees(), lines);
    SaySubtrees(kMsgExcluded, constraints->ExcludedSubtrees(), lines);
}

// CRLNumber (RFC 5280, 5.2.3), up to 20 octets.
void SayNumber(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1Integer> number(value);
    lines.Line(ca::Hex(OctetsOf(&*number)));
}

// RFC 5280, 5.3.1.
void SayReason(Value value, CTextLines& lines) {
    const CAsn1Element element = ca::FirstElement(value);
    std::uint32_t reason = 0;
    if (element.tag != kAsn1Enumerated || !ca::ReadSmallInteger(element, reason)) {
        throw MakeAsn1WrongTag("CRLReason", element.tag, 0);
    }
    lines.Line(ca::ReasonText(reason));
}

struct KeyUsageName {
    unsigned bit;
    Sentence name;
};

// RFC 5280, 4.2.1.3, in the order of the bit string.
constexpr KeyUsageName kKeyUsageNames[] = {
    {0x80, kMsgUsageDigitalSignature}, {0x40, kMsgUsageNonRepudiation},
    {0x20, kMsgUsageKeyEncipherment},  {0x10, kMsgUsageDataEncipherment},
    {0x08, kMsgUsageKeyAgreement},     {0x04, kMsgUsageCertSigning},
    {0x02, kMsgUsageCrlSigning},       {0x01, kMsgUsageEncipherOnly},
    {0x8000, kMsgUsageDecipherOnly}};

// Extensions of certificates, lists and their entries side by side: their identifiers differ.
constexpr ca::ExtensionRow kRows[] = {
    {"basicConstraints", SayBasicConstraints},
    {"keyUsage", SayUsage},
    {"extKeyUsage", ca::SayOidList},
    {"msApplicationCertPolicies", SayPolicies},
    {"msApplicationPolicyMappings", SayPolicyMappings},
    {"msApplicationPolicyConstraints", SayPolicyConstraints},
    {"subjectKeyIdentifier", ca::SayOctetString},
    {"authorityKeyIdentifier", SayAuthorityKeyIdentifier},
    {"subjectAltName", ca::SayNames},
    {"issuerAltName", ca::SayNames},
    {"certificateIssuer", ca::SayNames},
    {"cRLDistributionPoints", SayDistributionPoints},
    {"freshestCRL", SayDistributionPoints},
    {"msCRLSelfCDP", SayDistributionPoints},
    {"issuingDistributionPoint", SayIssuingDistributionPoint},
    {"aAissuingDistributionPoint", SayAttributeIssuingPoint},
    {"authorityInfoAccess", SayInformationAccess},
    {"subjectInfoAccess", SayInformationAccess},
    {"certificatePolicies", SayPolicies},
    {"policyMappings", SayPolicyMappings},
    {"policyConstraints", SayPolicyConstraints},
    {"inhibitAnyPolicy", SayInhibitAnyPolicy},
    {"nameConstraints", SayNameConstraints},
    {"privateKeyUsagePeriod", ca::SayPrivateKeyUsagePeriod},
    {"cRLNumber", SayNumber},
    {"deltaCRLIndicator", SayNumber},
    {"msCRLVirtualBase", SayNumber},
    {"cRLStreamIdentifier", SayNumber},
    {"cRLReason", SayReason},
    {"invalidityDate", ca::SayTimeValue},
    {"expiredCertsOnCRL", ca::SayTimeValue},
    {"baseUpdateTime", ca::SayTimeValue},
    {"msCRLNextPublish", ca::SayTimeValue},
    {"holdInstructionCode", ca::SayOidValue},
};

}  // namespace

namespace ca {

std::wstring KeyUsageText(std::uint32_t bits) {
    std::wstring names;
    for (const KeyUsageName& usage : kKeyUsageNames) {
        if ((bits & usage.bit) != 0) {
            names += names.empty() ? L"" : L", ";
            names += SetZORNAMessage(usage.name);
        }
    }
    return names;
}

// The record's number has the first octet of the bit string in its low octet, the ninth bit as
// 0x8000.
std::uint32_t KeyUsageOf(const CAsn1Bits& bits) {
    constexpr std::size_t kUsages = 16;
    std::uint32_t usage = 0;
    for (std::size_t bit = 0; bit < kUsages; ++bit) {
        usage |= bits[bit] ? (bit / 8 == 0 ? 0x80U : 0x8000U) >> (bit % 8) : 0U;
    }
    return usage;
}

void SayKeyUsage(const CAsn1Bits& bits, CTextLines& lines) {
    const std::wstring words = KeyUsageText(KeyUsageOf(bits));
    // The digits tell bits that have no name.
    lines.Line(words + (words.empty() ? L"(" : L" (") + Hex(bits.octets) + L")");
}

std::span<const ExtensionRow> StandardExtensionRows() {
    return kRows;
}

}  // namespace ca
