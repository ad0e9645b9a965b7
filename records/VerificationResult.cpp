#include "records/VerificationResult.h"

#include "records/JsonFields.h"

namespace {

using ca::JsonField;

// The number before its text, of the signature before the certificate.
// clang-format off
constexpr std::tuple kResultFields{
    JsonField{"SignatureVerifyResult", &ca::VerificationResult::signatureVerifyResult},
    JsonField{"SignatureVerifyResultString", &ca::VerificationResult::signatureVerifyResultString},
    JsonField{"CertificateVerifyResult", &ca::VerificationResult::certificateVerifyResult},
    JsonField{"CertificateVerifyResultString", &ca::VerificationResult::certificateVerifyResultString}};
// clang-format on

}  // namespace

namespace ca {

void VerificationResult::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kResultFields);
}

void VerificationResult::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kResultFields);
}

void VerificationResult::AddOctets(RecordOctets& octets) const {
    AddObjectOctets(*this, kResultFields, octets);
}

}  // namespace ca
