#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host {

/// A request as it is handed to a module.
struct CRequest {
    std::string octets;  ///< JSON text, with raw framing followed by a NUL and the payload
    bool interactive = false;
    std::string name;  ///< what the user knows it by, made visible
};

/// How a payload travels.
enum class PayloadForm : std::uint8_t {
    kBase64,  ///< "fileData", announced by "fileDataEncodedSize" in front of it
    kBinary,  ///< "fileDataSize"; the octets stand after the text
};

/// The "mode" of a request's text, as far as it can be told without parsing; nothing for a text
/// that is not what it seems to be. Cost: one look at each octet, none at a payload after a NUL.
std::optional<std::uint32_t> GuessMode(std::string_view request);

/// Puts a request together: members of an object, in their order, and a payload.
class CRequestBuilder {
  public:
    /// Replaces the members by those of a JSON object.
    /// \return "" or why the text is not one; the members are empty then.
    std::string Load(std::string_view json);

    /// Sets a member, in the place of one of that name.
    /// \param json  a JSON text.
    void Set(const std::string& key, std::string json);
    /// "key=value": the value is taken as JSON when it is JSON, else as a string.
    /// Throws CHostError (usage) without "=" or key.
    void SetPair(const std::string& pair);
    /// Takes a member out; returns its JSON text, nothing when there is no such member.
    std::optional<std::string> Take(std::string_view key);
    /// Name of the first member that begins with `prefix`; "" when there is none.
    std::string FindPrefixed(std::string_view prefix) const;

    /// The request's octets, with a payload when `payload` is not null; the members that say where
    /// a payload comes from are then this one's.
    /// Throws CHostError (usage) for a payload that the interface cannot carry (3 GiB of Base64).
    std::string Build(const std::string* payload, PayloadForm form) const;

  private:
    void AppendMembers(bool hasPayload, std::string& text) const;

    std::vector<std::pair<std::string, std::string>> m_members;  // key, JSON text
};

}  // namespace host
