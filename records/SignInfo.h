#pragma once

#include "common/ISerializable.h"
#include "records/AttrCertInfo.h"
#include "records/CertInfo.h"
#include "records/OwnedPtr.h"
#include "records/RecordOctets.h"
#include "records/RecordSequence.h"
#include "records/VerificationResult.h"

#include <memory>
#include <string>
#include <vector>

namespace ca {

struct SignInfo;

/// The signatures of one signed item, in order.
class SignInfos : public ISerializable, public CRecordSequence<OwnedPtr<SignInfo>> {
  public:
    SignInfos();
    SignInfos(const SignInfos& other);
    SignInfos& operator=(const SignInfos& other);
    SignInfos(SignInfos&& other) noexcept;
    SignInfos& operator=(SignInfos&& other) noexcept;
    ~SignInfos() override;

    /// Appends the elements; a value that is not an array changes nothing.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeSignInfo; }
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    /// Says how many are not described, in "Error" of the first one's certificate; 0 says nothing.
    void SayMore(std::size_t count);
    /// Says what is wrong with the whole, in the same place.
    void Tell(std::wstring_view fault);
};

/// A signed or unsigned attribute of a signature.
struct SignExtension {
    void FromJson(const JsonValue& value);
    void ToJson(JsonWriter& writer) const;
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    std::wstring extensionName;
    std::wstring extensionOid;                ///< dotted
    std::wstring extensionInterpretedString;  ///< readable
    std::string extensionInterpretedData;     ///< the value's encoding, Base64
};

/// Describes one signature (RFC 5652, 5.3) and, nested, the signatures on it.
struct SignInfo {
    /// Replaces the record and its lists; a missing key gives its default. Throws ca::Exception
    /// 16300, the record being as it was, for no object, a member of the wrong type, or records
    /// nested deeper than kMaxRecordNesting.
    void FromJson(const JsonValue& value);
    void ToJson(JsonWriter& writer) const;
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    VerificationResult verifyResultEx;
    std::wstring verifyResult;  ///< text
    std::wstring signId;
    std::wstring comment;
    std::wstring uri;  ///< of the signed resource
    TimeTexts signTime;
    std::wstring signAlg;
    std::wstring hashAlg;
    bool isAttached = false;  ///< the signature encloses the content
    CertInfo2 signCert;       ///< its issuers too, where who verified knows them
    AttrCertInfo attrCert;
    SignInfos coSigners;
    std::vector<OwnedPtr<SignExtension>> extensions;
};

/// The signatures of several signed items, one list an item.
class SignInfosArray : public ISerializable, private CRecordSequence<OwnedPtr<SignInfos>> {
  public:
    /// Appends the elements; a value that is not an array changes nothing.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeSignInfoArray; }

    std::size_t Count() const { return m_empty + CRecordSequence::Count(); }
    /// Appends the list of an item that is described now.
    void Add(SignInfos list);
    /// Says how many lists there are not, with the first signature; 0 says nothing.
    void SayMore(std::size_t count);

    using CRecordSequence::items;

  private:
    /// Lists of items without signatures in front of the others, whose first says what is to be said
    /// of all.
    std::size_t m_empty = 0;
};

}  // namespace ca
