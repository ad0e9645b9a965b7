#include "module/CryptPacket.h"

#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Http.h"
#include "common/InitString.h"
#include "common/JsonString.h"
#include "common/Lng.h"
#include "module/JsonText.h"
#include "module/RecordTypes.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>
#include <variant>

namespace ca {
namespace {

// Keys whose values are more than one plain member, and those of answers.
#define CA_REQUEST_MEMBER(key, member, presence, json, meaning)
#define CA_REQUEST_KEY(name, key, json, meaning) \
    [[maybe_unused]] constexpr std::string_view name = key;
#define CA_ANSWER_KEY CA_REQUEST_KEY
#include "module/KeyTable.inc"
#undef CA_ANSWER_KEY
#undef CA_REQUEST_KEY
#undef CA_REQUEST_MEMBER

// The type of the member is the JSON type that the key must have.
using RequestMember = std::variant<std::int32_t CryptRequest::*, std::uint32_t CryptRequest::*,
                                   bool CryptRequest::*, std::wstring CryptRequest::*>;

struct RequestKey {
    std::string_view key;
    RequestMember member;
    std::uint32_t presence;  // RequestPresence; 0: absence and the empty value are the same
};

constexpr RequestKey kRequestKeys[] = {
#define CA_REQUEST_MEMBER(key, member, presence, json, meaning) \
    {key, &CryptRequest::member, presence},
#define CA_REQUEST_KEY(name, key, json, meaning)
#define CA_ANSWER_KEY(name, key, json, meaning)
#include "module/KeyTable.inc"
#undef CA_ANSWER_KEY
#undef CA_REQUEST_KEY
#undef CA_REQUEST_MEMBER
};

// The records that a request may bring besides its file data, in the order in which they are read.
constexpr RecordType kRequestRecords[] = {kTypeStoreAddress, kTypeStoreAddresses, kTypeConfig,
                                          kTypePkiConfig};

// Reads one value into the member that a row names.
struct MemberReader {
    CryptRequest& request;
    const JsonValue& value;

    void operator()(std::int32_t CryptRequest::*member) const {
        request.*member = static_cast<std::int32_t>(value.GetUint());
    }
    void operator()(std::uint32_t CryptRequest::*member) const {
        request.*member = value.GetUint();
    }
    void operator()(bool CryptRequest::*member) const { request.*member = value.GetBool(); }
    void operator()(std::wstring CryptRequest::*member) const { request.*member = WideText(value); }
};

Blob DecodedBlob(const JsonValue& value) {
    value.GetString();  // stops at a wrong type, as for every key of a packet
    Blob blob;
    blob.AssignBase64(value);
    return blob;
}

// The octets of the wide text itself, as an operation's parameter.
Blob WideOctets(const std::wstring& text) {
    const std::size_t size = text.size() * sizeof(wchar_t);
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        throw Exception(kErrExecution);
    }
    Blob blob;
    blob.Assign(text.data(), static_cast<std::uint32_t>(size));
    return blob;
}

// File data of the `size` octets after the NUL that ends a text.
std::unique_ptr<FileData> RawPayload(const char* data, std::size_t length, std::size_t textLength,
                                     std::uint32_t size) {
    // In 64 bits: the announced size is a stranger's, and near 2^32 the sum would wrap.
    if (length < std::uint64_t{size} + textLength + 1) {
        throw Exception(kErrNoArgumentData,
                        SetZORNAMessage(kMsgTooFewOctets) + ca::DecimalText(size));
    }
    auto payload = std::make_unique<FileData>();
    payload->Assign(data + textLength + 1, size);
    return payload;
}

const TransferSettings defaultTransfers;

const TransferSettings& SettingsOrDefaults(const TransferSettings* settings) {
    return settings != nullptr ? *settings : defaultTransfers;
}

// Of the call's own parameters only the time-out counts, and only to shorten the configured one: a
// request that named its own proxy would be sent the configured credentials, and one that took its
// time a thread of the host.
std::unique_ptr<FileData> FetchPayload(const std::wstring& url, HttpSettings settings,
                                       const std::wstring& parameters) {
    const auto wanted = static_cast<std::uint32_t>(
        InitString(parameters)
            .GetUnsigned(L"INET_TIMEOUT", 0, std::numeric_limits<std::int32_t>::max(),
                         settings.totalTimeoutMs));
    settings.totalTimeoutMs = std::min(HttpSettings::BoundedTimeout(wanted),
                                       HttpSettings::BoundedTimeout(settings.totalTimeoutMs));
    BytePtr body;
    unsigned length = 0;
    Http::GetBlob(url, settings, body, length);
    auto payload = std::make_unique<FileData>();
    payload->Adopt(std::move(body), length);
    return payload;
}

// Reads the record that stands under its key, if it does. A list that is not an array is left out,
// so that it does not pass for an empty one.
void ReadRecord(const JsonObject& root, RecordType type, SerializableContainer& objects) {
    const JsonValue* value = root.Find(RecordKey(type));
    if (value == nullptr || (IsListRecord(type) && !value->IsArray())) {
        return;
    }
    std::unique_ptr<ISerializable> record = MakeRecord(type);
    if (record != nullptr) {
        record->FromJson(*value);
        objects.SetObject(record.release(), /*clear=*/false);  // the container owns it now
    }
}

void WriteKey(JsonWriter& writer, std::string_view key) {
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
}

void WriteText(JsonWriter& writer, const std::wstring& text) {
    WriteString(writer, text);
}

}  // namespace

