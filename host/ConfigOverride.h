#pragma once

#include <string>

namespace host {

/// Settings of the module that its interface has no argument for: they reach it through the
/// environment variable MOD_FOO_CONFIG, which names the configuration file it reads when created.
class CConfigOverride {
  public:
    /// Sets the variable; to be done before the module is created and before threads start.
    /// \param file      configuration to read; "" for the one the module finds by itself.
    /// \param language  "ru", "en", or "" for what the configuration says. With a language the
    ///                  module reads a copy of that configuration with `Language` replaced. The
    ///                  copy is in memory and goes with this object.
    /// Throws CHostError (usage) for a file that cannot be read.
    CConfigOverride(const std::string& file, const std::string& language);
    CConfigOverride(const CConfigOverride&) = delete;
    CConfigOverride& operator=(const CConfigOverride&) = delete;
    ~CConfigOverride();

  private:
    void OpenCopy(const std::string& content);

    int m_copy = -1;  // descriptor of the copy
};

}  // namespace host
