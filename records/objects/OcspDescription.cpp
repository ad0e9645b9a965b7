#include "asn1/ocsp/OcspRequest.h"
#include "asn1/ocsp/OcspResponse.h"
#include "asn1/views/MessageViews.h"
#include "common/DecimalText.h"
#include "records/fill/SignedFill.h"
#include "records/objects/Describers.h"
#include "records/objects/DescriptionParts.h"
#include "records/objects/Reading.h"
#include "records/text/AttributeText.h"
#include "records/text/OcspText.h"
#include "records/text/ReasonText.h"
#include "records/text/SharedFormatters.h"

#include <iterator>

// Questions about the state of certificates, and answers (RFC 6960).

namespace {

using ca::CDescriptionBuilder;
using ca::FieldForm;
using ca::FieldId;
using ca::Of;
using ca::Word;

// OCSPResponseStatus, by its number (RFC 6960, 4.2.1). 4 is not used.
constexpr Word kStatuses[] = {Word::kOcspSuccessful,  Word::kOcspMalformed, Word::kOcspInternal,
                              Word::kOcspTryLater,    Word::kUnknownStatus, Word::kOcspSigRequired,
                              Word::kOcspUnauthorized};

// v1(0) is the only one there is.
void SayVersion(CDescriptionBuilder& builder, const CAsn1Integer* version) {
    std::wstring error;
    builder.Text(FieldId::kVersion, ca::VersionText(version, /*highest=*/0, error));
    builder.Fault(error);
}

// CertID (RFC 6960, 4.1.1): the certificate by its number, its issuer by two digests.
void SayCertId(CDescriptionBuilder& builder, const CAsn1CertId* id) {
    if (id == nullptr) {
        return;
    }
    ca::SaySerial(builder, FieldId::kSerial, id->SerialNumber());
    ca::SayDigest(builder, FieldId::kIssuerNameHash, id->HashAlgorithm(), id->IssuerNameHash());
    ca::SayDigest(builder, FieldId::kIssuerKeyHash, id->HashAlgorithm(), id->IssuerKeyHash());
}

// CertStatus (RFC 6960, 4.2.1).
void SayStatus(CDescriptionBuilder& builder, const CAsn1CertStatus* status) {
    if (status == nullptr) {
        return;
    }
    const CAsn1RevokedInfo* revoked = status->Revoked();
    if (revoked == nullptr) {
        if (status->Good() == nullptr && status->Unknown() == nullptr) {
            builder.Unreadable(FieldId::kStatus, status->Raw());
        } else {
            builder.Text(FieldId::kStatus,
                         status->Good() != nullptr ? kMsgOcspGood : kMsgOcspUnknown);
        }
        return;
    }
    builder.Text(FieldId::kStatus, kMsgOcspRevoked);
    ca::SayTime(builder, FieldId::kRevokedAt, revoked->RevocationTime());
    std::uint32_t reason = 0;
    if (revoked->RevocationReason() != nullptr &&
        ca::ReadSmallInteger(*revoked->RevocationReason(), reason)) {
        builder.Text(FieldId::kReason, ca::ReasonText(reason));
    }
}

void SaySingleResponse(CDescriptionBuilder& builder, const CAsn1SingleResponse& response) {
    SayCertId(builder, response.CertId());
    SayStatus(builder, response.CertStatus());
    ca::SayTime(builder, FieldId::kThisUpdate, response.ThisUpdate());
    ca::SayTime(builder, FieldId::kNextUpdate, response.NextUpdate());
    ca::SayExtensionList(builder, FieldId::kExtensions, response.SingleExtensions());
}

void SayResponder(CDescriptionBuilder& builder, const CAsn1ResponderId* responder) {
    if (responder != nullptr && (responder->ByName() != nullptr || responder->ByKey() != nullptr)) {
        builder.Text(FieldId::kResponder, ca::ResponderText(*responder));
    }
}

// BasicOCSPResponse (RFC 6960, 4.2.1): who answered, and when, before the answers.
void SayBasicResponse(CDescriptionBuilder& builder, std::span<const unsigned char> octets) {
    const ca::CReading<CAsn1BasicOcspResponse> basic(octets, builder);
    const CAsn1ResponseData* data = Of(basic.Get(), &CAsn1BasicOcspResponse::TbsResponseData);
    if (data != nullptr) {
        SayVersion(builder, data->Version());
        SayResponder(builder, data->ResponderId());
        ca::SayTime(builder, FieldId::kProducedAt, data->ProducedAt());
        ca::SayGroups(builder, FieldId::kResponses, data->Responses(),
                      [&](const auto& response) { SaySingleResponse(builder, response); });
        ca::SayExtensionList(builder, FieldId::kExtensions, data->ResponseExtensions());
    }
    ca::SayAlgorithm(builder, FieldId::kSignatureAlgorithm,
                     Of(basic.Get(), &CAsn1BasicOcspResponse::SignatureAlgorithm));
    ca::SaySignedObjects(builder, FieldId::kCertificates,
                         Of(basic.Get(), &CAsn1BasicOcspResponse::Certs));
}

void SayResponseStatus(CDescriptionBuilder& builder, const CAsn1Any* status) {
    std::uint32_t number = 0;
    if (status == nullptr) {
        return;
    }
    if (!ca::ReadSmallInteger(*status, number)) {
        builder.Unreadable(FieldId::kStatus, status->Raw());
        return;
    }
    const Word word = number < std::size(kStatuses) ? kStatuses[number] : Word::kUnknownStatus;
    builder.Text(FieldId::kStatus, ca::WordText(word) + (L" (" + ca::DecimalText(number) + L')'));
}

}  // namespace