void CryptRequest::FromJson(const char* data, unsigned length) {
    if (data == nullptr) {
        throw Exception(kErrJsonParse);
    }
    // Raw octets lie after the text as it came, whatever the look at the payload makes of it.
    const std::size_t textLength = JsonTextLength(data, length);
    const bool hasPayload = objects.PreParseFileData(const_cast<char*>(data), textLength);
    const JsonText text(data, hasPayload ? JsonTextLength(data, textLength) : textLength);
    const JsonObject root = text.Root();

    ReadFields(root);
    ReadBlobs(root);
    // The first source wins: what is fetched, then raw octets, then the text's own. One payload is
    // never made of two.
    if (const JsonValue* url = root.Find(kKeyFileDataUrl)) {
        auto payload =
            FetchPayload(WideText(*url), SettingsOrDefaults(m_transfers).fetch, extInitParams);
        objects.SetObject(payload.release(), /*clear=*/false);
    } else if (const JsonValue* size = root.Find(kKeyFileDataSize)) {
        auto payload = RawPayload(data, length, textLength, size->GetUint());
        objects.SetObject(payload.release(), /*clear=*/false);
        attachBinary = true;
    } else if (!hasPayload) {
        ReadRecord(root, kTypeFileData, objects);
    }
    ReadRecords(root);
}

void CryptRequest::ReadFields(const JsonObject& root) {
    for (const RequestKey& row : kRequestKeys) {
        if (const JsonValue* value = root.Find(row.key)) {
            std::visit(MemberReader{*this, *value}, row.member);
            present |= row.presence;
        }
    }
}

void CryptRequest::ReadBlobs(const JsonObject& root) {
    if (const JsonValue* algorithm = root.Find(kKeyHashAlg)) {
        params = WideOctets(WideText(*algorithm));
    } else if (const JsonValue* encoded = root.Find(kKeyParams)) {
        params = DecodedBlob(*encoded);
    }
    if (const JsonValue* encoded = root.Find(kKeySendSignData)) {
        sendSignData = DecodedBlob(*encoded);
    }
    if (const JsonValue* list = root.Find(kKeySignatures)) {
        for (const JsonValue& encoded : list->GetArray()) {
            signatures.push_back(DecodedBlob(encoded));
        }
    }
}

void CryptRequest::ReadRecords(const JsonObject& root) {
    for (const RecordType type : kRequestRecords) {
        ReadRecord(root, type, objects);
    }
    const JsonValue* stores = root.Find(kKeyCurrentStores);
    if (stores != nullptr && stores->IsArray()) {
        currentStores.emplace().FromJson(*stores);
    }
}

void CryptResponse::ToJson(JsonBuffer& text) const {
    JsonWriter writer(text, &jsonHeap);
    WriteTo(writer);
}

void CryptResponse::TakeJson(JsonBuffer& text) {
    JsonWriter writer(text, &jsonHeap);
    writer.TakeTexts();
    WriteTo(writer);
}

void CryptResponse::WriteTo(JsonWriter& writer) const {
    writer.StartObject();
    WriteKey(writer, kKeyErrorCode);
    writer.Uint(errorCode);
    WriteKey(writer, kKeyErrorMessage);
    WriteText(writer, errorMessage);
    if (!needCertId.empty()) {
        WriteKey(writer, kKeyNeedCertId);
        WriteText(writer, needCertId);
    }
    if (streamId != 0) {
        WriteKey(writer, kKeyStreamId);
        writer.Uint(streamId);
    }
    if (!sendSignData.empty()) {
        WriteKey(writer, kKeySendSignData);
        WriteBase64(writer, sendSignData.Octets());
    }
    objects.WriteTo(writer, {.isAttached = isAttached, .rawFileData = attachBinary});
    writer.EndObject();
}

void CryptResponse::FromJson(const char* data, unsigned length) {
    if (data == nullptr) {
        throw Exception(kErrJsonParse);
    }
    const std::size_t textLength = JsonTextLength(data, length);
    const JsonText text(data, textLength);
    const JsonObject root = text.Root();
    if (const JsonValue* value = root.Find(kKeyErrorCode)) {
        errorCode = value->GetUint();
    }
    if (const JsonValue* value = root.Find(kKeyErrorMessage)) {
        errorMessage = WideText(*value);
    }
    if (const JsonValue* value = root.Find(kKeyNeedCertId)) {
        needCertId = WideText(*value);
    }
    if (const JsonValue* value = root.Find(kKeyStreamId)) {
        streamId = value->GetUint();
    }
    if (const JsonValue* value = root.Find(kKeySendSignData)) {
        sendSignData = DecodedBlob(*value);
    }
    if (const JsonValue* value = root.Find(kKeyIsAttached)) {
        isAttached = value->GetBool();
    }
    for (int type = kTypeFileData; RecordKey(type) != nullptr; ++type) {
        ReadRecord(root, static_cast<RecordType>(type), objects);
    }
    if (const JsonValue* size = root.Find(kKeyFileDataSize)) {
        auto payload = RawPayload(data, length, textLength, size->GetUint());
        objects.SetObject(payload.release(), /*clear=*/false);
        attachBinary = true;
    }
}

const FileData* CryptResponse::RawFileData() {
    return attachBinary ? FindFileData(objects) : nullptr;
}

void CryptPacket::UploadFileData(std::uint32_t timeoutMs) {
    const FileData* result = FindFileData(response.objects);
    if (result == nullptr) {
        return;
    }
    Http::Upload(request.uploadUrl, result->Octets(), SettingsOrDefaults(m_transfers).upload,
                 timeoutMs);
}

void CryptPacket::Cancel() noexcept {
    if (cancellation != nullptr) {
        cancellation->Cancel();
    }
}

}  // namespace ca
