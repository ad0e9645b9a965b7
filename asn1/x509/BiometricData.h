#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Typed.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// BiometricData ::= SEQUENCE {
//     typeOfBiometricData  TypeOfBiometricData,
//     hashAlgorithm        AlgorithmIdentifier,
//     biometricDataHash    OCTET STRING,
//     sourceDataUri        IA5String OPTIONAL }
// TypeOfBiometricData ::= CHOICE {
//     predefinedBiometricType  INTEGER { picture(0), handwritten-signature(1) },
//     biometricDataOid         OBJECT IDENTIFIER }     RFC 3739, 3.2.5
class CAsn1BiometricData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("BiometricData");
    CA_ASN1_REQUIRED(CAsn1Any, TypeOfBiometricData, "typeOfBiometricData");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, HashAlgorithm, "hashAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, BiometricDataHash, "biometricDataHash");
    CA_ASN1_OPTIONAL(CAsn1IA5String, SourceDataUri, "sourceDataUri");
    CA_ASN1_END;
};
