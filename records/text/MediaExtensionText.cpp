#include "asn1/x509/BiometricData.h"
#include "asn1/x509/Logotype.h"
#include "common/DecimalText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/SharedFormatters.h"
#include "records/text/SignatureParts.h"

// Pictures and sounds that a certificate refers to. Nothing is fetched.

namespace {

using ca::CTextLines;
using Value = std::span<const unsigned char>;

// Where it is and what its digests are.
void SayReference(const CAsn1SequenceOf<CAsn1IA5String>& addresses,
                  const CAsn1SequenceOf<CAsn1HashAlgAndValue>& digests, CTextLines& lines) {
    ca::SayEach(addresses, lines, [&](const CAsn1IA5String& address) {
        lines.Line(kMsgAddress, ca::MemberText(&address));
    });
    ca::SayEach(digests, lines, [&](const CAsn1HashAlgAndValue& digest) {
        lines.Line(ca::DigestText(*digest.HashAlg(), digest.HashValue()));
    });
}

// LogotypeDetails (RFC 9399, 4.1): the media type, where the file is and what it must hash to.
void SayMedia(Sentence kind, const CAsn1SequenceOf<CAsn1LogotypeMedia>* media, CTextLines& lines) {
    if (media == nullptr) {
        return;
    }
    ca::SayEach(*media, lines, [&](const CAsn1LogotypeMedia& each) {
        const CAsn1LogotypeDetails& details = *each.Details();
        lines.Line(kind, ca::MemberText(details.MediaType()));
        const CTextLines::Level level(lines);
        SayReference(*details.LogotypeURI(), *details.LogotypeHash(), lines);
    });
}

// LogotypeInfo ::= CHOICE: the files themselves, or a file that lists them.
void SayLogotypeInfo(const CAsn1LogotypeInfo& info, CTextLines& lines) {
    if (const CAsn1LogotypeReference* indirect = info.Indirect()) {
        SayReference(*indirect->RefStructURI(), *indirect->RefStructHash(), lines);
        return;
    }
    SayMedia(kMsgImage, info.Direct()->Image(), lines);
    SayMedia(kMsgAudio, info.Direct()->Audio(), lines);
}

void SayLogotype(Sentence kind, const CAsn1LogotypeInfo* info, CTextLines& lines) {
    if (info != nullptr) {
        lines.Line(kind, L"");
        const CTextLines::Level level(lines);
        SayLogotypeInfo(*info, lines);
    }
}

// LogotypeExtn (RFC 9399, 4.1).
void SayLogotypes(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1LogotypeExtn> logotypes(value);
    if (logotypes->CommunityLogos() != nullptr) {
        ca::SayEach(*logotypes->CommunityLogos(), lines, [&](const CAsn1LogotypeInfo& info) {
            SayLogotype(kMsgLogotypeCommunity, &info, lines);
        });
    }
    SayLogotype(kMsgLogotypeIssuer, logotypes->IssuerLogo(), lines);
    SayLogotype(kMsgLogotypeSubject, logotypes->SubjectLogo(), lines);
    if (logotypes->OtherLogos() != nullptr) {
        ca::SayEach(*logotypes->OtherLogos(), lines, [&](const CAsn1OtherLogotypeInfo& other) {
            lines.Line(ca::OidWithName(OctetsOf(other.LogotypeType())), L"");
            const CTextLines::Level level(lines);
            SayLogotypeInfo(*other.Info(), lines);
        });
    }
}

// A predefined type: picture (0), handwritten-signature (1) (RFC 3739, 3.2.5).
std::wstring BiometricType(const CAsn1Any& type) {
    const CAsn1Element element = ca::FirstElement(type.Raw());
    if (element.tag == kAsn1ObjectIdentifier) {
        return ca::OidWithName(element.content);
    }
    std::uint32_t number = 0;
    if (element.tag != kAsn1Integer || !ca::ReadSmallInteger(element, number)) {
        throw MakeAsn1WrongTag("BiometricData.typeOfBiometricData", element.tag, 0);
    }
    return number == 0   ? SetZORNAMessage(kMsgImage)
           : number == 1 ? SetZORNAMessage(kMsgHandwrittenSignature)
                         : ca::DecimalText(number);
}

// BiometricSyntax (RFC 3739, 3.2.5): the digest of the data, which stand elsewhere.
void SayBiometrics(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1BiometricData>> list(value);
    ca::SayEach(*list, lines, [&](const CAsn1BiometricData& data) {
        lines.Line(BiometricType(*data.TypeOfBiometricData()));
        const CTextLines::Level level(lines);
        lines.Line(ca::DigestText(*data.HashAlgorithm(), data.BiometricDataHash()));
        if (data.SourceDataUri() != nullptr) {
            lines.Line(kMsgAddress, ca::MemberText(data.SourceDataUri()));
        }
    });
}

constexpr ca::ExtensionRow kRows[] = {
    {"logotype", SayLogotypes},
    {"biometricInfo", SayBiometrics},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> MediaExtensionRows() {
    return kRows;
}

}  // namespace ca
