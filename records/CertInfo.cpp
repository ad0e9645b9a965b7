#include "records/CertInfo.h"

#include "common/ErrorCodes.h"
#include "common/Lng.h"
#include "records/JsonFields.h"
#include "records/TextRows.h"
#include "records/text/ExtensionText.h"

namespace {

using ca::JsonField;

// Read and written in this order. Names and times are one member each, with several keys.
// clang-format off
constexpr auto kCertInfoFields = ca::FieldTable(
    JsonField{"Id", &ca::CertInfo::id},
    JsonField{"Validity", &ca::CertInfo::validity},
    JsonField{"ValidityNumber", &ca::CertInfo::validityNumber},
    JsonField{"Version", &ca::CertInfo::version},
    JsonField{"Serial", &ca::CertInfo::serial},
    JsonField{"SignatureAlg", &ca::CertInfo::signatureAlg},
    JsonField{"HashAlg", &ca::CertInfo::hashAlg},
    ca::NameRows("Issuer", "OIDIssuer", "X500NameIssuer", &ca::CertInfo::issuer),
    ca::TimeRows("ValidFrom", "ValidFromUTC", &ca::CertInfo::validFrom),
    ca::TimeRows("ValidTo", "ValidToUTC", &ca::CertInfo::validTo),
    ca::NameRows("Description", "OIDDescription", "X500Description", &ca::CertInfo::description),
    ca::TagsRow("SubjectTags", &ca::CertInfo::description),
    ca::TagsRow("IssuerTags", &ca::CertInfo::issuer),
    JsonField{"PublicKeyAlg", &ca::CertInfo::publicKeyAlg},
    JsonField{"PublicKey", &ca::CertInfo::publicKey},
    JsonField{"PublicKeyParams", &ca::CertInfo::publicKeyParams},
    JsonField{"HasPrivateKey", &ca::CertInfo::hasPrivateKey},
    JsonField{"IssuerUniqueId", &ca::CertInfo::issuerUniqueId},
    JsonField{"SubjectUniqueId", &ca::CertInfo::subjectUniqueId},
    JsonField{"PublicKeyHashAlgs", &ca::CertInfo::publicKeyHashAlgs},
    JsonField{"RawData", &ca::CertInfo::rawData},
    JsonField{"KeyUsage", &ca::CertInfo::keyUsage},
    JsonField{"KeyUsageStr", &ca::CertInfo::keyUsageStr},
    JsonField{"Error", &ca::CertInfo::error},
    JsonField{"Extensions", &ca::CertInfo::extensions});

// The members of the base class first, then its own.
constexpr auto kCertInfo2Fields = std::tuple_cat(
    kCertInfoFields, std::tuple{JsonField{"IssuerCert", &ca::CertInfo2::issuerCert}});

constexpr std::tuple kCertForCheckFields{
    JsonField{"CertId", &ca::CertForCheck::certId},
    JsonField{"Cert", &ca::CertForCheck::cert}};

bool PassesFilter(const ca::CertInfo& cert, unsigned filter) {
    const bool isOutOfPeriod = cert.validityNumber == ca::kErrCertTimeInvalid;
    return !((filter & ca::kCertFilterInPeriod) != 0 && isOutOfPeriod) &&
           !((filter & ca::kCertFilterWithPrivateKey) != 0 && !cert.hasPrivateKey);
}
// clang-format on

}  // namespace

namespace ca {

void CertInfo::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kCertInfoFields);
}

void CertInfo::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kCertInfoFields);
}

void CertInfo::AddOctets(RecordOctets& octets) const {
    AddObjectOctets(*this, kCertInfoFields, octets);
}

void CertInfo2::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kCertInfo2Fields);
}

void CertInfo2::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kCertInfo2Fields);
}

void CertInfo2::AddOctets(RecordOctets& octets) const {
    AddObjectOctets(*this, kCertInfo2Fields, octets);
}

std::wstring CertInfo2::GetKeyUsageStr(unsigned bits) {
    return KeyUsageText(bits);
}

void CertInfos2::FromJson(const JsonValue& value) {
    AppendArray(value);
}

void CertInfos2::ToJson(JsonWriter& writer) const {
    WriteArray(writer);
}

void CertInfos2::SayMore(std::size_t count) {
    if (!items.empty()) {
        // The list has no place for texts of its own, so that its first record tells them.
        AddMore(items.front()->error, count);
    }
}

void CertInfos2::Tell(std::wstring_view fault) {
    if (!items.empty()) {
        AddError(items.front()->error, fault);
    }
}

void CertInfos2::GetCertIdList(unsigned filter, std::vector<std::wstring>& list) const {
    for (const OwnedPtr<CertInfo2>& cert : items) {
        if (PassesFilter(*cert, filter)) {
            list.push_back(cert->id);
        }
    }
}

void CertForCheck::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kCertForCheckFields);
}

void CertForCheck::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kCertForCheckFields);
}

}  // namespace ca
