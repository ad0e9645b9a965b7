#include "records/JsonFields.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"

#include <algorithm>

namespace {

thread_local int nesting = 0;

// True for a text that stands in JSON as it is, an octet a character; most texts do.
bool IsPlain(std::wstring_view text) {
    unsigned odd = 0;
    for (const wchar_t c : text) {  // without a way out, so that it runs a vector at a time
        odd |= static_cast<unsigned>(c < L' ') | static_cast<unsigned>(c > L'~') |
               static_cast<unsigned>(c == L'"') | static_cast<unsigned>(c == L'\\');
    }
    return odd == 0;
}

}  // namespace

namespace ca {

void RequireJson(bool isRight) {
    if (!isRight) {
        throw Exception(kErrJsonParse);
    }
}

CNestingGuard::CNestingGuard() {
    RequireJson(nesting < kMaxRecordNesting);
    ++nesting;
}

CNestingGuard::~CNestingGuard() {
    --nesting;
}

void WriteJson(JsonWriter& writer, const std::wstring& text) {
    if (IsPlain(text)) {
        std::transform(text.begin(), text.end(), writer.PlainString(text.size()),
                       [](wchar_t c) { return static_cast<char>(c); });
    } else {
        writer.String(u16u8(text));
    }
}

void ReadJson(const JsonValue& value, std::wstring& text) {
    RequireJson(value.IsString());
    text = u8u16(std::string(value.GetString(), value.GetStringLength()));
}

void WriteJson(JsonWriter& writer, const Blob& octets) {
    octets.WriteBase64(writer);
}

void ReadJson(const JsonValue& value, Blob& octets) {
    RequireJson(value.IsString());
    if (value.GetStringLength() == 0) {
        octets.Clear();
    } else {
        octets.AssignBase64(value);
    }
}

const JsonValue* FindJson(const JsonValue& object, std::string_view key) {
    const auto member = object.FindMember(
        JsonValue(rapidjson::StringRef(key.data(), static_cast<rapidjson::SizeType>(key.size()))));
    return member != object.MemberEnd() ? &member->value : nullptr;
}

}  // namespace ca
