#pragma once

#include "common/ISerializable.h"
#include "records/CertInfoExtension.h"

#include <cstdint>
#include <string>

namespace ca {

/// Describes one attribute certificate (RFC 5755 4). Text forms as in CertInfo.
class AttrCertInfo : public ISerializable {
  public:
    /// A missing key gives its default. Throws ca::Exception 16300 for a wrong type.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeAttrCertInfo; }
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    std::wstring id;
    std::wstring holderSerial;  ///< the holder's base certificate; its issuer in four forms:
    std::wstring holderIssuer;
    std::wstring holderOidIssuer;
    std::wstring holderX500NameIssuer;
    std::wstring holderIssuerTags;
    std::wstring validity;
    std::uint32_t validityNumber = 0;
    std::wstring version;
    std::wstring serial;
    std::wstring signatureAlg;
    std::wstring hashAlg;
    std::wstring issuer;
    std::wstring oidIssuer;
    std::wstring x500NameIssuer;
    std::wstring validFrom;
    std::wstring validFromUtc;
    std::wstring validTo;
    std::wstring validToUtc;
    std::wstring issuerTags;
    std::wstring issuerUniqueId;
    std::string rawData;
    std::wstring error;
    CertInfoAttributeCollection attributes;
    CertInfoExtensionCollection extensions;
};

}  // namespace ca
