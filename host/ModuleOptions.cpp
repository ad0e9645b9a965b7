#include "host/ModuleOptions.h"

#include "host/LogSink.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstdlib>
#include <string_view>

namespace {

constexpr std::size_t kMostColumns = 100'000;

}  // namespace

namespace host {

void AddLanguageOption(CLI::App& command, std::string& language) {
    command.add_option("--language", language, "Language of the texts: ru or en")
        ->check(CLI::IsMember({"ru", "en"}, CLI::ignore_case));
}

bool WantsRussian(const std::string& language) {
    if (!language.empty()) {
        return language.front() == 'r' || language.front() == 'R';
    }
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* const value = std::getenv(name); value != nullptr && *value != '\0') {
            return std::string_view(value).starts_with("ru");
        }
    }
    return false;
}

void AddWidthOption(CLI::App& command, std::size_t& width) {
    command
        .add_option("--width", width, "Columns of a line, at least 40 (default: the terminal's)")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{0}, kMostColumns));
}

void ModuleOptions::AddTo(CLI::App& command) {
    command
        .add_option("--module", module,
                    "The provider's library (default: the libmod_foo.so.1 that belongs to this "
                    "program, else the system's)")
        ->type_name("PATH");
    command
        .add_option("--config", config,
                    "Configuration file that the module reads (default: the one it finds)")
        ->type_name("FILE");
    command
        .add_option("--pki-config", pkiConfig,
                    "PKI configuration file that the module reads (default: the one beside its "
                    "configuration)")
        ->type_name("FILE");
    AddLanguageOption(command, language);
    command.add_flag("--log", log,
                     "Show the module's log lines on the standard error, errors marked with !");
    command.add_flag("--silent", silent,
                     "Create the module without user interface: no window, and no log line about "
                     "its configuration");
}

CLoadedModule::CLoadedModule(const ModuleOptions& options)
    : m_config(options.config, options.language, options.pkiConfig),
      m_library(options.module),
      m_module((ShowLog(options.log), m_library), options.silent) {}

}  // namespace host
