#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"

// Extension ::= SEQUENCE {
//     extnID     OBJECT IDENTIFIER,
//     critical   BOOLEAN DEFAULT FALSE,
//     extnValue  OCTET STRING }   -- the DER of the type extnID stands for     RFC 5280, 4.1
class CAsn1Extension : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Extension";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* ExtnId() const { return m_extnId; }
    bool IsCritical() const { return m_isCritical; }
    CAsn1OctetString* ExtnValue() const { return m_extnValue; }

  private:
    CAsn1ObjectIdentifier* m_extnId = nullptr;
    bool m_isCritical = false;
    CAsn1OctetString* m_extnValue = nullptr;
};

// Extensions ::= SEQUENCE SIZE (1..MAX) OF Extension     RFC 5280, 4.1
using CAsn1Extensions = CAsn1SequenceOf<CAsn1Extension>;
