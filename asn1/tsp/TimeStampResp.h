#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/cms/ContentInfo.h"

// PKIStatusInfo ::= SEQUENCE {
//     status        PKIStatus,     -- INTEGER
//     statusString  PKIFreeText OPTIONAL,     -- SEQUENCE OF UTF8String
//     failInfo      PKIFailureInfo OPTIONAL }   -- BIT STRING     RFC 3161, 2.4.2
class CAsn1PkiStatusInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PKIStatusInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Status, "status");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1Any>, StatusString, "statusString");
    CA_ASN1_OPTIONAL(CAsn1BitString, FailInfo, "failInfo");
    CA_ASN1_END;
};

// TimeStampResp ::= SEQUENCE {
//     status          PKIStatusInfo,
//     timeStampToken  ContentInfo OPTIONAL }     RFC 3161, 2.4.2
class CAsn1TimeStampResp : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TimeStampResp");
    CA_ASN1_REQUIRED(CAsn1PkiStatusInfo, Status, "status");
    CA_ASN1_OPTIONAL(CAsn1ContentInfo, TimeStampToken, "timeStampToken");
    CA_ASN1_END;
};
