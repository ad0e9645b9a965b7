#pragma once

#include "asn1/Asn1List.h"
#include "asn1/attributes/Attribute.h"
#include "records/SignInfo.h"
#include "records/text/TimeText.h"

#include <functional>
#include <string>

namespace ca {

/// Facts about a signature that its attributes state, wherever they stand in the record.
struct SignatureFacts {
    TimeForms signingTime;        ///< signingTime (RFC 5652 11.3)
    TimeForms binarySigningTime;  ///< the same in seconds (RFC 6019)
    std::wstring description;     ///< signingDescription (RFC 2985 5.4.3)
    std::wstring contentHint;     ///< contentDescription of content hints (RFC 2634 2.9)
    std::wstring address;         ///< of what a program's publisher says of it
};

/// Reads the attributes of one signature into its record. Faults go to "Error" of its "SignCert".
class CSignatureAttributes {
  public:
    using Values = CAsn1SetOf<CAsn1Any>;
    /// Is told of each countersignature attribute; returns whether its octets are to be shown.
    using CountersignatureVisitor = std::function<bool(const Values&)>;

    /// The record outlives this.
    explicit CSignatureAttributes(SignInfo& record) : m_record(record) {}

    /// Append an "Extensions" element an attribute, at most kMaxListed in all; null adds none.
    void AddSigned(const CAsn1SetOf<CAsn1Attribute>* attributes);
    void AddUnsigned(const CAsn1SetOf<CAsn1Attribute>* attributes,
                     const CountersignatureVisitor& visit);
    /// Fills what of the record follows from all attributes.
    void Finish();

  private:
    void Add(const CAsn1SetOf<CAsn1Attribute>& attributes, const CountersignatureVisitor* visit);
    void AddOne(CAsn1ListCursor<CAsn1Attribute>& at, const CountersignatureVisitor* visit);
    void FillValues(const CAsn1Attribute& attribute, const CountersignatureVisitor* visit,
                    SignExtension& extension);

    SignInfo& m_record;
    SignatureFacts m_facts;
};

}  // namespace ca
