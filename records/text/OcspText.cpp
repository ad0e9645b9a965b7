#include "records/text/OcspText.h"

#include "asn1/OidTable.h"
#include "asn1/ocsp/OcspRequest.h"
#include "asn1/ocsp/OcspResponse.h"
#include "asn1/ocsp/PreferredSignatureAlgorithm.h"
#include "asn1/views/MessageViews.h"
#include "common/DecimalText.h"
#include "records/text/AlgorithmText.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionList.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/ReasonText.h"
#include "records/text/SerialText.h"
#include "records/text/SharedFormatters.h"
#include "records/text/SignatureParts.h"
#include "records/text/TimeText.h"

#include <vector>

namespace {

using ca::CTextLines;
using Value = std::span<const unsigned char>;

// "Revoked, 01.02.2024 10:00:00 (utc 01.02.2024 07:00:00), Key compromise"
// CertStatus ::= CHOICE (RFC 6960, 4.2.1).
std::wstring StatusText(const CAsn1CertStatus& status) {
    const CAsn1RevokedInfo* revoked = status.Revoked();
    if (revoked == nullptr) {
        return SetZORNAMessage(status.Good() != nullptr ? kMsgOcspGood : kMsgOcspUnknown);
    }
    std::wstring text =
        SetZORNAMessage(kMsgOcspRevoked) + (L", " + ca::TimeLine(*revoked->RevocationTime()));
    std::uint32_t reason = 0;
    if (revoked->RevocationReason() != nullptr &&
        ca::ReadSmallInteger(ca::FirstElement(revoked->RevocationReason()->Raw()), reason)) {
        text += L", " + ca::ReasonText(reason);
    }
    return text;
}

void SayOptional(const CAsn1Extensions* extensions, CTextLines& lines) {
    if (extensions != nullptr) {
        ca::SayExtensions(*extensions, lines);
    }
}

// SingleResponse: the number first, since it tells which certificate is meant.
void SaySingleResponse(const CAsn1SingleResponse& response, CTextLines& lines) {
    lines.Line(kMsgSerial, ca::SerialText(OctetsOf(response.CertId()->SerialNumber())));
    const CTextLines::Level level(lines);
    lines.Line(kMsgOcspStatus, StatusText(*response.CertStatus()));
    lines.Line(kMsgThisUpdate, ca::TimeLine(*response.ThisUpdate()));
    if (response.NextUpdate() != nullptr) {
        lines.Line(kMsgNextUpdate, ca::TimeLine(*response.NextUpdate()));
    }
    SayOptional(response.SingleExtensions(), lines);
}

// ResponseData: the responder and its time stand in one line above the answers.
void SayResponseData(const CAsn1ResponseData& data, CTextLines& lines) {
    lines.Line(ca::ResponderText(*data.ResponderId()) + L", " + ca::TimeLine(*data.ProducedAt()));
    const CTextLines::Level level(lines);
    ca::SayEach(*data.Responses(), lines,
                [&](const CAsn1SingleResponse& response) { SaySingleResponse(response, lines); });
    SayOptional(data.ResponseExtensions(), lines);
}

// A response without one says in a number why (RFC 6960, 4.2.1).
void SayResponseStatus(const CAsn1OcspResponse& response, CTextLines& lines) {
    std::uint32_t status = 0;
    const CAsn1Element element = ca::FirstElement(response.ResponseStatus()->Raw());
    if (ca::ReadSmallInteger(element, status)) {
        // Any number but 0 stands for an answer that was not given; its text is for another
        // describer.
        lines.Line(kMsgOcspStatus, ca::DecimalText(status));
    } else {
        lines.Unreadable(SetZORNAMessage(kMsgOcspStatus), element.raw);
    }
}

void SayNonce(Value value, CTextLines& lines) {
    // Older senders leave out the OCTET STRING inside (RFC 9654, 1).
    const CAsn1Element nonce = ca::FirstElement(value);
    lines.Line(ca::Hex(nonce.tag == kAsn1OctetString ? ca::Octets(nonce.content) : value));
}

// CrlID (RFC 6960, 4.4.2): every member optional.
void SayCrlReference(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1CrlId> crl(value);
    if (crl->CrlUrl() != nullptr) {
        lines.Line(ca::ValueText(*crl->CrlUrl()));
    }
    if (crl->CrlNum() != nullptr) {
        lines.Line(kMsgSerial, ca::SerialText(OctetsOf(crl->CrlNum())));
    }
    if (crl->CrlTime() != nullptr) {
        lines.Line(ca::TimeLine(*crl->CrlTime()));
    }
}

// ServiceLocator (RFC 6960, 4.4.6).
void SayServiceLocator(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1ServiceLocator> locator(value);
    lines.Line(kMsgIssuer, ca::ReadableName(*locator->Issuer()));
    ca::SayEach(*locator->Locator(), lines, [&](const CAsn1AccessDescription& access) {
        lines.Line(ca::OidWithName(OctetsOf(access.AccessMethod())),
                   ca::GeneralNameLine(ca::FirstElement(access.AccessLocation()->Raw()), lines));
    });
}

// The algorithm of the signature, after it that of the key and its curve.
// PreferredSignatureAlgorithms (RFC 6960, 4.4.7).
void SayPreferredAlgorithms(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1PreferredSignatureAlgorithm>> list(value);
    ca::SayEach(*list, lines, [&](const CAsn1PreferredSignatureAlgorithm& preferred) {
        std::wstring text = ca::AlgorithmText(*preferred.SigIdentifier());
        if (const CAsn1AlgorithmIdentifier* key = preferred.PubKeyAlgIdentifier()) {
            ca::AppendListed(text, ca::AlgorithmText(*key));
            // Of the key's parameters only a named curve is said.
            if (key->Parameters() != nullptr && key->Parameters()->Tag() == kAsn1ObjectIdentifier) {
                ca::AppendListed(text, ca::OidName(OctetsOf(key->Parameters())));
            }
        }
        lines.Line(text);
    });
}

constexpr ca::ExtensionRow kRows[] = {
    {"ocspNonce", SayNonce},
    {"ocspCRL", SayCrlReference},
    {"ocspResponse", ca::SayOidList},
    {"ocspArchiveCutoff", ca::SayTimeValue},
    {"ocspServiceLocator", SayServiceLocator},
    {"ocspPrefSigAlgs", SayPreferredAlgorithms},
    {"ocspExtendedRevoke", ca::SayPresent},
};

}  // namespace

