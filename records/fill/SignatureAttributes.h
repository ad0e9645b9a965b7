#pragma once

#include "asn1/Asn1List.h"
#include "asn1/x509/Attribute.h"
#include "records/SignInfo.h"
#include "records/fill/RecordMeter.h"
#include "records/scan/SignerCertificates.h"
#include "records/text/TimeText.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace ca {

/// Facts about a signature that its attributes state, wherever they stand in the record.
struct SignatureFacts {
    TimeForms signingTime;        ///< the first signingTime (RFC 5652, 11.3)
    TimeForms binarySigningTime;  ///< the same in seconds (RFC 6019)
    std::wstring description;     ///< signingDescription (RFC 2985, 5.4.3)
    std::wstring contentHint;     ///< contentDescription of content hints (RFC 2634, 2.9)
    std::wstring address;         ///< of what a program's publisher says of it
};

/// Descriptions of the last signed attributes of a message. Who signs the same content states much
/// the same of it: its type and digest, and what the signer's program can do.
class CAttributeMemo {
  public:
    /// What was kept of an attribute of the same octets; null when that is not known.
    const SignExtension* Find(std::span<const unsigned char> attribute) const;
    /// \param attribute  its encoding, which outlives this; a long one is not kept, nor is one that
    ///                   has a long description.
    void Keep(std::span<const unsigned char> attribute, const SignExtension& extension);

  private:
    static constexpr std::size_t kMaxKept = 8;
    static constexpr std::size_t kMaxOctets = 4096;
    static constexpr std::size_t kMaxCost = 16 << 10;  // of memory

    struct Kept {
        std::span<const unsigned char> octets;
        SignExtension extension;
    };
    std::vector<Kept> m_kept;
    std::size_t m_oldest = 0;
};

/// Reads the attributes of one signature into its record. Faults go to "Error" of its "SignCert".
class CSignatureAttributes {
  public:
    using Values = CAsn1SetOf<CAsn1Any>;
    /// Is told of each countersignature attribute; returns whether its octets are to be shown.
    using CountersignatureVisitor = std::function<bool(const Values&)>;

    /// All outlive this: the record, the message's memo and its certificates.
    CSignatureAttributes(SignInfo& record, CAttributeMemo& memo, CSignerCertificates& signers)
        : m_record(record), m_memo(memo), m_signers(signers) {}

    /// Append an "Extensions" element an attribute, at most kMaxListed in all; null adds none.
    void AddSigned(const CAsn1SetOf<CAsn1Attribute>* attributes);
    void AddUnsigned(const CAsn1SetOf<CAsn1Attribute>* attributes,
                     const CountersignatureVisitor& visit);
    /// Fills what of the record follows from all attributes.
    void Finish();

  private:
    void Add(const CAsn1SetOf<CAsn1Attribute>& attributes, const CountersignatureVisitor* visit);
    void AddOne(CAsn1ListCursor<CAsn1Attribute>& at, const CountersignatureVisitor* visit);
    void FillOdd(const CAsn1Attribute* attribute, std::span<const unsigned char> raw,
                 SignExtension& extension);
    // Returns whether all that it says is in the extension.
    bool FillValues(const CAsn1Attribute& attribute, const CountersignatureVisitor* visit,
                    SignExtension& extension, CRecordMeter<SignExtension>& meter);

    SignInfo& m_record;
    CAttributeMemo& m_memo;
    CSignerCertificates& m_signers;
    SignatureFacts m_facts;
    std::vector<std::span<const unsigned char>> m_signedTypes;  // of those that stand once
};

}  // namespace ca
