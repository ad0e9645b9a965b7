#include "records/text/SignatureParts.h"

#include "asn1/attributes/Holder.h"
#include "asn1/attributes/TstInfo.h"
#include "asn1/cms/SignedData.h"
#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/AttributeViews.h"
#include "common/DecimalText.h"
#include "records/text/AlgorithmText.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionList.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/SerialText.h"
#include "records/text/TimeText.h"

#include <string_view>

namespace {

using ca::CTextLines;
using ca::Octets;

// TSTInfo (RFC 3161, 2.4.2), the time first, since it is what people look for.
void SayTstInfo(std::span<const unsigned char> octets, CTextLines& lines) {
    const ca::CDecoded<CAsn1TstInfo> stamp(octets);
    const CAsn1MessageImprint& imprint = *stamp->MessageImprint();
    lines.Line(kMsgTime, ca::TimeLine(*stamp->GenTime()));
    lines.Line(kMsgPolicy, ca::OidWithName(OctetsOf(stamp->Policy())));
    lines.Line(kMsgSerial, ca::SerialText(OctetsOf(stamp->SerialNumber())));
    lines.Line(ca::DigestText(*imprint.HashAlgorithm(), imprint.HashedMessage()));
    if (stamp->Accuracy() != nullptr) {
        lines.Line(kMsgAccuracy, ca::AccuracyText(*stamp->Accuracy()));
    }
    if (stamp->Ordering()) {
        lines.Line(kMsgOrdered, SetZORNAMessage(kMsgYes));
    }
    if (stamp->Nonce() != nullptr) {
        lines.Line(kMsgNonce, ca::Hex(OctetsOf(stamp->Nonce())));
    }
    if (stamp->Tsa() != nullptr) {
        lines.Line(kMsgTimeStampAuthority,
                   ca::GeneralNameLine(ca::ElementOf(*stamp->Tsa()), lines));
    }
    if (stamp->Extensions() != nullptr) {
        ca::SayExtensions(*stamp->Extensions(), lines);
    }
}

// The value of the signed attribute signingTime; without octets when there is none.
CAsn1Element SigningTimeOf(const CAsn1SignerInfo& signer) {
    if (signer.SignedAttrs() == nullptr) {
        return {};
    }
    CAsn1Element element;
    for (CAsn1Cursor cursor(signer.SignedAttrs()->ContentOctets()); cursor.Step(element);) {
        const CAsn1AttributeView attribute(element);
        if (ca::IsOid(attribute.Type(), "id-signingTime")) {
            return attribute.FirstValue();
        }
    }
    return {};
}

// The name in the certificate of a signer.
std::wstring SubjectText(const ca::SignerCertificate& certificate) {
    const std::string_view subject = certificate.names.subject;
    return ca::ReadableName(ca::FirstElement(
        Octets(reinterpret_cast<const unsigned char*>(subject.data()), subject.size())));
}

// How a message names a signer.
void SaySignerId(const CAsn1SignerIdentifier& id, CTextLines& lines) {
    if (const CAsn1IssuerAndSerialNumber* name = id.IssuerAndSerialNumber()) {
        lines.Line(kMsgIssuer, ca::ReadableName(*name->Issuer()));
        lines.Line(kMsgSerial, ca::SerialText(OctetsOf(name->SerialNumber())));
    } else {
        lines.Line(kMsgKey, ca::OctetsText(id.SubjectKeyIdentifier()));
    }
}

// A ContentInfo without what some writers put round it.
// \param joined  holds its octets when they came in an OCTET STRING.
std::span<const unsigned char> Unwrapped(std::span<const unsigned char> value,
                                         std::vector<unsigned char>& joined) {
    // A bound on copies: a string in segments is joined anew at each step.
    constexpr int kMostWraps = 4;
    for (int i = 0; i < kMostWraps; ++i) {
        const CAsn1Element element = ca::FirstElement(value);
        if ((element.tag & ~kAsn1ConstructedBit) == kAsn1OctetString) {
            joined = OctetStringOf(element);
            value = joined;
        } else if (const auto token = ca::GrantedToken(element); token.IsThere()) {
            value = token.Element().raw;
        } else if (element.tag == ca::ContextConstructed(0)) {
            value = element.content;
        } else {
            break;
        }
    }
    return value;
}

}  // namespace