namespace ca {

std::wstring ResponderText(const CAsn1ResponderId& responder) {
    return responder.ByName() != nullptr
               ? ReadableName(*responder.ByName())
               : SetZORNAMessage(kMsgKey) + (L": " + OctetsText(responder.ByKey()));
}

void SayOcspResponse(Value value, CTextLines& lines) {
    // Stores of signatures keep either the response or the BasicOCSPResponse inside it.
    if (!CAsn1OcspResponseView(FirstElement(value)).IsResponse()) {
        const CDecoded<CAsn1BasicOcspResponse> basic(value, Asn1Blocks::kRead);
        SayResponseData(*basic->TbsResponseData(), lines);
        return;
    }
    const CDecoded<CAsn1OcspResponse> response(value, Asn1Blocks::kRead);
    // responseBytes hold the BasicOCSPResponse as an OCTET STRING (RFC 6960, 4.2.1).
    if (const CAsn1ResponseBytes* bytes = response->ResponseBytes()) {
        std::vector<unsigned char> octets = OctetStringOf(bytes->Response());
        const CDecoded<CAsn1BasicOcspResponse> basic(octets, Asn1Blocks::kRead);
        SayResponseData(*basic->TbsResponseData(), lines);
    } else {
        SayResponseStatus(*response, lines);
    }
}

std::span<const ExtensionRow> OcspExtensionRows() {
    return kRows;
}

}  // namespace ca
