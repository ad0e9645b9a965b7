#pragma once

#include "common/ISerializable.h"
#include "records/OwnedPtr.h"
#include "records/RecordOctets.h"

#include <string>
#include <vector>

namespace ca {

/// One extension of a certificate, attribute certificate or CRL.
struct CertInfoExtension {
    void FromJson(const JsonValue& value);
    void ToJson(JsonWriter& writer) const;
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    std::wstring oidFriendlyName;
    std::wstring oidValue;  ///< dotted
    std::string rawData;    ///< the value's encoding, Base64
    std::wstring formattedData;
    bool critical = false;
};

/// One attribute of an attribute certificate.
struct CertInfoAttribute {
    void FromJson(const JsonValue& value);
    void ToJson(JsonWriter& writer) const;
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    std::wstring oidFriendlyName;
    std::wstring oidValue;  ///< dotted
    std::string rawData;    ///< the value's encoding, Base64
    std::wstring formattedData;
};

/// The extensions in order. Nested in other records only: its type has no key in a packet.
class CertInfoExtensionCollection : public ISerializable {
  public:
    /// Replaces the elements; a value that is not an array changes nothing.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeExtensionCollection; }
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    std::vector<OwnedPtr<CertInfoExtension>> items;
};

/// The attributes in order. Nested in other records only: its type has no key in a packet.
class CertInfoAttributeCollection : public ISerializable {
  public:
    /// Replaces the elements; a value that is not an array changes nothing.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeAttributeCollection; }
    /// Adds what CostOf() counts.
    void AddOctets(RecordOctets& octets) const;

    std::vector<OwnedPtr<CertInfoAttribute>> items;
};

}  // namespace ca
