#include "host/Request.h"

#include "common/Encode.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

// The members that say where a payload comes from.
constexpr std::string_view kPayloadKeys[] = {"fileData", "fileDataEncodedSize", "fileDataSize",
                                             "fileDataUrl"};

bool IsPayloadKey(std::string_view key) {
    return std::ranges::find(kPayloadKeys, key) != std::end(kPayloadKeys);
}

// Takes an object apart into its members, each with its value as JSON text.
class MemberCollector : public host::CJsonForwarder<ca::JsonWriter> {
  public:
    explicit MemberCollector(ca::JsonBuffer& buffer)
        : CJsonForwarder(m_valueWriter), m_buffer(buffer), m_valueWriter(buffer) {}

    bool Null() { return CJsonForwarder::Null() && Close(); }
    bool Bool(bool value) { return CJsonForwarder::Bool(value) && Close(); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool copy) {
        return CJsonForwarder::RawNumber(text, length, copy) && Close();
    }
    bool String(const char* text, rapidjson::SizeType length, bool copy) {
        return CJsonForwarder::String(text, length, copy) && Close();
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) {
        if (GetDepth() != 1) {
            return CJsonForwarder::Key(text, length, copy);
        }
        members.emplace_back(std::string(text, length), "");
        return true;
    }
    bool StartObject() {
        // The root's own braces are not part of any value.
        if (GetDepth() == 0) {
            isObject = true;
            return Enter();
        }
        return CJsonForwarder::StartObject();
    }
    bool EndObject(rapidjson::SizeType count) {
        if (GetDepth() == 1) {
            return Leave();
        }
        return CJsonForwarder::EndObject(count) && Close();
    }
    bool EndArray(rapidjson::SizeType count) { return CJsonForwarder::EndArray(count) && Close(); }

    bool isObject = false;
    std::vector<std::pair<std::string, std::string>> members;

  private:
    // Ends a member's value once nothing of it is open.
    bool Close() {
        if (isObject && GetDepth() == 1) {
            members.back().second.assign(m_buffer.GetString(), m_buffer.GetSize());
            m_buffer.Clear();
            // The writer counts what is open: it starts afresh with each value.
            m_valueWriter.Reset(m_buffer);
        }
        return true;
    }

    ca::JsonBuffer& m_buffer;
    ca::JsonWriter m_valueWriter;
};

std::size_t Base64Length(std::size_t octets) {
    return (octets + 2) / 3 * 4;
}

void AppendBase64(const std::string& octets, std::string& text) {
    const std::size_t start = text.size();
    text.resize(start + Base64Length(octets.size()));
    unsigned length = 0;
    base64_encode(reinterpret_cast<const unsigned char*>(octets.data()),
                  static_cast<unsigned>(octets.size()), text.data() + start, length);
    text.resize(start + length);
}

// After the string that begins at `at`; the text's size for one without an end.
std::size_t EndOfString(std::string_view text, std::size_t at) {
    for (std::size_t end = at + 1; (end = text.find('"', end)) != std::string_view::npos; ++end) {
        // A quote is escaped by an odd number of backslashes before it.
        const std::size_t before = text.find_last_not_of('\\', end - 1);
        if ((end - before) % 2 == 1) {
            return end + 1;
        }
    }
    return text.size();
}

}  // namespace

