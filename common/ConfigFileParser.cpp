#include "common/ConfigFileParser.h"

#include "common/ConfigFile.h"
#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/FieldTable.h"
#include "common/Lng.h"
#include "common/inifile.h"

#include <climits>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cwchar>
#include <iterator>
#include <optional>
#include <pwd.h>
#include <sstream>
#include <string_view>
#include <sys/stat.h>
#include <tuple>
#include <type_traits>
#include <unistd.h>
#include <utility>

namespace {

using ca::AnyValue;
using ca::JsonField;
using ca::JsonValue;
using ca::JsonWriter;
using ca::NumberRange;
using ca::ServiceSettings;
using ca::TextRule;
using TextList = std::vector<std::wstring>;

constexpr const wchar_t* kSettingsSection = L"Service settings";
constexpr const wchar_t* kHeaderLine =
    L"###QetCryptoSvc automatically generated config file###\r\n";

// Whether a text of a client can be the value of an INI line. No NUL either: it would end the text
// wherever it is converted.
bool FitsInLine(const std::wstring& text) {
    return text.find_first_of(L"\r\n\0", 0, 3) == std::wstring::npos;
}

// Whether the INI engine reads the text back as one free line of a list section.
bool IsListItem(const std::wstring& text) {
    if (text.empty() || !FitsInLine(text) || text.front() == L' ' || text.front() == L'\t') {
        return false;
    }
    // A line that begins with "#" is a comment unless it has a key (see the engine).
    if (text.front() == L'#') {
        return text.find(L'=') != std::wstring::npos;
    }
    return text.front() != L'[' || text[text.find_last_not_of(L" \t")] != L']';
}

// The settings; a list's key is the name of its section.
constexpr std::tuple kSettings{
#define CA_NUMBER(key, low, high, preset) \
    JsonField{#key, &ServiceSettings::key, NumberRange{low, high}},
#define CA_FLAG(key, preset) JsonField{#key, &ServiceSettings::key},
#define CA_TEXT(key, preset) JsonField{#key, &ServiceSettings::key, TextRule{&FitsInLine}},
#define CA_LIST(name, section) JsonField{section, &ServiceSettings::name, TextRule{&IsListItem}},
#include "common/SettingTable.inc"
};

std::wstring WideKey(std::string_view key) {
    // Keys are ASCII.
    return {key.begin(), key.end()};
}

// std::stoi() without its exceptions: leading blanks and a sign are taken, what follows the digits
// is ignored.
std::optional<int> ParseInteger(const std::wstring& text) {
    wchar_t* end = nullptr;
    errno = 0;
    const long value = std::wcstol(text.c_str(), &end, 10);
    if (end == text.c_str() || errno == ERANGE || value < INT_MIN || value > INT_MAX) {
        return std::nullopt;
    }
    return static_cast<int>(value);
}

/// Reads rows from an INI file. An absent key leaves its setting, and so does a wrong value:
/// silently, since one warning stands for a file that could not be read at all.
class IniReader {
  public:
    IniReader(const CIniFileW& file, ServiceSettings& settings)
        : m_file(file), m_section(file.GetSection(kSettingsSection)), m_settings(settings) {}

    template <class Row>
    void Read(const Row& row) const {
        auto& setting = row.In(m_settings);
        if constexpr (std::is_same_v<decltype(setting), TextList&>) {
            if (const auto* const section = m_file.GetSection(WideKey(row.key))) {
                setting = section->GetLines();
            }
        } else if (const auto* const key =
                       m_section != nullptr ? m_section->GetKey(WideKey(row.key)) : nullptr) {
            Take(row.rule, key->GetValue(), setting);
        }
    }

  private:
    // A value out of its range leaves the default: nothing is clamped.
    static void Take(const NumberRange& range, const std::wstring& text, int& setting) {
        const std::optional<int> value = ParseInteger(text);
        if (value && *value >= range.low && *value <= range.high) {
            setting = *value;
        }
    }
    // Any number but 0 is true, as the interface reads flags.
    static void Take(AnyValue /*rule*/, const std::wstring& text, bool& setting) {
        const std::optional<int> value = ParseInteger(text);
        if (value && *value >= 0) {
            setting = *value != 0;
        }
    }
    // Whatever the engine reads as a value fits in a line.
    static void Take(TextRule /*rule*/, const std::wstring& text, std::wstring& setting) {
        setting = text;
    }

    const CIniFileW& m_file;
    const CIniFileW::CIniSectionW* m_section;
    ServiceSettings& m_settings;
};

/// Writes the keys into an INI file and the list sections after it.
class IniWriter {
  public:
    explicit IniWriter(const ServiceSettings& settings)
        : m_settings(settings), m_section(m_file.AddSection(kSettingsSection)) {}

    std::wstring Write() {
        VisitRows(kSettings, [&](const auto& row) { Put(WideKey(row.key), row.In(m_settings)); });
        std::wostringstream out;
        // The lists come after the keys, since a section of lines has none.
        out << kHeaderLine << m_file;
        return out.str() + m_lists;
    }

  private:
    void Put(const std::wstring& key, long value) {
        m_section->SetKeyValue(key, ca::DecimalText(value));
    }
    void Put(const std::wstring& key, const std::wstring& text) {
        m_section->SetKeyValue(key, text);
    }
    void Put(const std::wstring& section, const TextList& items) {
        m_lists.append(L"[").append(section).append(L"]\n");
        for (const std::wstring& item : items) {
            m_lists.append(item).append(L"\n");
        }
    }

    const ServiceSettings& m_settings;
    CIniFileW m_file;
    CIniFileW::CIniSectionW* m_section;
    std::wstring m_lists;
};

void Expect(bool rightType) {
    if (!rightType) {
        throw ca::Exception(ca::kErrJsonParse, SetZORNAMessage(kMsgWrongJsonType));
    }
}

std::wstring ToText(const JsonValue& value) {
    Expect(value.IsString());
    return ca::u8u16(std::string(value.GetString(), value.GetStringLength()));
}

void Take(const NumberRange& range, const JsonValue& value, int& setting) {
    Expect(value.IsNumber());
    // A number with a fraction, or one out of range, is ignored like in a file; only a wrong type
    // is a fault.
    if (value.IsInt() && value.GetInt() >= range.low && value.GetInt() <= range.high) {
        setting = value.GetInt();
    }
}

void Take(AnyValue /*rule*/, const JsonValue& value, bool& setting) {
    Expect(value.IsBool());
    setting = value.GetBool();
}

void Take(TextRule rule, const JsonValue& value, std::wstring& setting) {
    std::wstring text = ToText(value);
    if (rule(text)) {
        setting = std::move(text);
    }
}

void Take(TextRule rule, const JsonValue& value, TextList& setting) {
    Expect(value.IsArray());
    TextList items;
    for (const JsonValue& element : value.GetArray()) {
        std::wstring item = ToText(element);
        if (rule(item)) {
            items.push_back(std::move(item));
        }
    }
    setting = std::move(items);
}

void Write(JsonWriter& writer, int value) {
    writer.Int(value);
}

void Write(JsonWriter& writer, bool value) {
    writer.Bool(value);
}

void Write(JsonWriter& writer, const std::wstring& value) {
    writer.String(ca::u16u8(value));
}

void Write(JsonWriter& writer, const TextList& value) {
    writer.StartArray();
    for (const std::wstring& item : value) {
        Write(writer, item);
    }
    writer.EndArray();
}

// The home directory of the user whose rights the process has.
std::wstring HomeDirectory() {
    // secure_getenv: a set-user-ID program must not read a stranger's files.
    const char* const variable = ::secure_getenv("HOME");
    if (variable != nullptr && *variable != '\0') {
        return ca::PathToWString(variable);
    }
    std::vector<char> buffer(16384);
    struct passwd entry = {};
    // By the effective user: the rights are what counts.
    struct passwd* found = nullptr;
    ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr && found->pw_dir != nullptr ? ca::PathToWString(found->pw_dir) : L"";
}

bool IsExtensionPath(const std::wstring& path) {
    const std::wstring name = path.substr(path.rfind(L'/') + 1);
    const std::size_t suffix = name.rfind(L".so");
    if (path.empty() || path.front() != L'/' || suffix == std::wstring::npos || suffix == 0 ||
        (suffix + 3 != name.size() && name[suffix + 3] != L'.')) {
        return false;
    }
    struct stat info = {};
    return ::stat(ca::PathFromWString(path).c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::wstring Join(const TextList& items) {
    std::wstring joined;
    for (const std::wstring& item : items) {
        joined.append(joined.empty() ? L"" : L", ").append(item);
    }
    return joined;
}

}  // namespace

namespace ca {

/// What reading a file came to; put into words after the language is known.
struct ConfigFileParser::Findings {
    FileStatus status = FileStatus::kMissing;
    TextList paths;  ///< the file that was found, or all that were tried

    bool IsRead() const { return status == FileStatus::kDone; }
    std::wstring Describe() const {
        return IsRead() ? std::wstring() : DescribeReadFailure(status, Join(paths));
    }
};

void ConfigFileParser::ClearAll() {
    m_settings = {};
}

std::wstring ConfigFileParser::GetConfigDir(ConfigType type) {
    return type == kConfigUser ? HomeDirectory() + L"/.config/ZORNA" : L"/etc/ZORNA";
}

std::wstring ConfigFileParser::GetConfigPath(ConfigType type) {
    return GetConfigDir(type) + L"/QetCryptoSvcConfig.ini";
}

std::wstring ConfigFileParser::GetLogDir(ConfigType type) {
    return type == kConfigUser ? GetConfigDir(type) + L"/log" : L"/var/log/ZORNA";
}

std::vector<std::wstring> ConfigFileParser::SearchPaths() {
    const char* const given = ::secure_getenv("MOD_FOO_CONFIG");
    if (given != nullptr && *given != '\0') {
        return {PathToWString(given)};
    }
    if (IsSecureExecution()) {
        return {GetConfigPath(kConfigSystem)};
    }
    return {GetConfigPath(kConfigUser), GetConfigPath(kConfigSystem)};
}

bool ConfigFileParser::ReadConfig(std::wstring& errorText, bool /*silent*/) {
    const Findings findings = LoadFirst(SearchPaths());
    SetZORNALng(m_settings.Language.c_str());
    errorText = findings.Describe();
    return findings.IsRead();
}

bool ConfigFileParser::ParseConfigFile(const std::wstring& path, std::wstring& errorText,
                                       bool /*silent*/) {
    const Findings findings = LoadFirst({path});
    errorText = findings.Describe();
    return findings.IsRead();
}

// Reads the first file that exists. One that exists but cannot be read ends the search: silently
// taking another one's settings would hide the fault.
ConfigFileParser::Findings ConfigFileParser::LoadFirst(const TextList& paths) {
    ClearAll();
    m_sourcePath.clear();
    Findings findings;
    std::string content;
    for (const std::wstring& path : paths) {
        findings.paths.push_back(path);
        findings.status = ReadConfigText(path, content);
        if (findings.status != FileStatus::kMissing) {
            findings.paths = {path};
            break;
        }
    }
    if (!findings.IsRead()) {
        return findings;
    }
    std::wstring text = u8u16(content);
    std::replace(text.begin(), text.end(), L'\0', L'\xFFFD');  // as everything malformed
    CIniFileW file;
    std::wistringstream in(std::move(text));
    file.Load(in, /*merge=*/false);

    const IniReader reader(file, m_settings);
    VisitRows(kSettings, [&](const auto& row) { reader.Read(row); });
    m_sourcePath = findings.paths.back();
    return findings;
}

bool ConfigFileParser::WriteConfigFile(const std::wstring& path, std::wstring& errorText) const {
    return WriteConfigText(path, u16u8(IniWriter(m_settings).Write()), errorText);
}

void ConfigFileParser::FromJson(const JsonValue& value) {
    Expect(value.IsObject());
    ServiceSettings settings;
    VisitRows(kSettings, [&](const auto& row) {
        const auto member = value.FindMember(row.key.data());
        if (member != value.MemberEnd()) {
            SetJsonMember(row.key.data());
            Take(row.rule, member->value, row.In(settings));
        }
    });
    m_settings = std::move(settings);
}

void ConfigFileParser::ToJson(JsonWriter& writer) const {
    writer.StartObject();
    VisitRows(kSettings, [&](const auto& row) {
        writer.Key(row.key.data());
        Write(writer, row.In(m_settings));
    });
    writer.EndObject();
}

bool ConfigFileParser::AnyExtensionPathIsWrong() const {
    return !std::ranges::all_of(m_settings.DllExtensions, IsExtensionPath);
}

std::vector<std::wstring> ConfigFileParser::FixExtensionPaths() {
    TextList& paths = m_settings.DllExtensions;
    const auto wrong = std::stable_partition(paths.begin(), paths.end(), IsExtensionPath);
    TextList removed(std::make_move_iterator(wrong), std::make_move_iterator(paths.end()));
    paths.erase(wrong, paths.end());
    return removed;
}

}  // namespace ca
