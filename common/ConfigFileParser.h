#pragma once

#include "common/ISerializable.h"

#include <string>
#include <vector>

namespace ca {

/// Whose configuration.
enum ConfigType : int {
    kConfigUser = 0,    ///< of the user who runs the process
    kConfigSystem = 1,  ///< of the whole machine
};

/// The settings as plain values, one member a row of SettingTable.inc, preset to its default.
struct ServiceSettings {
#define CA_NUMBER(key, low, high, preset) int key = preset;
#define CA_FLAG(key, preset) bool key = preset;
#define CA_TEXT(key, preset) std::wstring key = preset;
#define CA_LIST(name, section) std::vector<std::wstring> name;
#include "common/SettingTable.inc"
};

/// The service configuration: an INI file, or a JSON object under the same names.
///
/// JSON: numbers, booleans and strings under the key names, and one array of strings for each list
/// section under the section's name. Reading and writing take no lock; an object that nobody writes
/// may be read from any thread.
class ConfigFileParser : public ISerializable {
  public:
    ConfigFileParser() = default;

    /// Restores every default and empties the lists.
    void ClearAll();

    /// "/.config/ZORNA" in the home directory of the effective user, or "/etc/ZORNA".
    static std::wstring GetConfigDir(ConfigType type);
    static std::wstring GetConfigPath(ConfigType type);
    /// "log" in the user's configuration directory, or "/var/log/ZORNA".
    static std::wstring GetLogDir(ConfigType type);

    /// The files that ReadConfig() looks for, in order: the one that the environment variable
    /// MOD_FOO_CONFIG names, or else the user's and the machine's. In secure execution (see
    /// IsSecureExecution()) the machine's alone: the caller may have written all others.
    static std::vector<std::wstring> SearchPaths();

    /// Finds and reads the service's own configuration and selects the language of all texts by its
    /// `Language`. The first of SearchPaths() that exists counts.
    /// Wrong values and an absent section leave the defaults without a word.
    /// \param errorText  why no file could be read, for a person to read; else left empty.
    /// \param silent     nobody will see the text; changes nothing here.
    /// \return false when no file could be read, so that every setting has its default.
    bool ReadConfig(std::wstring& errorText, bool silent);

    /// ReadConfig() of one given file (UTF-8, a byte-order mark is skipped, at most 4 MiB), without
    /// an effect on the language.
    bool ParseConfigFile(const std::wstring& path, std::wstring& errorText, bool silent);

    /// Replaces the file in one step, see ReplaceFile(); its directory must exist.
    /// \return false, with message 150 or 151 in `errorText`, when that failed.
    bool WriteConfigFile(const std::wstring& path, std::wstring& errorText) const;

    /// The file that was read last; empty when none could be.
    const std::wstring& SourcePath() const noexcept { return m_sourcePath; }

    /// Replaces the settings: absent keys and numbers outside their range give the defaults, as do
    /// texts with a line end or a NUL; list items that cannot stand as a line of their section are
    /// left out.
    /// Throws ca::Exception 16300, with nothing changed, for a value of the wrong type.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypeConfig; }

    // GetLogMode(), GetCustomErrorHandlers() and so on: one a row of the table.
#define CA_NUMBER(key, low, high, preset) \
    int Get##key() const noexcept {       \
        return m_settings.key;            \
    }
#define CA_FLAG(key, preset)         \
    bool Get##key() const noexcept { \
        return m_settings.key;       \
    }
#define CA_TEXT(key, preset)                        \
    const std::wstring& Get##key() const noexcept { \
        return m_settings.key;                      \
    }
#define CA_LIST(name, section)                                    \
    const std::vector<std::wstring>& Get##name() const noexcept { \
        return m_settings.name;                                   \
    }
#include "common/SettingTable.inc"

    /// True when an entry of "Dll extensions" is not an absolute path of an existing shared object.
    bool AnyExtensionPathIsWrong() const;
    /// Removes those entries and returns them, in order.
    std::vector<std::wstring> FixExtensionPaths();

  private:
    struct Findings;
    Findings LoadFirst(const std::vector<std::wstring>& paths);

    ServiceSettings m_settings;
    std::wstring m_sourcePath;
};

}  // namespace ca
