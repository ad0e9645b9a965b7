#pragma once

#include "common/ISerializable.h"
#include "records/CertInfoExtension.h"
#include "records/OwnedPtr.h"
#include "records/RecordOctets.h"
#include "records/RecordSequence.h"
#include "records/text/NameText.h"
#include "records/text/TimeText.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class CAsn1Certificate;
class CAsn1TbsCertificate;

namespace ca {

/// Describes one certificate (RFC 5280, 4.1) in readable form.
/// Times are texts "dd.mm.yyyy hh:mm:ss"; binary values are lower-case hex unless said otherwise.
class CertInfo : public ISerializable {
  public:
    /// A missing key gives its default. Throws ca::Exception 16300, the record being as it was, for
    /// no object, a member of the wrong type, or records nested deeper than kMaxRecordNesting.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeCertInfo; }
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    /// Describes a decoded certificate; see CertInfoFill.h, which reads one from its octets.
    void FromAsn1(const CAsn1Certificate& certificate);
    /// The fields that the signed part holds; "Id", "RawData" and the signature's are left.
    void FillFromTbsCert(const CAsn1TbsCertificate& tbs);

    std::wstring id;        ///< names the certificate in requests
    std::wstring validity;  ///< text of validityNumber
    std::uint32_t validityNumber = 0;
    std::wstring version;
    std::wstring serial;
    std::wstring signatureAlg;
    std::wstring hashAlg;
    NameTexts issuer;
    TimeTexts validFrom;
    TimeTexts validTo;
    NameTexts description;  ///< the subject
    std::wstring publicKeyAlg;
    std::wstring publicKey;
    std::wstring publicKeyParams;
    bool hasPrivateKey = false;
    std::wstring issuerUniqueId;
    std::wstring subjectUniqueId;
    std::wstring publicKeyHashAlgs;  ///< comma list, best first
    std::string rawData;             ///< the certificate's encoding, Base64
    std::uint32_t keyUsage = 0;      ///< first octet of the bit string in bits 7-0, second in 15-8
    std::wstring keyUsageStr;        ///< GetKeyUsageStr() of keyUsage
    std::wstring error;              ///< faults met while the record was filled, one a line
    CertInfoExtensionCollection extensions;
};

/// A certificate and, where it is known, its issuer's.
class CertInfo2 : public CertInfo {
  public:
    void FromJson(const JsonValue& value) override;
    /// "IssuerCert" is written only when there is one.
    void ToJson(JsonWriter& writer) const override;
    void AddOctets(RecordOctets& octets) const;

    /// The names of the usages in bit order, joined by ", ", in the current language.
    /// \param bits  as CertInfo::keyUsage; unknown bits have no name.
    static std::wstring GetKeyUsageStr(unsigned bits);

    OwnedPtr<CertInfo2> issuerCert;
};

/// Restrictions of CertInfos2::GetCertIdList(), as bits; each one leaves certificates out.
enum CertFilter : unsigned {
    kCertFilterAll = 0,
    kCertFilterInPeriod = 1,        ///< not those whose validityNumber is 16123
    kCertFilterWithPrivateKey = 2,  ///< only those with hasPrivateKey
};

/// Certificates in order.
class CertInfos2 : public ISerializable, public CRecordSequence<OwnedPtr<CertInfo2>> {
  public:
    /// Appends the elements; a value that is not an array changes nothing.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeCertInfos; }

    /// Appends to `list` the identifiers of the certificates of `items` that pass every bit of
    /// `filter`.
    void GetCertIdList(unsigned filter, std::vector<std::wstring>& list) const;

    /// Says how many are not described, in "Error" of the first; 0 says nothing.
    void SayMore(std::size_t count);
    /// Says what is wrong with the whole, in the same place.
    void Tell(std::wstring_view fault);
};

/// A certificate that the host sends for checking.
class CertForCheck : public ISerializable {
  public:
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeCertForCheck; }

    std::wstring certId;
    std::wstring cert;  ///< the certificate as text
};

}  // namespace ca
