#include "module/JsonText.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"

#include <cstring>

namespace ca {
namespace {

constexpr std::size_t kPoolChunk = 65536;
constexpr std::size_t kParseStack = 1024;

// rapidjson's vector path reads whole aligned blocks, so the copy is filled up to their size.
constexpr std::size_t kVectorBlock = 16;

BytePtr CopyPadded(const char* text, std::size_t length) {
    const std::size_t padded = (length / kVectorBlock + 1) * kVectorBlock;
    BytePtr copy = BytePtr::Make(padded);
    std::memcpy(copy.Get(), text, length);
    std::memset(copy.Get() + length, 0, padded - length);
    return copy;
}

}  // namespace

std::size_t JsonTextLength(const char* data, std::size_t length) noexcept {
    const void* end = std::memchr(data, '\0', length);
    return end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - data) : length;
}

JsonText::JsonText(const char* text, std::size_t length)
    : m_text(CopyPadded(text, length)), m_pool(kPoolChunk), m_document(&m_pool, kParseStack) {
    m_document.ParseInsitu<kJsonParseFlags>(reinterpret_cast<char*>(m_text.Get()));
    if (m_document.HasParseError() || !m_document.IsObject()) {
        throw Exception(kErrJsonParse);
    }
}

const JsonValue* FindKey(const JsonValue& object, std::string_view key) {
    const JsonValue name(
        rapidjson::StringRef(key.data(), static_cast<rapidjson::SizeType>(key.size())));
    const auto member = object.FindMember(name);
    if (member == object.MemberEnd()) {
        return nullptr;
    }
    CA_JSON_KEY(key.data());
    return &member->value;
}

std::wstring WideText(const JsonValue& value) {
    return u8u16(std::string(value.GetString(), value.GetStringLength()));
}

}  // namespace ca
