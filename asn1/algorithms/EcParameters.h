#pragma once

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// Characteristic-two ::= SEQUENCE {
//     m           INTEGER,
//     basis       OBJECT IDENTIFIER,
//     parameters  ANY DEFINED BY basis }     RFC 3279, 2.3.5
class CAsn1CharacteristicTwo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Characteristic-two";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    /// The degree: the size of the field in bits.
    const CAsn1Integer* M() const { return m_m; }
    const CAsn1ObjectIdentifier* Basis() const { return m_basis; }
    const CAsn1Any* Parameters() const { return m_parameters; }

  private:
    CAsn1Integer* m_m = nullptr;
    CAsn1ObjectIdentifier* m_basis = nullptr;
    CAsn1Any* m_parameters = nullptr;
};

// FieldID ::= SEQUENCE {
//     fieldType   OBJECT IDENTIFIER,
//     parameters  ANY DEFINED BY fieldType }     RFC 3279, 2.3.5
class CAsn1FieldId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "FieldID";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* FieldType() const { return m_fieldType; }
    /// An INTEGER, the prime; a Characteristic-two for a field of 2^m elements.
    const CAsn1Any* Parameters() const { return m_parameters; }

  private:
    CAsn1ObjectIdentifier* m_fieldType = nullptr;
    CAsn1Any* m_parameters = nullptr;
};

// Curve ::= SEQUENCE {
//     a     FieldElement,     -- OCTET STRING
//     b     FieldElement,
//     seed  BIT STRING OPTIONAL }     RFC 3279, 2.3.5
class CAsn1Curve : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Curve";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* A() const { return m_a; }
    const CAsn1OctetString* B() const { return m_b; }
    const CAsn1BitString* Seed() const { return m_seed; }

  private:
    CAsn1OctetString* m_a = nullptr;
    CAsn1OctetString* m_b = nullptr;
    CAsn1BitString* m_seed = nullptr;
};

// ECParameters ::= SEQUENCE {
//     version   ECPVer,     -- INTEGER
//     fieldID   FieldID,
//     curve     Curve,
//     base      ECPoint,     -- OCTET STRING
//     order     INTEGER,
//     cofactor  INTEGER OPTIONAL }     RFC 3279, 2.3.5
// SpecifiedECDomain is the same with one member more (SEC 1, C.2):
//     hash      HashAlgorithm OPTIONAL     -- AlgorithmIdentifier
class CAsn1EcParameters : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ECParameters";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1FieldId* FieldId() const { return m_fieldId; }
    const CAsn1Curve* Curve() const { return m_curve; }
    const CAsn1OctetString* Base() const { return m_base; }
    const CAsn1Integer* Order() const { return m_order; }
    const CAsn1Integer* Cofactor() const { return m_cofactor; }
    /// Only in a SpecifiedECDomain.
    const CAsn1AlgorithmIdentifier* Hash() const { return m_hash; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1FieldId* m_fieldId = nullptr;
    CAsn1Curve* m_curve = nullptr;
    CAsn1OctetString* m_base = nullptr;
    CAsn1Integer* m_order = nullptr;
    CAsn1Integer* m_cofactor = nullptr;
    CAsn1AlgorithmIdentifier* m_hash = nullptr;
};

// EcpkParameters ::= CHOICE {
//     ecParameters  ECParameters,
//     namedCurve    OBJECT IDENTIFIER,
//     implicitlyCA  NULL }     RFC 3279, 2.3.5
// Certificates of today have named curves only (RFC 5480, 2.1.1).
class CAsn1EcpkParameters : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "EcpkParameters";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1Sequence || tag == kAsn1ObjectIdentifier || tag == kAsn1Null;
    }

    void Decode() override;

    const CAsn1EcParameters* EcParameters() const { return m_ecParameters; }
    const CAsn1ObjectIdentifier* NamedCurve() const { return m_namedCurve; }
    const CAsn1Null* ImplicitlyCa() const { return m_implicitlyCa; }

  private:
    CAsn1EcParameters* m_ecParameters = nullptr;
    CAsn1ObjectIdentifier* m_namedCurve = nullptr;
    CAsn1Null* m_implicitlyCa = nullptr;
};
