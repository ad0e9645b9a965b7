#include "module/CryptPacket.h"

#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/FieldTable.h"
#include "common/Http.h"
#include "common/InitString.h"
#include "common/JsonString.h"
#include "common/Lng.h"
#include "module/JsonText.h"
#include "module/RecordTypes.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <string_view>
#include <tuple>
#include <utility>

namespace ca {
namespace {

// Keys of requests whose values are more than one plain member.
#define CA_REQUEST_MEMBER(key, member, presence, json, meaning)
#define CA_REQUEST_KEY(name, key, json, meaning) constexpr std::string_view name = key;
#define CA_ANSWER_MEMBER(key, member, written, json, meaning)
#include "module/KeyTable.inc"
#undef CA_ANSWER_MEMBER
#undef CA_REQUEST_KEY
#undef CA_REQUEST_MEMBER

// What a key's being there says: a bit of RequestPresence, 0 where absence and the empty value are
// the same.
struct Presence {
    std::uint32_t bit;
};

// When a key of an answer is written.
enum class Written : std::uint8_t {
    kAlways,
    kUnlessEmpty,
    kBesideSignatures,  // by the container, which knows where
};

// The type of a member is the JSON type that its key must have.
constexpr std::tuple kRequestFields{
#define CA_REQUEST_MEMBER(key, member, presence, json, meaning) \
    JsonField{key, &CryptRequest::member, Presence{presence}},
#define CA_REQUEST_KEY(name, key, json, meaning)
#define CA_ANSWER_MEMBER(key, member, written, json, meaning)
#include "module/KeyTable.inc"
#undef CA_ANSWER_MEMBER
#undef CA_REQUEST_KEY
#undef CA_REQUEST_MEMBER
};

constexpr std::tuple kAnswerFields{
#define CA_REQUEST_MEMBER(key, member, presence, json, meaning)
#define CA_REQUEST_KEY(name, key, json, meaning)
#define CA_ANSWER_MEMBER(key, member, written, json, meaning) \
    JsonField{key, &CryptResponse::member, Written::written},
#include "module/KeyTable.inc"
#undef CA_ANSWER_MEMBER
#undef CA_REQUEST_KEY
#undef CA_REQUEST_MEMBER
};

// The records that a request may bring besides its file data, in the order in which they are read.
constexpr RecordType kRequestRecords[] = {kTypeStoreAddress, kTypeStoreAddresses, kTypeConfig,
                                          kTypePkiConfig};

Blob DecodedBlob(const JsonValue& value) {
    value.GetString();  // stops at a wrong type, as for every key of a packet
    Blob blob;
    blob.AssignBase64(value);
    return blob;
}

// The values of rows. A value of another JSON type ends as the interface has it: JsonTypeFault().
// Numbers of requests are unsigned; past 2^31 they are negative here.
void ReadValue(const JsonValue& value, std::int32_t& member) {
    member = static_cast<std::int32_t>(value.GetUint());
}
void ReadValue(const JsonValue& value, std::uint32_t& member) {
    member = value.GetUint();
}
void ReadValue(const JsonValue& value, bool& member) {
    member = value.GetBool();
}
void ReadValue(const JsonValue& value, std::wstring& member) {
    member = WideText(value);
}
void ReadValue(const JsonValue& value, Blob& member) {
    member = DecodedBlob(value);
}

// Reads the fields that the object has, and tells `note` the rule of each.
template <class Object, class Table, class Note>
void ReadFields(const CJsonObject& root, Object& object, const Table& table, Note note) {
    VisitRows(table, [&](const auto& row) {
        if (const JsonValue* value = root.Find(row.key)) {
            ReadValue(*value, row.In(object));
            note(row.rule);
        }
    });
}

bool IsEmpty(std::uint32_t value) {
    return value == 0;
}
bool IsEmpty(bool value) {
    return !value;
}
template <class Value>
bool IsEmpty(const Value& value) {
    return value.empty();
}

void WriteValue(JsonWriter& writer, std::uint32_t value) {
    writer.Uint(value);
}
void WriteValue(JsonWriter& writer, bool value) {
    writer.Bool(value);
}
void WriteValue(JsonWriter& writer, const std::wstring& value) {
    WriteString(writer, value);
}
void WriteValue(JsonWriter& writer, const Blob& value) {
    WriteBase64(writer, value.Octets());
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
void ReadRecord(const CJsonObject& root, RecordType type, SerializableContainer& objects) {
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

}  // namespace

void CryptRequest::FromJson(const char* data, unsigned length) {
    if (data == nullptr) {
        throw Exception(kErrJsonParse);
    }
    // Raw octets lie after the text as it came, whatever the look at the payload makes of it.
    // It decodes the payload from where it lies and cuts it out, which a parser's copy would not
    // allow.
    const std::size_t textLength = JsonTextLength(data, length);
    const bool hasPayload = objects.PreParseFileData(const_cast<char*>(data), textLength);
    CJsonText text(data, hasPayload ? JsonTextLength(data, textLength) : textLength);
    const CJsonObject root = text.Root();

    ReadFields(root, *this, kRequestFields, [&](Presence rule) { present |= rule.bit; });
    if (!extInitParams.empty()) {
        text.HoldsSecrets();  // passwords of keys, as a rule
    }
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

void CryptRequest::ReadBlobs(const CJsonObject& root) {
    // "hashAlg" wins over "params", of which it is the readable form.
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

void CryptRequest::ReadRecords(const CJsonObject& root) {
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

// The records give their texts away: an answer of a gigabyte has no second copy.
void CryptResponse::TakeJson(JsonBuffer& text) {
    JsonWriter writer(text, &jsonHeap);
    writer.TakeTexts();
    WriteTo(writer);
}

void CryptResponse::WriteTo(JsonWriter& writer) const {
    writer.StartObject();
    VisitRows(kAnswerFields, [&](const auto& row) {
        const auto& value = row.In(*this);
        if (row.rule == Written::kAlways ||
            (row.rule == Written::kUnlessEmpty && !IsEmpty(value))) {
            writer.Key(row.key.data(), static_cast<rapidjson::SizeType>(row.key.size()));
            WriteValue(writer, value);
        }
    });
    objects.WriteTo(writer, {.isAttached = isAttached, .rawFileData = attachBinary});
    writer.EndObject();
}

void CryptResponse::FromJson(const char* data, unsigned length) {
    if (data == nullptr) {
        throw Exception(kErrJsonParse);
    }
    const std::size_t textLength = JsonTextLength(data, length);
    const CJsonText text(data, textLength);
    const CJsonObject root = text.Root();
    ReadFields(root, *this, kAnswerFields, [](Written /*rule*/) {});
    // By type number, until one has no key: the keys of answers are those of the container.
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

// Without a result there is nothing to send, which is not a failure.
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
