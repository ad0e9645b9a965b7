#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Typed.h"

// TelephoneNumberRange ::= SEQUENCE {
//     start  TelephoneNumber,     -- IA5String
//     count  INTEGER }     RFC 8226, 9
class CAsn1TelephoneNumberRange : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TelephoneNumberRange";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1IA5String* Start() const { return m_start; }
    const CAsn1Integer* Count() const { return m_count; }

  private:
    CAsn1IA5String* m_start = nullptr;
    CAsn1Integer* m_count = nullptr;
};

// TNEntry ::= CHOICE {
//     spc    [0] EXPLICIT ServiceProviderCode,     -- IA5String
//     range  [1] EXPLICIT TelephoneNumberRange,
//     one    [2] EXPLICIT TelephoneNumber }     RFC 8226, 9
class CAsn1TnEntry : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TNEntry";
    static bool Accepts(unsigned char tag) {
        return tag >= (kAsn1ContextBit | kAsn1ConstructedBit) &&
               tag <= (kAsn1ContextBit | kAsn1ConstructedBit | 2);
    }

    void Decode() override;

    const CAsn1IA5String* Spc() const { return m_spc; }
    const CAsn1TelephoneNumberRange* Range() const { return m_range; }
    const CAsn1IA5String* One() const { return m_one; }

  private:
    CAsn1IA5String* m_spc = nullptr;
    CAsn1TelephoneNumberRange* m_range = nullptr;
    CAsn1IA5String* m_one = nullptr;
};
