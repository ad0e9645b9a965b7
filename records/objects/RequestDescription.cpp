#include "asn1/requests/CertificationRequest.h"
#include "records/fill/SignedFill.h"
#include "records/objects/Describers.h"
#include "records/objects/DescriptionParts.h"
#include "records/objects/Reading.h"
#include "records/text/Decoded.h"
#include "records/text/SharedFormatters.h"

// Requests for certificates (RFC 2986), and attributes by themselves.

namespace ca {

void DescribeCertificationRequest(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1CertificationRequest> request(source.octets, builder);
    if (const auto* info =
            Of(request.Get(), &CAsn1CertificationRequest::CertificationRequestInfo)) {
        std::wstring error;
        // v1(0) is the only one there is (RFC 2986, 4.1).
        builder.Text(FieldId::kVersion, VersionText(info->Version(), /*highest=*/0, error));
        builder.Fault(error);
        SayName(builder, FieldId::kSubject, info->Subject());
        SayPublicKey(builder, info->SubjectPkInfo());
        SayAttributeList(builder, FieldId::kAttributes, info->Attributes(), AttributeValues::kAll);
    }
    SayAlgorithm(builder, FieldId::kSignatureAlgorithm,
                 Of(request.Get(), &CAsn1CertificationRequest::SignatureAlgorithm));
}

void DescribeAttribute(const ObjectSource& source, CDescriptionBuilder& builder) {
    SayAttributesIn(builder, FieldId::kAttributes, builder.Mended(source.octets));
}

}  // namespace ca
