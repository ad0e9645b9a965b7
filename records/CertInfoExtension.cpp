#include "records/CertInfoExtension.h"

#include "records/JsonFields.h"

namespace {

using ca::JsonField;

// The keys of extensions and of attributes are the same, but that only extensions are critical.
// clang-format off
constexpr std::tuple kExtensionFields{
    JsonField{"OidFriendlyName", &ca::CertInfoExtension::oidFriendlyName},
    JsonField{"OidValue", &ca::CertInfoExtension::oidValue},
    JsonField{"RawData", &ca::CertInfoExtension::rawData},
    JsonField{"FormattedData", &ca::CertInfoExtension::formattedData},
    JsonField{"Critical", &ca::CertInfoExtension::critical}};

constexpr std::tuple kAttributeFields{
    JsonField{"OidFriendlyName", &ca::CertInfoAttribute::oidFriendlyName},
    JsonField{"OidValue", &ca::CertInfoAttribute::oidValue},
    JsonField{"RawData", &ca::CertInfoAttribute::rawData},
    JsonField{"FormattedData", &ca::CertInfoAttribute::formattedData}};
// clang-format on

}  // namespace

namespace ca {

void CertInfoExtension::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kExtensionFields);
}

void CertInfoExtension::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kExtensionFields);
}

void CertInfoExtension::AddOctets(RecordOctets& octets) const {
    AddObjectOctets(*this, kExtensionFields, octets);
}

void CertInfoAttribute::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kAttributeFields);
}

void CertInfoAttribute::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kAttributeFields);
}

void CertInfoAttribute::AddOctets(RecordOctets& octets) const {
    AddObjectOctets(*this, kAttributeFields, octets);
}

void CertInfoExtensionCollection::FromJson(const JsonValue& value) {
    ReadJson(value, items);
}

void CertInfoExtensionCollection::ToJson(JsonWriter& writer) const {
    WriteJson(writer, items);
}

void CertInfoExtensionCollection::AddOctets(RecordOctets& octets) const {
    ca::AddOctets(items, octets);
}

void CertInfoAttributeCollection::FromJson(const JsonValue& value) {
    ReadJson(value, items);
}

void CertInfoAttributeCollection::ToJson(JsonWriter& writer) const {
    WriteJson(writer, items);
}

void CertInfoAttributeCollection::AddOctets(RecordOctets& octets) const {
    ca::AddOctets(items, octets);
}

}  // namespace ca
