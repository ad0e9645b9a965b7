#include "records/AttrCertInfo.h"

#include "records/JsonFields.h"
#include "records/TextRows.h"

namespace {

using ca::JsonField;

// Read and written in this order, the holder before the issuer as in the certificate.
// clang-format off
constexpr auto kAttrCertInfoFields = ca::FieldTable(
    JsonField{"Id", &ca::AttrCertInfo::id},
    JsonField{"HolderSerial", &ca::AttrCertInfo::holderSerial},
    ca::NameRows("HolderIssuer", "HolderOIDIssuer", "HolderX500NameIssuer", &ca::AttrCertInfo::holderIssuer),
    ca::TagsRow("HolderIssuerTags", &ca::AttrCertInfo::holderIssuer),
    JsonField{"Validity", &ca::AttrCertInfo::validity},
    JsonField{"ValidityNumber", &ca::AttrCertInfo::validityNumber},
    JsonField{"Version", &ca::AttrCertInfo::version},
    JsonField{"Serial", &ca::AttrCertInfo::serial},
    JsonField{"SignatureAlg", &ca::AttrCertInfo::signatureAlg},
    JsonField{"HashAlg", &ca::AttrCertInfo::hashAlg},
    ca::NameRows("Issuer", "OIDIssuer", "X500NameIssuer", &ca::AttrCertInfo::issuer),
    ca::TimeRows("ValidFrom", "ValidFromUTC", &ca::AttrCertInfo::validFrom),
    ca::TimeRows("ValidTo", "ValidToUTC", &ca::AttrCertInfo::validTo),
    ca::TagsRow("IssuerTags", &ca::AttrCertInfo::issuer),
    JsonField{"IssuerUniqueId", &ca::AttrCertInfo::issuerUniqueId},
    JsonField{"RawData", &ca::AttrCertInfo::rawData},
    JsonField{"Error", &ca::AttrCertInfo::error},
    JsonField{"Attributes", &ca::AttrCertInfo::attributes},
    JsonField{"Extensions", &ca::AttrCertInfo::extensions});
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
