#include "module/JsonText.h"

#include "common/Cleanse.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"

#include <cstring>

namespace ca {
namespace {

// Octets of one block of the document's memory, and of the parser's stack to begin with.
constexpr std::size_t kPoolChunk = 65536;
constexpr std::size_t kParseStack = 1024;
constexpr unsigned kParseFlags = kJsonParseFlags | rapidjson::kParseInsituFlag;
using JsonReader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, CJsonAllocator>;

// rapidjson's vector path reads whole aligned blocks, so the copy is filled up to their size.
constexpr std::size_t kVectorBlock = 16;

// The parser keeps 24 octets for each object or array that is open.
constexpr std::size_t kMaxDepth = 10000;

// Values on their way into the document, as deep as one may be.
class CBoundedDepth {
  public:
    explicit CBoundedDepth(JsonDocument& values) : m_values(values) {}

    bool Null() { return m_values.Null(); }
    bool Bool(bool value) { return m_values.Bool(value); }
    bool Int(int value) { return m_values.Int(value); }
    bool Uint(unsigned value) { return m_values.Uint(value); }
    bool Int64(std::int64_t value) { return m_values.Int64(value); }
    bool Uint64(std::uint64_t value) { return m_values.Uint64(value); }
    bool Double(double value) { return m_values.Double(value); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool copy) {
        return m_values.RawNumber(text, length, copy);
    }
    bool String(const char* text, rapidjson::SizeType length, bool copy) {
        return m_values.String(text, length, copy);
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) {
        return m_values.Key(text, length, copy);
    }
    bool StartObject() { return Open() && m_values.StartObject(); }
    bool EndObject(rapidjson::SizeType members) { return Close() && m_values.EndObject(members); }
    bool StartArray() { return Open() && m_values.StartArray(); }
    bool EndArray(rapidjson::SizeType elements) { return Close() && m_values.EndArray(elements); }

  private:
    bool Open() { return m_depth++ < kMaxDepth; }
    bool Close() { return m_depth-- != 0; }

    JsonDocument& m_values;
    std::size_t m_depth = 0;
};

}  // namespace

// A packet may carry raw octets after its text, which ends at the first NUL.
std::size_t JsonTextLength(const char* data, std::size_t length) noexcept {
    const void* end = std::memchr(data, '\0', length);
    return end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - data) : length;
}

CJsonObject::CJsonObject(const JsonValue& object) : m_object(object) {
    // A bit for each length, modulo the word: a set that answers "not there" with one operation.
    for (const auto& member : object.GetObject()) {
        m_lengths |= LengthBit(member.name.GetStringLength());
    }
}

const JsonValue* CJsonObject::Find(std::string_view key) const {
    // Most keys of the table are absent from a request; their length alone tells most of those.
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

CJsonText::CJsonText(const char* text, std::size_t length)
    : m_pool(m_ownPool, sizeof(m_ownPool), kPoolChunk, &m_heap),
      m_document(&m_pool, kParseStack, &m_heap) {
    rapidjson::InsituStringStream stream(CopyPadded(text, length));
    const auto parse = [&](JsonDocument& values) {
        // Iterative and in place: depth costs memory of the heap, never stack.
        CBoundedDepth bounded(values);
        JsonReader reader(&m_heap, kParseStack);
        return !reader.Parse<kParseFlags>(stream, bounded).IsError();
    };
    m_document.Populate(parse);
    if (!m_document.IsObject()) {
        throw Exception(kErrJsonParse);
    }
}

CJsonText::~CJsonText() {
    if (m_hasSecrets) {
        ::explicit_bzero(m_text.Get() != nullptr ? m_text.Get() : m_ownText, m_size);
    }
}

char* CJsonText::CopyPadded(const char* text, std::size_t length) {
    const std::size_t padded = (length / kVectorBlock + 1) * kVectorBlock;
    // Most requests fit into the object itself: no memory is asked for.
    unsigned char* copy = m_ownText;
    if (padded > sizeof(m_ownText)) {
        m_text = BytePtr::Make(padded);
        copy = m_text.Get();
    }
    m_size = padded;
    std::memcpy(copy, text, length);
    std::memset(copy + length, 0, padded - length);
    return reinterpret_cast<char*>(copy);
}

std::wstring WideText(const JsonValue& value) {
    std::string text(value.GetString(), value.GetStringLength());
    std::wstring wide = u8u16(text);
    CleanseText(text);  // a parameter text may hold passwords
    return wide;
}

}  // namespace ca
