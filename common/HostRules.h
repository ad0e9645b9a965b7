#pragma once

#include "common/IpAddress.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ca {

/// Which hosts transfers may ask: a list of patterns, see docs/http.md for their language. A host
/// is allowed when a pattern matches it and no pattern that denies does; their order means nothing.
///
/// A pattern matches the name or address that a URL is written with, or the address connected to.
/// Both matter: a name may lead to any address, and an address may be written in many ways. Not
/// changed after construction, so safe from any thread.
class HostRules {
  public:
    /// Allows nothing.
    HostRules() = default;
    /// Throws ca::Exception 16268 for a text that is not a pattern.
    explicit HostRules(const std::vector<std::wstring>& patterns);
    static bool IsPattern(const std::wstring& text);

    /// Whether the host may be asked, judged by the URL alone: for transfers through a proxy, which
    /// looks up names and connects itself.
    /// \param host  as HttpUrl has it.
    bool Allows(const std::string& host) const;
    /// Whether some address of the host might be allowed: what can be said before a name is looked
    /// up. The address must pass AllowsAt() then.
    bool MightAllow(const std::string& host) const;
    /// Whether a connection to this address may be made for the host.
    bool AllowsAt(const std::string& host, const IpAddress& address) const;

  private:
    struct Pattern {
        bool denies;
        std::string name;                  ///< "*"; a name; with its leading dot what ends so
        std::optional<IpAddress> network;  ///< takes the name's place
    };
    enum class Verdict { kNothingSaid, kAllowed, kDenied };

    void Add(std::wstring_view text);
    static Pattern Parse(const std::string& text, bool denies);
    static bool Matches(const Pattern& pattern, const std::string& name,
                        const std::vector<IpAddress>& addresses);
    Verdict Judge(const std::string& host, const std::optional<IpAddress>& peer) const;

    std::vector<Pattern> m_patterns;
};

}  // namespace ca
