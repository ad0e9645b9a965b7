#include "records/CrlInfo.h"

#include "records/JsonFields.h"
#include "records/TextRows.h"

namespace {

using ca::JsonField;

// Entries and lists in the order of RFC 5280, 5.1.
// clang-format off
constexpr auto kRevokedCertFields = ca::FieldTable(
    JsonField{"Serial", &ca::RevokedCert::serial},
    ca::TimeRows("RevocationDate", "RevocationDateUTC", &ca::RevokedCert::revocationDate),
    JsonField{"Reason", &ca::RevokedCert::reason},
    JsonField{"InvalidityDate", &ca::RevokedCert::invalidityDate},
    JsonField{"CertificateIssuer", &ca::RevokedCert::certificateIssuer},
    JsonField{"Extensions", &ca::RevokedCert::extensions});

constexpr auto kCrlInfoFields = ca::FieldTable(
    JsonField{"Version", &ca::CrlInfo::version},
    JsonField{"SignatureAlg", &ca::CrlInfo::signatureAlg},
    JsonField{"HashAlg", &ca::CrlInfo::hashAlg},
    ca::NameRows("Issuer", "OIDIssuer", "X500NameIssuer", &ca::CrlInfo::issuer),
    ca::TagsRow("IssuerTags", &ca::CrlInfo::issuer),
    ca::TimeRows("ThisUpdate", "ThisUpdateUTC", &ca::CrlInfo::thisUpdate),
    ca::TimeRows("NextUpdate", "NextUpdateUTC", &ca::CrlInfo::nextUpdate),
    JsonField{"Number", &ca::CrlInfo::number},
    JsonField{"BaseNumber", &ca::CrlInfo::baseNumber},
    JsonField{"RevokedCount", &ca::CrlInfo::revokedCount},
    JsonField{"Revoked", &ca::CrlInfo::revoked},
    JsonField{"Extensions", &ca::CrlInfo::extensions},
    JsonField{"RawData", &ca::CrlInfo::rawData},
    JsonField{"Error", &ca::CrlInfo::error});
// clang-format on

}  // namespace

namespace ca {

void RevokedCert::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kRevokedCertFields);
}

void RevokedCert::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kRevokedCertFields);
}

void CrlInfo::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kCrlInfoFields);
}

void CrlInfo::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kCrlInfoFields);
}

void CrlInfo::AddOctets(RecordOctets& octets) const {
    AddObjectOctets(*this, kCrlInfoFields, octets);
}

}  // namespace ca