namespace ca {

std::wstring OctetsText(const CAsn1OctetString* octets) {
    return Hex(OctetStringOf(octets));
}

// Accuracy (RFC 3161, 2.4.2): parts out of their ranges count as none.
std::wstring AccuracyText(const CAsn1Accuracy& accuracy) {
    constexpr std::uint64_t kMicros = 1000000;
    const auto part = [](const CAsn1Integer* number, std::int64_t highest) {
        const std::int64_t value = IntegerOf(number, 0);
        return static_cast<std::uint64_t>(value > 0 && value <= highest ? value : 0);
    };
    const std::uint64_t fraction =
        1000 * part(accuracy.Millis(), 999) + part(accuracy.Micros(), 999);
    std::wstring text = DecimalText(part(accuracy.Seconds(), INT64_MAX));
    // The sum begins with 1, so that the zeros of the fraction stay.
    if (fraction != 0) {
        std::wstring digits = DecimalText(kMicros + fraction);
        digits.resize(digits.find_last_not_of(L'0') + 1);
        text += L'.' + digits.substr(1);
    }
    return text + L' ' + SetZORNAMessage(kMsgSeconds);
}

std::wstring DigestText(const CAsn1AlgorithmView& algorithm, const CAsn1OctetString* digest) {
    return AlgorithmText(algorithm) + L": " + OctetsText(digest);
}

std::wstring DigestText(COid algorithm, const CAsn1OctetString* digest) {
    return algorithm->Name() + (L": " + OctetsText(digest));
}

std::wstring IssuerSerialText(const CAsn1IssuerSerial& certificate, CTextLines& lines) {
    return GeneralNamesLine(*certificate.Issuer(), lines) + L", " +
           SerialText(OctetsOf(certificate.Serial()));
}

std::wstring IssuerSerialText(const CAsn1IssuerAndSerialNumber& certificate) {
    return ReadableName(*certificate.Issuer()) + L", " +
           SerialText(OctetsOf(certificate.SerialNumber()));
}

void SayCount(Sentence label, std::size_t count, CTextLines& lines) {
    lines.Line(label, DecimalText(count));
}

std::wstring SignerIdText(const CAsn1SignerIdentifier& id) {
    if (id.IssuerAndSerialNumber() != nullptr) {
        return IssuerSerialText(*id.IssuerAndSerialNumber());
    }
    return SetZORNAMessage(kMsgKey) + (L": " + OctetsText(id.SubjectKeyIdentifier()));
}

// The certificate may come with this signature or with the message round it.
void SaySigner(const CAsn1SignerInfo& signer, CSignerCertificates* own, CTextLines& lines) {
    const CAsn1SignerIdentifier& id = *signer.Sid();
    const SignerCertificate* certificate = own != nullptr ? own->Find(id) : nullptr;
    if (certificate == nullptr && lines.Signers() != nullptr) {
        certificate = lines.Signers()->Find(id);
    }
    lines.Line(kMsgSigner, certificate != nullptr ? SubjectText(*certificate) : std::wstring());
    const CTextLines::Level level(lines);
    SaySignerId(id, lines);
    lines.Line(kMsgFieldSignatureAlg,
               SignerAlgorithmText(*signer.SignatureAlgorithm(), *signer.DigestAlgorithm()));
    if (const CAsn1Element time = SigningTimeOf(signer); !time.raw.empty()) {
        lines.Line(kMsgTime, TimeLine(time));
    }
}

// A time stamp is a signed message whose content is a TSTInfo (RFC 3161, 2.4.2).
bool SayTimeStamp(const CAsn1EncapsulatedContentInfo& content, CTextLines& lines) {
    if (content.EContent() == nullptr ||
        !IsOid(OctetsOf(content.EContentType()), "id-ct-TSTInfo")) {
        return false;
    }
    std::vector<unsigned char> info = OctetStringOf(content.EContent());
    SayTstInfo(info, lines);
    return true;
}

CAsn1ContentInfoView GrantedToken(const CAsn1TimeStampRespView& response) {
    constexpr std::uint32_t kGrantedWithMods = 1;  // RFC 3161, 2.4.2
    const CAsn1Element status = response.Status();
    std::uint32_t number = 0;
    const bool isGranted = status.tag == kAsn1Integer && ReadSmallInteger(status, number) &&
                           number <= kGrantedWithMods;
    return isGranted ? response.TimeStampToken() : CAsn1ContentInfoView();
}

void SaySignedMessage(std::span<const unsigned char> value, CTextLines& lines) {
    std::vector<unsigned char> joined;
    const CDecoded<CAsn1ContentInfo> message(Unwrapped(value, joined), Asn1Blocks::kRead);
    if (message->Content() == nullptr) {
        throw MakeAsn1Missing("ContentInfo.content", 0);
    }
    const CDecoded<CAsn1SignedData> signedData(message->Content()->Raw(), Asn1Blocks::kRead);
    const CAsn1EncapsulatedContentInfo& content = *signedData->EncapContentInfo();
    if (!SayTimeStamp(content, lines)) {
        lines.Line(kMsgContent, OidWithName(OctetsOf(content.EContentType())));
    }
    // Those of the message itself come before those round it.
    const CAsn1SetOf<CAsn1Any>* certificates = signedData->Certificates();
    CSignerCertificates own(certificates != nullptr ? certificates->ContentOctets()
                                                    : std::span<const unsigned char>());
    SayEach(*signedData->SignerInfos(), lines,
            [&](const CAsn1SignerInfo& signer) { SaySigner(signer, &own, lines); });
    if (certificates != nullptr) {
        SayCount(kMsgCertificates, certificates->Count(), lines);
    }
}

}  // namespace ca
