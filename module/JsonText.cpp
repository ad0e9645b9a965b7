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

}  // namespace

std::size_t JsonTextLength(const char* data, std::size_t length) noexcept {
    const void* end = std::memchr(data, '\0', length);
    return end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - data) : length;
}

JsonObject::JsonObject(const JsonValue& object) : m_object(object) {
    for (const auto& member : object.GetObject()) {
        m_lengths |= LengthBit(member.name.GetStringLength());
    }
}

const JsonValue* JsonObject::Find(std::string_view key) const {
    if ((m_lengths & LengthBit(key.size())) == 0) {
        return nullptr;
    }
    const JsonValue name(
        rapidjson::StringRef(key.data(), static_cast<rapidjson::SizeType>(key.size())));
    const auto member = m_object.FindMember(name);
    if (member == m_object.MemberEnd()) {
        return nullptr;
    }
    CA_JSON_KEY(key.data());
    return &member->value;
}

JsonText::JsonText(const char* text, std::size_t length)
    : m_pool(m_ownPool, sizeof(m_ownPool), kPoolChunk, &m_heap),
      m_document(&m_pool, kParseStack, &m_heap) {
    m_document.ParseInsitu<kJsonParseFlags>(CopyPadded(text, length));
    if (m_document.HasParseError() || !m_document.IsObject()) {
        throw Exception(kErrJsonParse);
    }
}

char* JsonText::CopyPadded(const char* text, std::size_t length) {
    const std::size_t padded = (length / kVectorBlock + 1) * kVectorBlock;
    unsigned char* copy = m_ownText;
    if (padded > sizeof(m_ownText)) {
        m_text = BytePtr::Make(padded);
        copy = m_text.Get();
    }
    std::memcpy(copy, text, length);
    std::memset(copy + length, 0, padded - length);
    return reinterpret_cast<char*>(copy);
}

std::wstring WideText(const JsonValue& value) {
    return u8u16(std::string(value.GetString(), value.GetStringLength()));
}

}  // namespace ca
