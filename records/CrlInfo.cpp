#include "records/CrlInfo.h"

#include "records/JsonFields.h"

namespace {

using ca::JsonField;

// clang-format off
constexpr std::tuple kRevokedCertFields{
    JsonField{"Serial", &ca::RevokedCert::serial},
    JsonField{"RevocationDate", &ca::RevokedCert::revocationDate},
    JsonField{"RevocationDateUTC", &ca::RevokedCert::revocationDateUtc},
    JsonField{"Reason", &ca::RevokedCert::reason},
    JsonField{"InvalidityDate", &ca::RevokedCert::invalidityDate},
    JsonField{"CertificateIssuer", &ca::RevokedCert::certificateIssuer},
    JsonField{"Extensions", &ca::RevokedCert::extensions}};

constexpr std::tuple kCrlInfoFields{
    JsonField{"Version", &ca::CrlInfo::version},
    JsonField{"SignatureAlg", &ca::CrlInfo::signatureAlg},
    JsonField{"HashAlg", &ca::CrlInfo::hashAlg},
    JsonField{"Issuer", &ca::CrlInfo::issuer},
    JsonField{"OIDIssuer", &ca::CrlInfo::oidIssuer},
    JsonField{"X500NameIssuer", &ca::CrlInfo::x500NameIssuer},
    JsonField{"IssuerTags", &ca::CrlInfo::issuerTags},
    JsonField{"ThisUpdate", &ca::CrlInfo::thisUpdate},
    JsonField{"ThisUpdateUTC", &ca::CrlInfo::thisUpdateUtc},
    JsonField{"NextUpdate", &ca::CrlInfo::nextUpdate},
    JsonField{"NextUpdateUTC", &ca::CrlInfo::nextUpdateUtc},
    JsonField{"Number", &ca::CrlInfo::number},
    JsonField{"BaseNumber", &ca::CrlInfo::baseNumber},
    JsonField{"RevokedCount", &ca::CrlInfo::revokedCount},
    JsonField{"Revoked", &ca::CrlInfo::revoked},
    JsonField{"Extensions", &ca::CrlInfo::extensions},
    JsonField{"RawData", &ca::CrlInfo::rawData},
    JsonField{"Error", &ca::CrlInfo::error}};
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