namespace host {

std::optional<std::uint32_t> GuessMode(std::string_view request) {
    constexpr std::string_view kKey = "\"mode\"";
    constexpr std::string_view kSpace = " \t\r\n:";
    // Octets may follow the text after a NUL.
    request = request.substr(0, request.find('\0'));
    std::size_t depth = 0;
    for (std::size_t at = 0; at < request.size();) {
        if (request[at] != '"') {
            depth += request[at] == '{' || request[at] == '[' ? 1U : 0U;
            depth -= depth != 0 && (request[at] == '}' || request[at] == ']') ? 1U : 0U;
            ++at;
            continue;
        }
        const std::size_t end = EndOfString(request, at);
        const std::size_t value = request.find_first_not_of(kSpace, end);
        // The root's own member, not one of a record inside.
        if (depth == 1 && request.substr(at, end - at) == kKey && value != end &&
            value != std::string_view::npos) {
            std::uint32_t mode = 0;
            const char* const last = request.data() + request.size();
            const auto [stop, error] = std::from_chars(request.data() + value, last, mode);
            return error == std::errc() ? std::optional(mode) : std::nullopt;
        }
        at = end;
    }
    return std::nullopt;
}

std::string CRequestBuilder::Load(std::string_view json) {
    ca::JsonBuffer buffer;
    MemberCollector collector(buffer);
    std::string reason = ReadJsonEvents(json, collector);
    if (reason.empty() && !collector.isObject) {
        reason = "not a JSON object";
    }
    m_members.clear();
    if (reason.empty()) {
        m_members = std::move(collector.members);
    }
    return reason;
}

// Replaced in its place, or added at the end: a key stands once.
void CRequestBuilder::Set(const std::string& key, std::string json) {
    for (auto& [name, value] : m_members) {
        if (name == key) {
            value = std::move(json);
            return;
        }
    }
    m_members.emplace_back(key, std::move(json));
}

void CRequestBuilder::SetPair(const std::string& pair) {
    const std::size_t split = pair.find('=');
    if (split == std::string::npos || split == 0) {
        throw CHostError(kExitUsage, "--set takes KEY=VALUE, not \"" + pair + "\"");
    }
    // What is JSON is taken as it is, so that numbers, flags and records need no option of their
    // own.
    const std::string value = pair.substr(split + 1);
    Set(pair.substr(0, split), IsJson(value) ? value : QuoteJson(value));
}

std::optional<std::string> CRequestBuilder::Take(std::string_view key) {
    const auto found =
        std::ranges::find_if(m_members, [key](const auto& member) { return member.first == key; });
    if (found == m_members.end()) {
        return std::nullopt;
    }
    std::string json = std::move(found->second);
    m_members.erase(found);
    return json;
}

std::string CRequestBuilder::FindPrefixed(std::string_view prefix) const {
    for (const auto& [name, value] : m_members) {
        if (name.starts_with(prefix)) {
            return name;
        }
    }
    return "";
}

void CRequestBuilder::AppendMembers(bool hasPayload, std::string& text) const {
    bool afterOthers = hasPayload;
    for (const auto& [name, value] : m_members) {
        // The payload's own members are written with it; those of the file are others' words about
        // another payload.
        if (hasPayload && IsPayloadKey(name)) {
            continue;
        }
        text += afterOthers ? "," : "";
        text.append(QuoteJson(name)).append(":").append(value);
        afterOthers = true;
    }
    text += '}';
}

std::string CRequestBuilder::Build(const std::string* payload, PayloadForm form) const {
    std::string text = "{";
    if (payload == nullptr) {
        AppendMembers(/*hasPayload=*/false, text);
        return text;
    }
    const bool isBase64 = form == PayloadForm::kBase64;
    const std::size_t carried = isBase64 ? Base64Length(payload->size()) : payload->size();
    // The interface counts a payload with 32 bits.
    if (carried > std::numeric_limits<std::uint32_t>::max()) {
        throw CHostError(kExitUsage, "the payload is too large for one request");
    }
    // A payload is the most of a request by far; without this it would be copied as it grows.
    text.reserve(carried + 4096);
    if (isBase64) {
        // In front of all others: a module looks for the announcement before it parses the text.
        text += "\"fileDataEncodedSize\":" + std::to_string(carried) + ",\"fileData\":\"";
        AppendBase64(*payload, text);
        text += '"';
        AppendMembers(/*hasPayload=*/true, text);
        return text;
    }
    text += "\"fileDataSize\":" + std::to_string(carried);
    AppendMembers(/*hasPayload=*/true, text);
    text += '\0';
    text += *payload;
    return text;
}

}  // namespace host
