#pragma once

#include "host/Configuration.h"

#include <string>

namespace host {

/// Settings of the module that its interface has no argument for: they reach it through the
/// environment variables MOD_FOO_CONFIG and MOD_FOO_PKI_CONFIG, which name the configuration files
/// it reads when created.
class CConfigOverride {
  public:
    /// Sets the variables; to be done before the module is created and before threads start.
    /// \param file     configuration to read; "" for the one the module finds by itself.
    /// \param option   "ru", "en", or "" for the language that IsRussian() chooses. When the
    ///                 configuration says another one, the module reads a copy of it with
    ///                 `Language` replaced. The copy is in memory and goes with this object; the
    ///                 PKI configuration beside the original is read all the same.
    /// \param pkiFile  PKI configuration to read; "" for the one the module finds by itself.
    /// Throws CHostError (usage) for a file that is given and cannot be read.
    CConfigOverride(const std::string& file, const std::string& option, const std::string& pkiFile);
    CConfigOverride(const CConfigOverride&) = delete;
    CConfigOverride& operator=(const CConfigOverride&) = delete;
    ~CConfigOverride();

    /// The language of all texts.
    bool IsRussian() const { return m_russian; }
    /// What the module cannot say of its configuration since it reads a copy; "" for nothing.
    const std::string& GetHiddenFault() const { return m_hiddenFault; }

  private:
    void OpenCopy(const std::string& content);

    int m_copy = -1;  // descriptor of the copy
    bool m_russian = false;
    std::string m_hiddenFault;
};

}  // namespace host
