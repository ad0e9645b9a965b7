#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Attribute.h"
#include "asn1/x509/Name.h"
#include "asn1/x509/SubjectPublicKeyInfo.h"

// CertificationRequestInfo ::= SEQUENCE {
//     version        INTEGER,
//     subject        Name,
//     subjectPKInfo  SubjectPublicKeyInfo,
//     attributes     [0] IMPLICIT SET OF Attribute }     RFC 2986, 4.1
// Some senders leave out the attributes where they have none.
class CAsn1CertificationRequestInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CertificationRequestInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1Name, Subject, "subject");
    CA_ASN1_REQUIRED(CAsn1SubjectPublicKeyInfo, SubjectPkInfo, "subjectPKInfo");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SetOf<CAsn1Attribute>, Attributes, "attributes");
    CA_ASN1_END;
};

// CertificationRequest ::= SEQUENCE {
//     certificationRequestInfo  CertificationRequestInfo,
//     signatureAlgorithm        AlgorithmIdentifier,
//     signature                 BIT STRING }     RFC 2986, 4.2
class CAsn1CertificationRequest : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CertificationRequest");
    CA_ASN1_REQUIRED(CAsn1CertificationRequestInfo, CertificationRequestInfo,
                     "certificationRequestInfo");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SignatureAlgorithm, "signatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, Signature, "signature");
    CA_ASN1_END;
};
