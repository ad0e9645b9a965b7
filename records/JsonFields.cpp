#include "records/JsonFields.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"

#include <algorithm>
#include <optional>
#include <string_view>

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

bool IsEscaped(char c) {
    return c == '"' || c == '\\' || c == '\n';
}

// Octets with an escape of one letter; none when there are some that need a number.
std::optional<std::size_t> CountEscapes(std::string_view utf8) {
    std::size_t escapes = 0;
    unsigned odd = 0;
    for (const char c : utf8) {
        const bool isControl = static_cast<unsigned char>(c) < 0x20;
        escapes += static_cast<std::size_t>(IsEscaped(c));
        odd |= static_cast<unsigned>(isControl) & static_cast<unsigned>(c != '\n');
    }
    return odd == 0 ? std::optional(escapes) : std::nullopt;
}

// The writer's own way goes octet by octet and looks each one up.
void WriteUtf8(ca::JsonWriter& writer, std::string_view utf8) {
    const std::optional<std::size_t> escapes = CountEscapes(utf8);
    if (!escapes) {
        writer.String(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()));
        return;
    }
    char* out = writer.PlainString(utf8.size() + *escapes);
    std::size_t left = *escapes;
    for (; left != 0; --left) {
        const auto* const at = std::ranges::find_if(utf8, IsEscaped);
        out = std::copy(utf8.begin(), at, out);
        *out++ = '\\';
        *out++ = *at == '\n' ? 'n' : *at;
        utf8.remove_prefix(static_cast<std::size_t>(at - utf8.begin()) + 1);
    }
    std::copy(utf8.begin(), utf8.end(), out);
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
        WriteUtf8(writer, u16u8(text));
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
