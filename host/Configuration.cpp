#include "host/Configuration.h"

#include "common/ConfigFileParser.h"
#include "common/Encode.h"
#include "common/inifile.h"
#include "host/FileIo.h"
#include "host/HostError.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string_view>
#include <strings.h>
#include <system_error>

namespace {

// The first of the places where the module looks that is there; "" when none is.
std::string SearchFile() {
    for (const std::wstring& place : ca::ConfigFileParser::SearchPaths()) {
        std::string path = ca::PathFromWString(place);
        std::error_code ignored;
        if (std::filesystem::exists(path, ignored)) {
            return path;
        }
    }
    return "";
}

std::optional<std::string> LanguageOf(const std::string& content) {
    CIniFileW file;
    std::wistringstream in(ca::u8u16(content));
    file.Load(in, /*merge=*/false);
    // The engine of the module, so that both read the same file alike.
    const auto* const section = file.GetSection(L"Service settings");
    const auto* const key = section != nullptr ? section->GetKey(L"Language") : nullptr;
    return key != nullptr ? std::optional(ca::u16u8(key->GetValue())) : std::nullopt;
}

bool IsLocaleRussian() {
    // The order of POSIX: the first that is set wins, an empty one counts as not set.
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* const value = std::getenv(name); value != nullptr && *value != '\0') {
            return std::string_view(value).starts_with("ru");
        }
    }
    return false;
}

bool IsRu(const std::string& language) {
    return ::strcasecmp(language.c_str(), "ru") == 0;
}

}  // namespace

namespace host {

Configuration FindConfiguration(const std::string& given) {
    Configuration found;
    found.path = given.empty() ? SearchFile() : given;
    if (found.path.empty()) {
        return found;
    }
    try {
        found.content = ReadFile(found.path, kLargestConfig);
        found.language = LanguageOf(found.content);
    } catch (const CHostError& error) {
        // Who named the file must hear of it; one that was merely found is the module's to judge.
        if (!given.empty()) {
            throw;
        }
        found.fault = error.what();
    }
    return found;
}

bool IsRussian(const std::string& option, const Configuration& configuration) {
    // The option, the configuration, the locale: what was said last and closest wins.
    if (!option.empty()) {
        return IsRu(option);
    }
    const std::string named = configuration.language.value_or("");
    return named.empty() ? IsLocaleRussian() : IsRu(named);
}

bool MakesRussian(const Configuration& configuration) {
    // Without the key the module speaks Russian.
    return !configuration.language || IsRu(*configuration.language);
}

}  // namespace host
