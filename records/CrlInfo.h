#pragma once

#include "common/ISerializable.h"
#include "records/Blob.h"
#include "records/CertInfoExtension.h"
#include "records/OwnedPtr.h"
#include "records/RecordOctets.h"
#include "records/RecordSequence.h"
#include "records/text/NameText.h"
#include "records/text/TimeText.h"

#include <cstdint>
#include <optional>
#include <string>

namespace ca {

/// One entry of a revocation list (RFC 5280, 5.1.2.6, 5.3). Text forms as in CertInfo.
struct RevokedCert {
    void FromJson(const JsonValue& value);
    void ToJson(JsonWriter& writer) const;

    std::wstring serial;
    TimeTexts revocationDate;
    std::wstring reason;             ///< "" when not given
    std::wstring invalidityDate;     ///< local time; "" when not given
    std::wstring certificateIssuer;  ///< readable form; "" when it is the list's issuer
    CertInfoExtensionCollection extensions;
};

/// The described entries of a list. There may be a million, so those of a filled record are made
/// one by one while they are written.
class RevokedCertCollection : public CRecordSequence<OwnedPtr<RevokedCert>, CLazyElements> {
  public:
    /// Replaces the elements; a value that is not an array changes nothing.
    void FromJson(const JsonValue& value) { ReplaceByArray(value); }
    void ToJson(JsonWriter& writer) const { WriteArray(writer); }
    /// Nothing: the entries are not held, and what they will be written as is taken for itself.
    void AddOctets(RecordOctets&) const {}
};

/// Describes one certificate revocation list (RFC 5280, 5). Text forms as in CertInfo.
class CrlInfo : public ISerializable {
  public:
    /// A missing key gives its default. Throws ca::Exception 16300 for a wrong type.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeCrlInfo; }
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    std::wstring version;
    std::wstring signatureAlg;
    std::wstring hashAlg;
    NameTexts issuer;
    TimeTexts thisUpdate;
    TimeTexts nextUpdate;                    ///< "" when absent
    std::wstring number;                     ///< hex
    std::optional<std::wstring> baseNumber;  ///< hex; written for a delta list only
    std::uint32_t revokedCount = 0;          ///< all entries, also those not described
    RevokedCertCollection revoked;           ///< the described entries, in the list's order
    CertInfoExtensionCollection extensions;
    SharedBlob rawData;  ///< the list's encoding; Base64 in the text
    std::wstring error;  ///< first fault met while the record was filled
};

}  // namespace ca
