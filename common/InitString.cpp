#include "common/InitString.h"

#include "common/Cleanse.h"
#include "common/ConfigFileParser.h"
#include "common/DecimalText.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "common/PKIConfigFileParser.h"

#include <algorithm>
#include <cwchar>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <variant>

namespace {

using ca::ConfigFileParser;
using ca::InitString;

// Characters; a request's parameters are some hundred.
constexpr std::size_t kMaxTextLength = 65536;
constexpr std::size_t kMaxNameLength = 64;
constexpr const wchar_t* kBlanks = L" \t\r\n";

[[noreturn]] void RefuseItem(std::wstring_view which) {
    throw ca::Exception(ca::kErrParameters,
                        SetZORNAMessage(kMsgInitStringItem) + std::wstring(which));
}

// ASCII only: names have no other letters, and the locale must not matter.
constexpr wchar_t Upper(wchar_t c) {
    return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
}

bool SameName(std::wstring_view a, std::wstring_view b) {
    return std::ranges::equal(a, b, [](wchar_t x, wchar_t y) { return Upper(x) == Upper(y); });
}

// The item of that name that counts: the last.
template <class Items>
auto FindItem(Items& items, std::wstring_view name) {
    return std::find_if(items.rbegin(), items.rend(),
                        [&](const auto& item) { return SameName(item.first, name); });
}

bool IsName(std::wstring_view name) {
    return !name.empty() && name.size() <= kMaxNameLength &&
           std::ranges::all_of(name, [](wchar_t c) {
               return (Upper(c) >= L'A' && Upper(c) <= L'Z') || (c >= L'0' && c <= L'9') ||
                      c == L'_' || c == L'.' || c == L'-';
           });
}

// Values that no log may show, by the end of their names.
bool IsSecret(std::wstring_view name) {
    for (const std::wstring_view ending : {L"PASSWORD", L"PIN"}) {
        if (name.size() >= ending.size() &&
            SameName(name.substr(name.size() - ending.size()), ending)) {
            return true;
        }
    }
    return false;
}

std::wstring_view TrimRight(std::wstring_view text) {
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/// Reads the items of one text from its front.
class Scanner {
  public:
    explicit Scanner(std::wstring_view text) : m_rest(text) {}

    /// The next item, or nothing at the end.
    std::optional<InitString::Item> Next() {
        do {
            SkipBlanks();
        } while (Take(L';'));  // an empty item says nothing
        if (m_rest.empty()) {
            return std::nullopt;
        }
        ++m_number;
        const std::wstring_view name = TrimRight(TakeUntil(L"=;"));
        if (!IsName(name) || !Take(L'=')) {
            // What stands there is not a name; it may be the rest of a password that holds a ';'.
            RefuseItem(L"#" + ca::DecimalText(m_number));
        }
        SkipBlanks();
        std::wstring value =
            Take(L'"') ? QuotedRest(name) : std::wstring(TrimRight(TakeUntil(L"\";")));
        SkipBlanks();
        // Anything between a closing quote and the next semicolon is a fault, not a part of the
        // value.
        if (!m_rest.empty() && !Take(L';')) {
            RefuseItem(name);
        }
        return InitString::Item(name, std::move(value));
    }

  private:
    void SkipBlanks() { Skip(m_rest.find_first_not_of(kBlanks)); }
    void Skip(std::size_t count) { m_rest.remove_prefix(std::min(count, m_rest.size())); }
    bool Take(wchar_t c) {
        const bool found = !m_rest.empty() && m_rest.front() == c;
        Skip(found ? 1 : 0);
        return found;
    }
    std::wstring_view TakeUntil(const wchar_t* stops) {
        const std::wstring_view taken = m_rest.substr(0, m_rest.find_first_of(stops));
        Skip(taken.size());
        return taken;
    }
    // The value after its opening quote; two quotes stand for one.
    std::wstring QuotedRest(std::wstring_view name) {
        std::wstring value;
        for (;;) {
            value += TakeUntil(L"\"");
            if (!Take(L'"')) {
                RefuseItem(name);
            }
            if (!Take(L'"')) {
                return value;
            }
            value += L'"';
        }
    }

    std::wstring_view m_rest;
    std::size_t m_number = 0;
};

// Quotes where the text would not read back as it is.
bool NeedsQuotes(const std::wstring& value) {
    return value.find_first_of(L"\";") != std::wstring::npos ||
           (!value.empty() && (std::wcschr(kBlanks, value.front()) != nullptr ||
                               std::wcschr(kBlanks, value.back()) != nullptr));
}

void AppendValue(const std::wstring& value, std::wstring& text) {
    if (!NeedsQuotes(value)) {
        text += value;
        return;
    }
    text += L'"';
    for (const wchar_t c : value) {
        text.append(c == L'"' ? 2 : 1, c);
    }
    text += L'"';
}

// What the base text takes from the service configuration, in order.
using NumberOf = int (ConfigFileParser::*)() const noexcept;
using FlagOf = bool (ConfigFileParser::*)() const noexcept;
using TextOf = const std::wstring& (ConfigFileParser::*)() const noexcept;

struct BaseItem {
    const wchar_t* name;
    std::variant<NumberOf, FlagOf, TextOf> value;
    bool ofProxy = false;  ///< means nothing without a proxy
};

constexpr BaseItem kBaseItems[] = {
    {L"INET_TIMEOUT", &ConfigFileParser::GetGeneralTimeout},
    {L"TSP_INET_TIMEOUT", &ConfigFileParser::GetTSPTimeout},
    {L"TSP_URL", &ConfigFileParser::GetTSPUrl},
    {L"OCSP_INET_TIMEOUT", &ConfigFileParser::GetOCSPTimeout},
    {L"OCSP_CHECK", &ConfigFileParser::GetCheckOCSP},
    {L"OCSP_FILE", &ConfigFileParser::GetOCSPFileName},
    {L"CRL_INET_TIMEOUT", &ConfigFileParser::GetCRLTimeout},
    {L"CRL_FORCE_DOWNLOAD", &ConfigFileParser::GetForceCRLDownload},
    {L"CRL_CUSTOM_ONLY", &ConfigFileParser::GetUseOnlyCustomCDPs},
    {L"CRL_IGNORE_UNKNOWN", &ConfigFileParser::GetIgnoreUnknownRevocationStatus},
    {L"PROXY_ADDRESS", &ConfigFileParser::GetProxyAddress, true},
    {L"PROXY_PORT", &ConfigFileParser::GetProxyPort, true},
    {L"PROXY_TYPE", &ConfigFileParser::GetProxyType, true},
    {L"PROXY_LOGIN", &ConfigFileParser::GetProxyLogin, true},
    {L"PROXY_PASSWORD", &ConfigFileParser::GetProxyPassword, true},
    {L"CERT_INCLUDE", &ConfigFileParser::GetCertInclude},
    {L"CERT_CHECK_EXPIRED", &ConfigFileParser::GetCheckSignCertExpired},
    {L"CERT_FULL_CHECK", &ConfigFileParser::GetFullCheckSignCert},
};

void AddValue(InitString& items, const wchar_t* name, const std::wstring& value) {
    if (!value.empty()) {
        items.Add(name, value);
    }
}

void AddValue(InitString& items, const wchar_t* name, int value) {
    items.AddUnsigned(name, static_cast<unsigned>(value));  // no setting is negative
}

// The first that answers for every issuer; those of one issuer have no place in a flat text.
template <class Source>
std::wstring CommonUrl(const std::vector<Source>& sources) {
    const auto found =
        std::ranges::find_if(sources, [](const Source& source) { return source.issuer.empty(); });
    return found != sources.end() ? found->url : std::wstring();
}

using Values = std::initializer_list<std::pair<const wchar_t*, std::wstring>>;

// An empty value leaves the item as it was.
void SetItems(InitString& items, Values values) {
    for (const auto& [name, value] : values) {
        if (!value.empty()) {
            items.Set(name, value);
        }
    }
}

// What the base text takes from a PKI file.
void SetPkiItems(InitString& items, const ca::PkiSettings& pki) {
    using ca::DecimalText;
    SetItems(items, {
                        {L"OCSP_CHECK", DecimalText(pki.ocsp.enabled)},
                        {L"OCSP_INET_TIMEOUT", DecimalText(pki.ocsp.timeout)},
                        {L"OCSP_URL", CommonUrl(pki.ocsp.responders)},
                        {L"OCSP_NONCE", DecimalText(pki.ocsp.nonce)},
                        {L"OCSP_CACHE_TIME", DecimalText(pki.ocsp.cacheTime)},
                        {L"CRL_CHECK", DecimalText(pki.crl.enabled)},
                        {L"CRL_INET_TIMEOUT", DecimalText(pki.crl.timeout)},
                        {L"CRL_CUSTOM_ONLY", DecimalText(!pki.crl.useCertificatePoints)},
                        {L"CRL_URL", CommonUrl(pki.crl.sources)},
                        {L"CRL_CACHE_TIME", DecimalText(pki.crl.cacheTime)},
                        {L"CRL_MAX_SIZE", DecimalText(pki.crl.maxSize)},
                        {L"CERT_CHECK_EXPIRED", DecimalText(pki.policies.signing.checkTime)},
                    });
    if (!pki.tsp.servers.empty()) {
        const ca::PkiTspServer& first = pki.tsp.servers.front();
        SetItems(items, {
                            {L"TSP_URL", first.url},
                            {L"TSP_INET_TIMEOUT", DecimalText(first.timeout)},
                            {L"TSP_POLICY", first.policy},
                            {L"TSP_DIGEST", first.digest},
                            {L"TSP_CERT_REQ", DecimalText(first.requestCertificate)},
                        });
    }
}

}  // namespace

namespace ca {

InitString::~InitString() {
    for (Item& item : m_items) {
        CleanseText(item.second);
    }
}

void InitString::Append(std::wstring_view text) {
    if (text.size() > kMaxTextLength) {
        throw Exception(kErrParameters, SetZORNAMessage(kMsgInitStringTooLong));
    }
    std::vector<Item> items;
    Scanner scanner(text);
    while (std::optional<Item> item = scanner.Next()) {
        items.push_back(std::move(*item));
    }
    m_items.insert(m_items.end(), std::make_move_iterator(items.begin()),
                   std::make_move_iterator(items.end()));
}

void InitString::Add(std::wstring_view name, std::wstring_view value) {
    if (!IsName(name)) {
        RefuseItem(L"#" + ca::DecimalText(m_items.size() + 1));
    }
    m_items.emplace_back(name, value);
}

void InitString::AddUnsigned(std::wstring_view name, std::uint64_t value) {
    Add(name, ca::DecimalText(value));
}

// In its place, as the order of items is part of the text.
void InitString::Set(std::wstring_view name, std::wstring_view value) {
    const auto found = FindItem(m_items, name);
    if (found != m_items.rend()) {
        found->second = value;
    } else {
        Add(name, value);
    }
}

const std::wstring* InitString::Find(std::wstring_view name) const noexcept {
    const auto found = FindItem(m_items, name);
    return found != m_items.rend() ? &found->second : nullptr;
}

std::wstring InitString::GetText(std::wstring_view name, std::wstring_view absent) const {
    const std::wstring* const value = Find(name);
    return value != nullptr ? *value : std::wstring(absent);
}

std::uint64_t InitString::GetUnsigned(std::wstring_view name, std::uint64_t low, std::uint64_t high,
                                      std::uint64_t absent) const {
    const std::wstring* const text = Find(name);
    if (text == nullptr) {
        return absent;
    }
    std::uint64_t value = 0;
    for (const wchar_t c : *text) {
        const auto digit = static_cast<std::uint64_t>(c - L'0');
        // Compared before multiplying: no number wraps.
        if (c < L'0' || c > L'9' || value > (UINT64_MAX - digit) / 10) {
            RefuseItem(name);
        }
        value = value * 10 + digit;
    }
    if (text->empty() || value < low || value > high) {
        RefuseItem(name);
    }
    return value;
}

std::wstring InitString::ToString() const {
    std::size_t size = 0;
    for (const auto& [name, value] : m_items) {
        size += name.size() + 2 * value.size() + 4;  // each character may be a quote
    }
    std::wstring text;
    text.reserve(size);
    for (const auto& [name, value] : m_items) {
        text.append(name).append(L"=");
        AppendValue(value, text);
        text += L';';
    }
    return text;
}

std::wstring InitString::ToLogString() const {
    InitString shown = *this;
    for (auto& [name, value] : shown.m_items) {
        if (IsSecret(name)) {
            value = L"***";
        }
        MakePrintable(value);
    }
    return shown.ToString();
}

std::wstring BuildBaseInitString(const ConfigFileParser& config, const PKIConfigFileParser& pki) {
    InitString items;
    const bool hasProxy = !config.GetProxyAddress().empty();
    for (const BaseItem& item : kBaseItems) {
        if (hasProxy || !item.ofProxy) {
            std::visit([&](auto getter) { AddValue(items, item.name, (config.*getter)()); },
                       item.value);
        }
    }
    // The PKI file wins over the service configuration, key by key, where there is one.
    if (!pki.SourcePath().empty()) {
        SetPkiItems(items, pki.Settings());
    }
    return items.ToString();
}

}  // namespace ca
