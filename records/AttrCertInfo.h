#pragma once

#include "common/ISerializable.h"
#include "records/CertInfoExtension.h"
#include "records/text/NameText.h"
#include "records/text/TimeText.h"

#include <cstdint>
#include <string>

namespace ca {

/// Describes one attribute certificate (RFC 5755, 4). Text forms as in CertInfo.
class AttrCertInfo : public ISerializable {
  public:
    /// A missing key gives its default. Throws ca::Exception 16300 for a wrong type.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeAttrCertInfo; }
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    std::wstring id;
    std::wstring holderSerial;  ///< of the holder's base certificate
    NameTexts holderIssuer;     ///< of the same; or the holder itself
    std::wstring validity;
    std::uint32_t validityNumber = 0;
    std::wstring version;
    std::wstring serial;
    std::wstring signatureAlg;
    std::wstring hashAlg;
    NameTexts issuer;
    TimeTexts validFrom;
    TimeTexts validTo;
    std::wstring issuerUniqueId;
    std::string rawData;
    std::wstring error;
    CertInfoAttributeCollection attributes;
    CertInfoExtensionCollection extensions;
};

}  // namespace ca
