#include "records/JsonFields.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/JsonString.h"
#include "common/Lng.h"

#include <string_view>

namespace {

// Of the thread: a request is read by one, and readers call each other without a place to pass it.
thread_local int nesting = 0;

}  // namespace

namespace ca {

void RequireJson(bool isRight) {
    if (!isRight) {
        throw Exception(kErrJsonParse, SetZORNAMessage(kMsgWrongJsonType));
    }
}

CNestingGuard::CNestingGuard() {
    // Records hold records: without a bound a stranger's text could exhaust the stack.
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
    // With its length: a NUL is a character of JSON (RFC 8259, 7).
    text = u8u16(std::string(value.GetString(), value.GetStringLength()));
}

void WriteJson(JsonWriter& writer, const std::string& text) {
    WriteString(writer, text);
}

// Through the wide form, which replaces what is not UTF-8.
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

// The octets of a short text are guessed, since most texts are that.
void AddOctets(const std::wstring& text, RecordOctets& octets) {
    constexpr std::size_t kOfItself = 3;  // characters that need no block of the heap
    constexpr std::size_t kBlock = 24;
    constexpr std::size_t kShort = 1024;
    constexpr std::size_t kGuess = 2;
    octets.memory += text.size() > kOfItself ? kBlock + sizeof(wchar_t) * text.size() : 0;
    if (text.size() <= kShort) {
        octets.text += kGuess * text.size();
        return;
    }
    // UTF-8 octets of a character; those past 16 bits are rare enough to be counted short.
    for (const wchar_t c : text) {
        octets.text += 1U + (c > 0x7F ? 1U : 0U) + (c > 0x7FF ? 1U : 0U);
    }
}

const JsonValue* FindJson(const JsonValue& object, std::string_view key) {
    const auto member = object.FindMember(
        JsonValue(rapidjson::StringRef(key.data(), static_cast<rapidjson::SizeType>(key.size()))));
    return member != object.MemberEnd() ? &member->value : nullptr;
}

}  // namespace ca
