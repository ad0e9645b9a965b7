#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ca {

class ConfigFileParser;
class PKIConfigFileParser;

/// The parameter text of a call: `NAME=value;` items, such as
/// `TSP_INET_TIMEOUT=30000;TSP_URL="http://tsp.example/?a;b";`. docs/init-strings.md has the
/// grammar and the names in use.
///
/// Order, repeated and unknown names are kept. Names compare without regard to the case of ASCII
/// letters, and the last item of a name wins.
class InitString {
  public:
    using Item = std::pair<std::wstring, std::wstring>;

    InitString() = default;
    /// Throws what Append() throws.
    explicit InitString(std::wstring_view text) { Append(text); }
    InitString(const InitString&) = default;
    InitString& operator=(const InitString&) = default;
    InitString(InitString&&) noexcept = default;
    InitString& operator=(InitString&&) noexcept = default;
    /// Cleanses the values: there may be passwords among them.
    ~InitString();

    /// Adds the items of a text; they win over those already there.
    /// Throws ca::Exception 16268, with a message that names the item and nothing added, for a text
    /// that breaks the grammar or is longer than 65536 characters.
    void Append(std::wstring_view text);
    /// Adds one item, any value. Throws 16268 for a name outside the grammar.
    void Add(std::wstring_view name, std::wstring_view value);
    void AddUnsigned(std::wstring_view name, std::uint64_t value);
    /// Gives the item that counts another value; adds one where there is none. Throws as Add().
    void Set(std::wstring_view name, std::wstring_view value);

    const std::vector<Item>& Items() const noexcept { return m_items; }
    /// The value that counts; null when there is no item of that name. Until the next change.
    const std::wstring* Find(std::wstring_view name) const noexcept;
    /// The value as text; `absent` when there is none.
    std::wstring GetText(std::wstring_view name, std::wstring_view absent = {}) const;
    /// The value as a decimal number; `absent` when there is none.
    /// Throws 16268, with a message that names the item, when it is not a number of low to high.
    std::uint64_t GetUnsigned(std::wstring_view name, std::uint64_t low, std::uint64_t high,
                              std::uint64_t absent) const;

    /// The items as a text that Append() reads back, each ended by a semicolon.
    std::wstring ToString() const;
    /// ToString() for a log: passwords and PINs are replaced by asterisks.
    std::wstring ToLogString() const;

  private:
    std::vector<Item> m_items;
};

/// The parameter text that every call starts from: time-outs, revocation checks, proxy and
/// certificate inclusion of the configuration. Where a PKI file was read, what it says of servers,
/// time-outs and caching comes in place of the service configuration's or is added; otherwise `pki`
/// changes nothing. Ends in a semicolon, so that a call's own items are put right after it. Holds
/// the proxy's password: log it through InitString::ToLogString() only.
std::wstring BuildBaseInitString(const ConfigFileParser& config, const PKIConfigFileParser& pki);

}  // namespace ca