namespace ca {

// A BasicOCSPResponse by itself is met in stores of signatures.
void DescribeOcspResponse(const ObjectSource& source, CDescriptionBuilder& builder) {
    const std::span<const unsigned char> octets = builder.Mended(source.octets);
    if (CAsn1OcspResponseView(FirstElement(octets)).IsBasic()) {
        SayBasicResponse(builder, octets);
        return;
    }
    const CReading<CAsn1OcspResponse> response(octets, builder);
    SayResponseStatus(builder, Of(response.Get(), &CAsn1OcspResponse::ResponseStatus));
    const CAsn1ResponseBytes* bytes = Of(response.Get(), &CAsn1OcspResponse::ResponseBytes);
    // A status other than 0 comes without an answer.
    if (bytes == nullptr) {
        return;
    }
    SayOid(builder, FieldId::kResponseType, bytes->ResponseType());
    const std::span<const unsigned char> basic = builder.Joined(bytes->Response());
    if (!basic.empty()) {
        SayBasicResponse(builder, basic);
    }
}

// OCSPRequest (RFC 6960, 4.1.1).
void DescribeOcspRequest(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1OcspRequest> request(source.octets, builder);
    if (const auto* tbs = Of(request.Get(), &CAsn1OcspRequest::TbsRequest)) {
        SayVersion(builder, tbs->Version());
        if (tbs->RequestorName() != nullptr) {
            CTextLines faults;
            builder.Text(FieldId::kRequestor, GeneralNameLine(*tbs->RequestorName(), faults));
            builder.Fault(faults.TakeFaults());
        }
        SayGroups(builder, FieldId::kRequests, tbs->RequestList(), [&](const auto& single) {
            SayCertId(builder, single.ReqCert());
            SayExtensionList(builder, FieldId::kExtensions, single.SingleRequestExtensions());
        });
        SayExtensionList(builder, FieldId::kExtensions, tbs->RequestExtensions());
    }
    // Requests are seldom signed (RFC 6960, 4.1.2).
    if (const auto* signature = Of(request.Get(), &CAsn1OcspRequest::OptionalSignature)) {
        SayAlgorithm(builder, FieldId::kSignatureAlgorithm, signature->SignatureAlgorithm());
        SaySignedObjects(builder, FieldId::kCertificates, signature->Certs());
    }
}

}  // namespace ca
