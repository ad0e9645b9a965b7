#include "host/AnswerPrinter.h"

#include "common/Hex.h"
#include "host/JsonEvents.h"
#include "host/Terminal.h"

#include <algorithm>

namespace {

constexpr unsigned kIndent = 2;
// Deeper levels are not indented further: a level a line would cost the square of the depth.
constexpr std::size_t kIndentedLevels = 32;
// Characters and octets that tell what an answer is, and keep a terminal readable.
constexpr std::size_t kShownOfBadAnswer = 2000;
constexpr std::size_t kShownOctets = 16;

using PrettyWriter = rapidjson::PrettyWriter<ca::JsonBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>,
                                             ca::CJsonAllocator>;

// Characters, not octets, so that no character is cut in two.
std::size_t OctetsOfCharacters(std::string_view utf8, std::size_t characters) {
    std::size_t end = 0;
    while (end < utf8.size()) {
        const bool starts = (static_cast<unsigned char>(utf8[end]) & 0xC0U) != 0x80U;
        if (starts && characters-- == 0) {
            break;
        }
        ++end;
    }
    return end;
}

// Writes for people: strings cut, indentation bounded.
class PrettyForwarder : public host::CJsonForwarder<PrettyWriter> {
  public:
    PrettyForwarder(PrettyWriter& writer, std::size_t longest)
        : CJsonForwarder(writer), m_longest(longest) {}

    bool String(const char* text, rapidjson::SizeType length, bool copy) {
        const std::string_view whole(text, length);
        const std::size_t shown =
            m_longest == 0 ? whole.size() : OctetsOfCharacters(whole, m_longest);
        if (shown == whole.size()) {
            return CJsonForwarder::String(text, length, copy);
        }
        // The size of the whole is told, so that nobody takes the part for it.
        return GetWriter().String(std::string(whole.substr(0, shown)) + "... (" +
                                  std::to_string(length) + " octets)");
    }
    bool StartObject() { return CJsonForwarder::StartObject() && Indent(); }
    bool StartArray() { return CJsonForwarder::StartArray() && Indent(); }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) {
        return Indent() && CJsonForwarder::Key(text, length, copy);
    }

  private:
    bool Indent() {
        GetWriter().SetIndent(' ', GetDepth() <= kIndentedLevels ? kIndent : 0);
        return true;
    }

    std::size_t m_longest;
};

// Valid UTF-8 whatever the octets are.
std::string Readable(std::string_view octets) {
    return host::Harmless(std::string(octets.substr(0, kShownOfBadAnswer)));
}

}  // namespace

namespace host {

std::string PrettyAnswer(const CAnswer& answer, std::size_t longest) {
    const std::string_view text = answer.GetText();
    if (!IsJson(text)) {
        return text.empty() ? "" : Readable(text) + "\n";
    }
    return PrettyJson(text, longest);
}

std::string PrettyJson(std::string_view json, std::size_t longest) {
    ca::JsonBuffer buffer;
    PrettyWriter writer(buffer);
    PrettyForwarder forwarder(writer, longest);
    // The events cannot fail: the caller has seen that it is JSON.
    static_cast<void>(ReadJsonEvents(json, forwarder));
    return EscapeHidden({buffer.GetString(), buffer.GetSize()}) + "\n";
}

std::string PrettyAnswer(const CAnswer& answer, const std::string& members) {
    const std::string line = answer.GetFault().empty() ? "" : LineAnswer(answer);
    return PrettyJson(WithMembers(members, line.empty() ? answer.GetText() : line), /*longest=*/0);
}

std::string LineAnswer(const CAnswer& answer) {
    // What a program cannot parse goes into a line that it can.
    if (!answer.GetFault().empty()) {
        return "{\"hostError\":" + QuoteJson(answer.GetFault()) +
               ",\"answer\":" + QuoteJson(answer.GetText().substr(0, kShownOfBadAnswer)) + "}";
    }
    // Written anew: a line has no line ends of its own, whatever the module put between tokens.
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    CJsonForwarder forwarder(writer);
    static_cast<void>(ReadJsonEvents(answer.GetText(), forwarder));
    return EscapeHidden({buffer.GetString(), buffer.GetSize()});
}

std::string WithMembers(const std::string& members, std::string_view object) {
    // The members go in front, as hosts read what is known first.
    std::string text = "{" + members + ",";
    return text.append(object.substr(object.find('{') + 1));
}

std::string LineError(std::string_view reason) {
    return "{\"hostError\":" + QuoteJson(reason) + "}";
}

std::string SummariseOctets(std::span<const unsigned char> octets) {
    std::string text = std::to_string(octets.size()) + (octets.size() == 1 ? " octet" : " octets");
    const std::size_t shown = std::min(octets.size(), kShownOctets);
    text += shown != 0 ? ": " : "";
    ca::AddHex(octets.first(shown), text, ca::kLowerHexDigits, ' ');
    return shown < octets.size() ? text + " ..." : text;
}

}  // namespace host
