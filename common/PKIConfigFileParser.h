#pragma once

#include "common/ISerializable.h"

#include <optional>
#include <string>
#include <vector>

namespace ca {

/// How much a certificate's revocation state counts.
enum class RevocationCheck : int {
    kNone,      ///< not looked at
    kIfKnown,   ///< a revoked certificate is refused, an unknown state is not
    kRequired,  ///< an unknown state is refused too
};

// One structure an object of PkiSettingTable.inc, one member a key, preset to its default;
// docs/pki-config.md says what they mean. PkiSettings is the whole.
// clang-format off
#define CA_PKI_OBJECT(type) struct type {
#define CA_PKI_FLAG(key, preset) bool key = preset;
#define CA_PKI_NUMBER(key, low, high, preset) int key = preset;
#define CA_PKI_CHOICE(key, type, names, preset) type key = preset;
#define CA_PKI_TEXT(key, rule, preset) std::wstring key = preset;
#define CA_PKI_REQUIRED(key, rule) std::wstring key;
#define CA_PKI_TEXTS(key, rule, ...) std::vector<std::wstring> key = {__VA_ARGS__};
#define CA_PKI_PART(key, type, ...) type key = {__VA_ARGS__};
#define CA_PKI_PARTS(key, type) std::vector<type> key;
#define CA_PKI_END };
// clang-format on
#include "common/PkiSettingTable.inc"

class ConfigFileParser;

/// The PKI configuration: a JSON file beside the service configuration, or a record of the same
/// form. Takes no lock; an object that nobody writes may be read from any thread.
class PKIConfigFileParser : public ISerializable {
  public:
    /// Restores every default.
    void ClearAll();

    /// "QetCryptoSvcPKIConfig.json" in the directory of that service configuration.
    static std::wstring GetConfigPath(const std::wstring& serviceConfigPath);

    /// The file that the environment variable MOD_FOO_PKI_CONFIG names; ignored in secure
    /// execution, see IsSecureExecution().
    static std::optional<std::wstring> GivenPath();

    /// Where the file of a service configuration is looked for, when none is given: beside it, or
    /// beside each of the places where a service configuration is looked for when that is "".
    static std::vector<std::wstring> SearchPaths(const std::wstring& serviceConfigPath);

    /// Finds and reads the file that belongs to a service configuration: GivenPath(), which
    /// then must exist, or else the first of SearchPaths() that does. Keys that the service
    /// configuration has too (see ServiceDefaults()) default to its values. Otherwise as
    /// ParseConfigFile().
    bool ReadConfig(const ConfigFileParser& service, std::wstring& errorText, bool silent);

    /// The defaults, with what the service configuration says of time-outs, OCSP, distribution
    /// points and validity periods.
    static PkiSettings ServiceDefaults(const ConfigFileParser& service);

    /// Reads the file. A file that is missing is not a fault: the PKI configuration is optional. A
    /// wrong value gets its default, a wrong entry of a list is left out, the rest is honoured;
    /// but with anything wrong under "network" its lists of hosts are empty: they allow nothing.
    /// \param errorText  what was wrong, with the keys, for a person to read; empty when nothing.
    /// \param silent     nobody will see the text: single wrong values are not put into it.
    /// \return false when everything has its default because the file could not be read or is no
    ///         JSON object.
    bool ParseConfigFile(const std::wstring& path, std::wstring& errorText, bool silent);

    /// Writes indented JSON, replacing the file in one step; its directory must exist.
    /// \return false, with message 150 or 151 in `errorText`, when that failed.
    bool WriteConfigFile(const std::wstring& path, std::wstring& errorText) const;

    /// Replaces the settings; absent keys give the defaults.
    /// Throws ca::Exception, with nothing changed and a message that names the key as in
    /// "tsp.servers[2].timeout": 16300 for a wrong type, 16268 for a value that is not allowed.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return kTypePkiConfig; }

    const PkiSettings& Settings() const noexcept { return m_settings; }
    /// The file that was read last; empty when none could be.
    const std::wstring& SourcePath() const noexcept { return m_sourcePath; }

  private:
    bool Load(const std::wstring& path, bool mustExist, std::wstring& errorText, bool silent);

    PkiSettings m_settings;
    std::wstring m_sourcePath;
};

}  // namespace ca
