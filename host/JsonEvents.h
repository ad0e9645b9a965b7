#pragma once

#include "common/Json.h"

#include <rapidjson/error/en.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host {

/// Flags for reading a module's answer: no recursion on its depth, valid UTF-8 only, and numbers
/// as they are spelled.
inline constexpr unsigned kAnswerParseFlags = ca::kJsonParseFlags |
                                              rapidjson::kParseValidateEncodingFlag |
                                              rapidjson::kParseNumbersAsStringsFlag;

/// Reads a JSON text, handing its parts to `handler` (rapidjson's handler concept).
/// \return "" or what is wrong with the text.
template <class Handler>
std::string ReadJsonEvents(std::string_view text, Handler& handler) {
    ca::CJsonAllocator allocator;
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, ca::CJsonAllocator> reader(
        &allocator);
    rapidjson::MemoryStream memory(text.data(), text.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(memory);
    const rapidjson::ParseResult result = reader.Parse<kAnswerParseFlags>(stream, handler);
    if (!result.IsError()) {
        return "";
    }
    return std::string(rapidjson::GetParseError_En(result.Code())) + " (at octet " +
           std::to_string(result.Offset()) + ")";
}

/// A handler's base that knows how deep it is: 0 outside, 1 among the members of the root.
class CJsonEvents {
  public:
    using Ch = char;

    bool Bool(bool /*value*/) { return true; }
    bool Null() { return true; }
    bool RawNumber(const char* /*text*/, rapidjson::SizeType /*length*/, bool /*copy*/) {
        return true;
    }
    bool String(const char* /*text*/, rapidjson::SizeType /*length*/, bool /*copy*/) {
        return true;
    }
    bool Key(const char* /*text*/, rapidjson::SizeType /*length*/, bool /*copy*/) { return true; }
    bool StartObject() { return Enter(); }
    bool EndObject(rapidjson::SizeType /*count*/) { return Leave(); }
    bool StartArray() { return Enter(); }
    bool EndArray(rapidjson::SizeType /*count*/) { return Leave(); }

    // Numbers arrive as text; the reader's concept asks for these all the same.
    bool Int(int /*value*/) { return false; }
    bool Uint(unsigned /*value*/) { return false; }
    bool Int64(std::int64_t /*value*/) { return false; }
    bool Uint64(std::uint64_t /*value*/) { return false; }
    bool Double(double /*value*/) { return false; }

  protected:
    std::size_t GetDepth() const { return m_depth; }
    bool Enter() {
        ++m_depth;
        return true;
    }
    bool Leave() {
        --m_depth;
        return true;
    }

  private:
    std::size_t m_depth = 0;
};

/// Hands the parts of a JSON text on to a writer of rapidjson.
template <class Writer>
class CJsonForwarder : public CJsonEvents {
  public:
    explicit CJsonForwarder(Writer& writer) : m_writer(writer) {}

    bool Null() { return m_writer.Null(); }
    bool Bool(bool value) { return m_writer.Bool(value); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        return m_writer.RawValue(text, length, rapidjson::kNumberType);
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        return m_writer.String(text, length);
    }
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        return m_writer.Key(text, length);
    }
    bool StartObject() { return m_writer.StartObject() && Enter(); }
    bool EndObject(rapidjson::SizeType count) { return Leave() && m_writer.EndObject(count); }
    bool StartArray() { return m_writer.StartArray() && Enter(); }
    bool EndArray(rapidjson::SizeType count) { return Leave() && m_writer.EndArray(count); }

  protected:
    Writer& GetWriter() { return m_writer; }

  private:
    Writer& m_writer;
};

/// A JSON string literal of a UTF-8 text; malformed octets become U+FFFD.
std::string QuoteJson(std::string_view text);

/// Members of an object that name a file: "file", as far as its name is UTF-8. The octets of
/// another name come as "fileBase64" beside it.
std::string FileMembers(const std::string& path);

/// Whether a text is JSON.
bool IsJson(std::string_view text);

/// The text of a JSON string literal; nothing for any other JSON.
std::optional<std::string> UnquoteJson(std::string_view json);

}  // namespace host
