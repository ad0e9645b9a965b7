#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// GCMParameters ::= SEQUENCE {
//     aes-nonce   OCTET STRING,
//     aes-ICVlen  AES-GCM-ICVlen DEFAULT 12 }   -- INTEGER     RFC 5084, 3.2
// CCMParameters (3.1) is the same.
class CAsn1GcmParameters : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "GCMParameters";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* Nonce() const { return m_nonce; }
    /// Octets of the integrity check value; null for 12.
    const CAsn1Integer* IcvLen() const { return m_icvLen; }

  private:
    CAsn1OctetString* m_nonce = nullptr;
    CAsn1Integer* m_icvLen = nullptr;
};

using CAsn1CcmParameters = CAsn1GcmParameters;

// RC2CBCParameter ::= SEQUENCE {
//     rc2ParameterVersion  INTEGER OPTIONAL,
//     iv                   OCTET STRING }     RFC 8018, B.2.3; RFC 3370, 5.2
class CAsn1Rc2CbcParameter : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RC2CBCParameter";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    /// Names the effective key bits: 160 stands for 40, 120 for 64, 58 for 128, 256 and more for
    /// themselves; null for 32.
    const CAsn1Integer* Rc2ParameterVersion() const { return m_rc2ParameterVersion; }
    const CAsn1OctetString* Iv() const { return m_iv; }

  private:
    CAsn1Integer* m_rc2ParameterVersion = nullptr;
    CAsn1OctetString* m_iv = nullptr;
};
