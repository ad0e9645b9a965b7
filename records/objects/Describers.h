#pragma once

#include "records/objects/DescriptionBuilder.h"
#include "records/objects/ObjectKinds.h"

// The describers of the table of kinds. They take what does not belong to their kind: then all that
// comes of it is a fault.

namespace ca {

void DescribeOcspResponse(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeOcspRequest(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeCertificationRequest(const ObjectSource& source, CDescriptionBuilder& builder);

void DescribePublicKeyObject(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribePrivateKey(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeEncryptedPrivateKey(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeDhParameters(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeDsaParameters(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeEcParameters(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeAlgorithm(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeDigestInfo(const ObjectSource& source, CDescriptionBuilder& builder);

void DescribePkcs12(const ObjectSource& source, CDescriptionBuilder& builder);

void DescribeTimeStampRequest(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeTimeStampResponse(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeTimeStampInfo(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeEvidenceRecord(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeTimeStampedData(const ObjectSource& source, CDescriptionBuilder& builder);

void DescribeEmptySignedData(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeData(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeDigestedData(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeEncryptedData(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeCompressedData(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeContentCollection(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeContentWithAttributes(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeOtherContent(const ObjectSource& source, CDescriptionBuilder& builder);

void DescribeTrustList(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeCertificatePair(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeCertificatePath(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeCmpMessage(const ObjectSource& source, CDescriptionBuilder& builder);
void DescribeAttribute(const ObjectSource& source, CDescriptionBuilder& builder);

}  // namespace ca
