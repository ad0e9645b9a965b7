#pragma once

#include "host/ConfigOverride.h"
#include "host/ModuleLoader.h"
#include "host/ModuleWatch.h"

#include <CLI/App.hpp>

#include <cstddef>
#include <string>

namespace host {

/// The options shared by every command that loads a module.
struct ModuleOptions {
    std::string module;            ///< "" for the search of CModuleLibrary
    std::string provider = "foo";  ///< whose library is searched for
    std::string config;            ///< "" for the one the module finds
    std::string pkiConfig;         ///< likewise
    std::string language;          ///< "ru", "en" or ""
    bool log = false;
    bool silent = false;
    double timeout = 0;  ///< seconds; 0 for none

    /// Adds the options to a command.
    void AddTo(CLI::App& command);
};

/// A module made as the options say.
class CLoadedModule {
  public:
    /// Throws CHostError, see CConfigOverride, CModuleLibrary and CModule.
    explicit CLoadedModule(const ModuleOptions& options);

    const CModule& Get() const { return m_module; }
    const CModuleLibrary& GetLibrary() const { return m_library; }
    /// The language of all texts, the module's and this program's.
    bool IsRussian() const { return m_config.IsRussian(); }

  private:
    CConfigOverride m_config;
    std::string m_path;
    CModuleWatch m_watch;
    CModuleLibrary m_library;
    CModule m_module;
};

/// Adds --language to a command, which takes "ru" and "en"; see IsRussian().
void AddLanguageOption(CLI::App& command, std::string& language);

/// Adds --width to a command; 0 stands for the terminal's.
void AddWidthOption(CLI::App& command, std::size_t& width);

}  // namespace host
