#include "common/PkiTextRules.h"

#include "common/Encode.h"
#include "common/Exception.h"
#include "common/HostRules.h"
#include "common/HttpUrl.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace ca::pki {
namespace {

constexpr std::size_t kMaxTextLength = 4096;

// The bits' names of RFC 5280, 4.2.1.3.
constexpr const wchar_t* kKeyUsageNames[] = {
    L"digitalSignature", L"nonRepudiation", L"keyEncipherment",
    L"dataEncipherment", L"keyAgreement",   L"keyCertSign",
    L"cRLSign",          L"encipherOnly",   L"decipherOnly",
};

}  // namespace

bool IsSettingText(const std::wstring& text) {
    // No control characters: the text goes into lines of a log and of a flat list.
    return text.size() <= kMaxTextLength &&
           std::ranges::none_of(text, [](wchar_t c) { return c < L' ' || c == 0x7F; });
}

bool IsPath(const std::wstring& text) {
    return text.starts_with(L'/') && IsSettingText(text);
}

bool IsOptionalPath(const std::wstring& text) {
    return text.empty() || IsPath(text);
}

bool IsUrl(const std::wstring& text) {
    try {
        ParseHttpUrl(text);
        return IsSettingText(text);
    } catch (const Exception&) {
        return false;
    }
}

bool IsHostPattern(const std::wstring& text) {
    return IsSettingText(text) && HostRules::IsPattern(text);
}

bool IsKeyUsage(const std::wstring& text) {
    return std::ranges::find(kKeyUsageNames, text) != std::end(kKeyUsageNames);
}

// Arcs in decimal, none with a needless zero; the first two within the limits of X.660.
bool IsOid(const std::wstring& text) {
    std::vector<std::wstring> arcs;
    Split(text, L".", arcs);
    std::size_t length = arcs.size();
    for (const std::wstring& arc : arcs) {
        length += arc.size();
        if (arc.find_first_not_of(L"0123456789") != std::wstring::npos ||
            (arc.size() > 1 && arc.front() == L'0')) {
            return false;
        }
    }
    // Split() passes over empty items, so a text with a dot too many is longer than its arcs.
    // 128 characters: longer identifiers are in no use.
    return arcs.size() >= 2 && length == text.size() + 1 && text.size() <= 128 &&
           arcs[0].size() == 1 && arcs[0][0] <= L'2' &&
           (arcs[0] == L"2" || arcs[1].size() == 1 || (arcs[1].size() == 2 && arcs[1] < L"40"));
}

bool IsOptionalOid(const std::wstring& text) {
    return text.empty() || IsOid(text);
}

}  // namespace ca::pki
