#include "records/JsonFields.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/JsonString.h"
#include "common/Lng.h"

#include <string_view>

namespace {

thread_local int nesting = 0;

}  // namespace

namespace ca {

void RequireJson(bool isRight) {
    if (!isRight) {
        throw Exception(kErrJsonParse, SetZORNAMessage(kMsgWrongJsonType));
    }
}

CNestingGuard::CNestingGuard() {
    if (nesting == kMaxRecordNesting) {
        throw Exception(kErrJsonParse);
    }
    ++nesting;
}

CNestingGuard::~CNestingGuard() {
    --nesting;
}

void WriteJson(JsonWriter& writer, const std::wstring& text) {
    WriteString(writer, text);
}

void ReadJson(const JsonValue& value, std::wstring& text) {
    RequireJson(value.IsString());
    text = u8u16(std::string(value.GetString(), value.GetStringLength()));
}

void WriteJson(JsonWriter& writer, const std::string& text) {
    WriteString(writer, text);
}

// Through the wide form, which replaces what is no UTF-8.
void ReadJson(const JsonValue& value, std::string& text) {
    std::wstring wide;
    ReadJson(value, wide);
    text = u16u8(wide);
}

void WriteJson(JsonWriter& writer, const SharedBlob& octets) {
    WriteBase64(writer, octets.Octets());
}

void ReadJson(const JsonValue& value, SharedBlob& octets) {
    RequireJson(value.IsString());
    Blob fresh;
    if (value.GetStringLength() != 0) {
        fresh.AssignBase64(value);
    }
    octets = SharedBlob(std::move(fresh));
}

const JsonValue* FindJson(const JsonValue& object, std::string_view key) {
    const auto member = object.FindMember(
        JsonValue(rapidjson::StringRef(key.data(), static_cast<rapidjson::SizeType>(key.size()))));
    return member != object.MemberEnd() ? &member->value : nullptr;
}

}  // namespace ca
