#include "asn1/OidTable.h"
#include "asn1/views/AttributeViews.h"
#include "asn1/x509/CertificateTemplate.h"
#include "asn1/x509/GeneralName.h"
#include "asn1/x509/ObsoleteExtensions.h"
#include "asn1/x509/VendorExtensions.h"
#include "common/DecimalText.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/OutlineText.h"
#include "records/text/PolicyText.h"
#include "records/text/SerialText.h"
#include "records/text/SharedFormatters.h"
#include "records/text/SignatureParts.h"

// Extensions of makers, and those that the standard gave up.

namespace {

using ca::CTextLines;
using ca::Octets;
using Value = std::span<const unsigned char>;

// ---- Microsoft ----

// The name of a template, version 1: a string, which is its common name in the directory.
void SayTemplateName(Value value, CTextLines& lines) {
    CTextLines name;
    ca::SayText(value, name);
    lines.Line(kMsgTemplate, name.Take());
}

// CertificateTemplate (MS-WCCE, 2.2.2.7.7.2): "1.3.6.1.4.1.311.21.8.1, 100.3".
void SayTemplate(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1CertificateTemplate> read(value);
    lines.Line(kMsgTemplate, ca::OidText(OctetsOf(read->TemplateID())));
    if (read->TemplateMajorVersion() != nullptr) {
        lines.Append(L", " + ca::NumberText(read->TemplateMajorVersion()));
    }
    if (read->TemplateMinorVersion() != nullptr) {
        lines.Append(L'.' + ca::NumberText(read->TemplateMinorVersion()));
    }
}

// CAVersion ::= INTEGER: the index of the certificate, from bit 16 on that of the key
// (MS-WCCE, 2.2.2.7.7.1).
void SayCaVersion(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1Integer> version(value);
    const std::int64_t number = IntegerOf(&*version, -1);
    if (number < 0) {
        throw MakeAsn1Fault(Asn1Fault::kMalformed, "CAVersion", 0);
    }
    lines.Line(SetZORNAMessage(kMsgCaKey) + (L' ' + ca::DecimalText(number >> 16)) + L", " +
               SetZORNAMessage(kMsgCaCertificateIndex) + L' ' + ca::DecimalText(number & 0xFFFF));
}

// GeneralNames whose one otherName holds the identifier's text in an OCTET STRING
// (MS-WCCE, 2.2.2.7.7.4).
void SaySecurityId(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1GeneralNames> names(value);
    ca::SayEach(*names, lines, [&](const CAsn1GeneralName& name) {
        const CAsn1OtherName* other = name.OtherName();
        if (other != nullptr && other->Value()->Tag() == kAsn1OctetString) {
            lines.Line(ca::HiddenText(other->Value()));
        } else {
            ca::SayGeneralName(name, lines);
        }
    });
}

// ---- Netscape ----

// netscape-cert-type ::= BIT STRING { SSL-client(0), SSL-server(1), S-MIME(2), object-signing(3),
//     reserved(4), SSL-CA(5), S-MIME-CA(6), object-signing-CA(7) }
void SayNetscapeType(Value value, CTextLines& lines) {
    constexpr std::pair<std::size_t, Sentence> kTypes[] = {
        {0, kMsgSslClient}, {1, kMsgSslServer}, {2, kMsgSmime},           {3, kMsgObjectSigning},
        {5, kMsgSslCa},     {6, kMsgSmimeCa},   {7, kMsgObjectSigningCa},
    };
    const ca::CDecoded<CAsn1BitString> type(value);
    const CAsn1Bits bits = BitsOf(&*type);
    std::wstring words;
    for (const auto& [bit, word] : kTypes) {
        if (bits[bit]) {
            ca::AppendListed(words, SetZORNAMessage(word));
        }
    }
    lines.Line(words + (words.empty() ? L"(" : L" (") + ca::Hex(bits.octets) + L')');
}

// ---- Entrust, Adobe ----

// entrustVersInfo: the version's text, and flags by their bit.
void SayEntrustVersion(Value value, CTextLines& lines) {
    constexpr const wchar_t* kFlags[] = {L"keyUpdateAllowed", L"newExtensions",
                                         L"pKIXCertificate",  L"enterpriseCategory",
                                         L"webCategory",      L"sETCategory"};
    const ca::CDecoded<CAsn1EntrustVersInfo> info(value);
    std::wstring flags;
    const CAsn1Bits bits = BitsOf(info->EntrustInfoFlags());
    for (std::size_t bit = 0; bit < std::size(kFlags); ++bit) {
        if (bits[bit]) {
            ca::AppendListed(flags, kFlags[bit]);
        }
    }
    lines.Line(ca::MemberText(info->EntrustVers()));
    if (!flags.empty()) {
        lines.Append(L" (" + flags + L')');
    }
}

// adobeTimestamp: the service that a program should ask, and whether it wants to know who asks.
void SayTimestampService(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1AdobeTimestamp> service(value);
    lines.Line(kMsgFieldVersion, ca::NumberText(service->Version()));
    ca::SayGeneralName(*service->Location(), lines);
    lines.Line(kMsgRequiresAuthentication,
               SetZORNAMessage(service->RequiresAuth() ? kMsgYes : kMsgNo));
}

void SayArchiveRevocationInfo(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1AdobeArchiveRevInfo> info(value);
    lines.Line(kMsgFieldVersion, ca::NumberText(info->Version()));
}

// ---- Obsolete ----

// The issuer is a Name here, in some certificates GeneralNames.
void SayOldAuthorityKeyId(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1OldAuthorityKeyId> id(value);
    if (id->KeyIdentifier() != nullptr) {
        lines.Line(kMsgKey, ca::OctetsText(id->KeyIdentifier()));
    }
    if (id->CertIssuer() != nullptr) {
        const CAsn1Element issuer = ca::FirstElement(id->CertIssuer()->ContentOctets());
        lines.Line(kMsgIssuer, issuer.tag == kAsn1Sequence
                                   ? ca::ReadableName(issuer)
                                   : ca::GeneralNamesLine(ca::ElementOf(*id->CertIssuer()), lines));
    }
    if (id->CertSerialNumber() != nullptr) {
        lines.Line(kMsgSerial, ca::SerialText(OctetsOf(id->CertSerialNumber())));
    }
}

// keyUsageRestriction of the draft of X.509 (1996).
void SayKeyUsageRestriction(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1KeyUsageRestriction> restriction(value);
    if (restriction->CertPolicySet() != nullptr) {
        ca::SayEach(*restriction->CertPolicySet(), lines,
                    [&](const auto& policy) { ca::SayOidList(policy.Raw(), lines); });
    }
    if (restriction->RestrictedKeyUsage() != nullptr) {
        ca::SayKeyUsage(BitsOf(restriction->RestrictedKeyUsage()), lines);
    }
}

void SayKeyAttributes(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1OldKeyAttributes> attributes(value);
    if (attributes->KeyIdentifier() != nullptr) {
        lines.Line(kMsgKey, ca::OctetsText(attributes->KeyIdentifier()));
    }
    if (attributes->IntendedKeyUsage() != nullptr) {
        ca::SayKeyUsage(BitsOf(attributes->IntendedKeyUsage()), lines);
    }
    if (const CAsn1PrivateKeyUsagePeriod* period = attributes->PrivateKeyUsagePeriod()) {
        ca::SayPrivateKeyUsagePeriod(period->Raw(), lines);
    }
}

// subjectType ::= BIT STRING { endEntity(0), ca(1) }.
void SayOldBasicConstraints(Value value, CTextLines& lines) {
    constexpr std::size_t kCaBit = 1;
    const ca::CDecoded<CAsn1OldBasicConstraints> constraints(value);
    const bool isCa = BitsOf(constraints->SubjectType())[kCaBit];
    lines.Line(kMsgCa, SetZORNAMessage(isCa ? kMsgYes : kMsgNo));
    if (constraints->PathLenConstraint() != nullptr) {
        lines.Line(kMsgPathLength, ca::NumberText(constraints->PathLenConstraint()));
    }
    if (constraints->SubtreesConstraint() != nullptr) {
        lines.Line(kMsgPermitted, L"");
        const CTextLines::Level level(lines);
        ca::SayUnknownValue(constraints->SubtreesConstraint()->Raw(), lines);
    }
}

// As Windows keeps texts.
// The text of units of 16 bits, the least significant octet first, without their final zero.
std::wstring LittleEndianText(ca::Octets octets) {
    std::vector<unsigned char> swapped(octets.begin(), octets.end());
    for (std::size_t i = 0; i + 1 < swapped.size(); i += 2) {
        std::swap(swapped[i], swapped[i + 1]);
    }
    if (swapped.size() > 1 && swapped.back() == 0 && swapped[swapped.size() - 2] == 0) {
        swapped.resize(swapped.size() - 2);
    }
    CAsn1Element text;
    text.tag = kAsn1UnicodeString;
    text.content = swapped;
    return ca::ValueText(text);
}

void SayCatalogProperty(Value value, CTextLines& lines) {
    const CAsn1CatalogNameValueView property(ca::FirstElement(value));
    const CAsn1Element name = property.Name();
    const CAsn1Element text = property.Value();
    if (name.tag != kAsn1UnicodeString || text.tag != kAsn1OctetString) {
        throw MakeAsn1WrongTag("CatalogNameValue", property.Element().tag, 0);
    }
    lines.Line(ca::ValueText(name), LittleEndianText(text.content));
}

constexpr ca::ExtensionRow kRows[] = {
    {"msEnrollCerttype", SayTemplateName},
    {"msCertificateTemplate", SayTemplate},
    {"msCAVersion", SayCaVersion},
    {"msPreviousCertHash", ca::SayOctetString},
    {"msNtdsSecurityExt", SaySecurityId},
    {"msCatalogNameValue", SayCatalogProperty},
    {"netscapeCertType", SayNetscapeType},
    {"netscapeBaseUrl", ca::SayText},
    {"netscapeRevocationUrl", ca::SayText},
    {"netscapeCaRevocationUrl", ca::SayText},
    {"netscapeCaPolicyUrl", ca::SayText},
    {"netscapeRenewalUrl", ca::SayText},
    {"netscapeSslServerName", ca::SayText},
    {"netscapeComment", ca::SayText},
    {"entrustVersInfo", SayEntrustVersion},
    {"adobeTimestamp", SayTimestampService},
    {"adobeArchiveRevInfo", SayArchiveRevocationInfo},
    {"oldAuthorityKeyIdentifier", SayOldAuthorityKeyId},
    {"oldKeyAttributes", SayKeyAttributes},
    {"primaryKeyUsageRestriction", SayKeyUsageRestriction},
    {"oldSubjectAltName", ca::SayNames},
    {"oldIssuerAltName", ca::SayNames},
    {"oldBasicConstraints", SayOldBasicConstraints},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> VendorExtensionRows() {
    return kRows;
}

}  // namespace ca
