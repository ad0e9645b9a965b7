#include "records/AttrCertInfo.h"

#include "records/JsonFields.h"

namespace {

using ca::JsonField;

// clang-format off
constexpr std::tuple kAttrCertInfoFields{
    JsonField{"Id", &ca::AttrCertInfo::id},
    JsonField{"HolderSerial", &ca::AttrCertInfo::holderSerial},
    JsonField{"HolderIssuer", &ca::AttrCertInfo::holderIssuer},
    JsonField{"HolderOIDIssuer", &ca::AttrCertInfo::holderOidIssuer},
    JsonField{"HolderX500NameIssuer", &ca::AttrCertInfo::holderX500NameIssuer},
    JsonField{"HolderIssuerTags", &ca::AttrCertInfo::holderIssuerTags},
    JsonField{"Validity", &ca::AttrCertInfo::validity},
    JsonField{"ValidityNumber", &ca::AttrCertInfo::validityNumber},
    JsonField{"Version", &ca::AttrCertInfo::version},
    JsonField{"Serial", &ca::AttrCertInfo::serial},
    JsonField{"SignatureAlg", &ca::AttrCertInfo::signatureAlg},
    JsonField{"HashAlg", &ca::AttrCertInfo::hashAlg},
    JsonField{"Issuer", &ca::AttrCertInfo::issuer},
    JsonField{"OIDIssuer", &ca::AttrCertInfo::oidIssuer},
    JsonField{"X500NameIssuer", &ca::AttrCertInfo::x500NameIssuer},
    JsonField{"ValidFrom", &ca::AttrCertInfo::validFrom},
    JsonField{"ValidFromUTC", &ca::AttrCertInfo::validFromUtc},
    JsonField{"ValidTo", &ca::AttrCertInfo::validTo},
    JsonField{"ValidToUTC", &ca::AttrCertInfo::validToUtc},
    JsonField{"IssuerTags", &ca::AttrCertInfo::issuerTags},
    JsonField{"IssuerUniqueId", &ca::AttrCertInfo::issuerUniqueId},
    JsonField{"RawData", &ca::AttrCertInfo::rawData},
    JsonField{"Error", &ca::AttrCertInfo::error},
    JsonField{"Attributes", &ca::AttrCertInfo::attributes},
    JsonField{"Extensions", &ca::AttrCertInfo::extensions}};
// clang-format on

}  // namespace

namespace ca {

void AttrCertInfo::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kAttrCertInfoFields);
}

void AttrCertInfo::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kAttrCertInfoFields);
}

void AttrCertInfo::AddOctets(RecordOctets& octets) const {
    AddObjectOctets(*this, kAttrCertInfoFields, octets);
}

}  // namespace ca
