#pragma once

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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "BiometricData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* TypeOfBiometricData() const { return m_typeOfBiometricData; }
    const CAsn1AlgorithmIdentifier* HashAlgorithm() const { return m_hashAlgorithm; }
    const CAsn1OctetString* BiometricDataHash() const { return m_biometricDataHash; }
    const CAsn1IA5String* SourceDataUri() const { return m_sourceDataUri; }

  private:
    CAsn1Any* m_typeOfBiometricData = nullptr;
    CAsn1AlgorithmIdentifier* m_hashAlgorithm = nullptr;
    CAsn1OctetString* m_biometricDataHash = nullptr;
    CAsn1IA5String* m_sourceDataUri = nullptr;
};
