#include "records/SignInfo.h"

#include "records/JsonFields.h"
#include "records/TextRows.h"
#include "records/text/ExtensionText.h"

#include <utility>

namespace {

using ca::JsonField;

// Read and written in this order: the verdict first, which hosts look for.
// clang-format off
constexpr std::tuple kSignExtensionFields{
    JsonField{"ExtensionName", &ca::SignExtension::extensionName},
    JsonField{"ExtensionOID", &ca::SignExtension::extensionOid},
    JsonField{"ExtensionInterpretedString", &ca::SignExtension::extensionInterpretedString},
    JsonField{"ExtensionInterpretedData", &ca::SignExtension::extensionInterpretedData}};

constexpr auto kSignInfoFields = ca::FieldTable(
    JsonField{"VerifyResultEx", &ca::SignInfo::verifyResultEx},
    JsonField{"VerifyResult", &ca::SignInfo::verifyResult},
    JsonField{"SignId", &ca::SignInfo::signId},
    JsonField{"Comment", &ca::SignInfo::comment},
    JsonField{"Uri", &ca::SignInfo::uri},
    ca::TimeRows("SignTime", "SignTimeUTC", &ca::SignInfo::signTime),
    JsonField{"SignAlg", &ca::SignInfo::signAlg},
    JsonField{"HashAlg", &ca::SignInfo::hashAlg},
    JsonField{"IsAttached", &ca::SignInfo::isAttached},
    JsonField{"SignCert", &ca::SignInfo::signCert},
    JsonField{"AttrCert", &ca::SignInfo::attrCert},
    JsonField{"CoSigners", &ca::SignInfo::coSigners},
    JsonField{"Extensions", &ca::SignInfo::extensions});
// clang-format on

}  // namespace

namespace ca {

// Here, where SignInfo is complete.
SignInfos::SignInfos() = default;
SignInfos::SignInfos(const SignInfos& other) = default;
SignInfos& SignInfos::operator=(const SignInfos& other) = default;
SignInfos::SignInfos(SignInfos&& other) noexcept = default;
SignInfos& SignInfos::operator=(SignInfos&& other) noexcept = default;
SignInfos::~SignInfos() = default;

void SignInfos::FromJson(const JsonValue& value) {
    AppendArray(value);
}

void SignInfos::ToJson(JsonWriter& writer) const {
    WriteArray(writer);
}

void SignInfos::AddOctets(RecordOctets& octets) const {
    ca::AddOctets(items, octets);
    octets.memory += RestOctets();  // becomes part of what is written
}

void SignInfos::SayMore(std::size_t count) {
    // The list has no place for texts of its own: the certificate of its first signature tells
    // them.
    if (!items.empty()) {
        AddMore(items.front()->signCert.error, count);
    }
}

void SignInfos::Tell(std::wstring_view fault) {
    if (!items.empty()) {
        AddError(items.front()->signCert.error, fault);
    }
}

void SignExtension::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kSignExtensionFields);
}

void SignExtension::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kSignExtensionFields);
}

void SignExtension::AddOctets(RecordOctets& octets) const {
    AddObjectOctets(*this, kSignExtensionFields, octets);
}

void SignInfo::FromJson(const JsonValue& value) {
    ReadObject(value, *this, kSignInfoFields);
}

void SignInfo::ToJson(JsonWriter& writer) const {
    WriteObject(writer, *this, kSignInfoFields);
}

void SignInfo::AddOctets(RecordOctets& octets) const {
    AddObjectOctets(*this, kSignInfoFields, octets);
}

void SignInfosArray::FromJson(const JsonValue& value) {
    AppendArray(value);
}

void SignInfosArray::ToJson(JsonWriter& writer) const {
    writer.StartArray();
    // Empty lists before the first one with signatures are only counted: a request may have
    // millions of payloads without any.
    for (std::size_t i = 0; i < m_empty; ++i) {
        writer.StartArray();
        writer.EndArray();
    }
    WriteElements(writer);
    writer.EndArray();
}

void SignInfosArray::Add(SignInfos list) {
    constexpr std::size_t kEmpty = 3;  // octets of "[],"
    if (items.empty() && list.Count() == 0) {
        CAnswerBudget::Take(kEmpty);
        ++m_empty;
    } else {
        CRecordSequence::Add(std::make_unique<SignInfos>(std::move(list)));
    }
}

void SignInfosArray::SayMore(std::size_t count) {
    if (!items.empty()) {
        items.front()->SayMore(count);
    }
}

}  // namespace ca
