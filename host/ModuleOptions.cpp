#include "host/ModuleOptions.h"

#include "host/LogSink.h"
#include "host/StandardStreams.h"
#include "host/Terminal.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <chrono>

namespace {

// Seconds; a time limit of nothing would end every request.
constexpr double kShortestTimeout = 0.001;
constexpr double kLongestTimeout = 1'000'000;
constexpr std::size_t kMostColumns = 100'000;

std::chrono::milliseconds Milliseconds(double seconds) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::duration<double>(seconds));
}

void BeginLog(const host::ModuleOptions& options, const host::CConfigOverride& config) {
    host::ShowLog(options.log);
    if (options.log && !options.silent && !config.GetHiddenFault().empty()) {
        host::Note(config.GetHiddenFault() + ": every setting but the language has its default");
    }
}

// A part of a file's name; "" or the fault.
std::string CheckProvider(const std::string& name) {
    // Part of a path: no slash, no dot.
    const bool isName = !name.empty() && std::ranges::all_of(name, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
    });
    return isName ? std::string() : "a provider's name has small letters, digits and _: " + name;
}

}  // namespace

namespace host {

void AddLanguageOption(CLI::App& command, std::string& language) {
    command
        .add_option("--language,--lang", language,
                    "Language of the texts (default: what the configuration names, else the "
                    "locale's)")
        ->type_name("ru|en")
        ->check(CLI::IsMember({"ru", "en"}, CLI::ignore_case).description(""));
}

void AddWidthOption(CLI::App& command, std::size_t& width) {
    command
        .add_option("--width", width, "Columns of a line, at least 40 (default: the terminal's)")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{0}, kMostColumns).description(""));
}

void ModuleOptions::AddTo(CLI::App& command) {
    CLI::Option* const path =
        command
            .add_option("--module", module,
                        "The provider's library (default: the libmod_" + provider +
                            ".so.1 that belongs to this program, else the system's)")
            ->type_name("PATH");
    command
        .add_option(
            "--provider", provider,
            "The provider by its name: that of libmod_NAME.so.1 (default: " + provider + ")")
        ->type_name("NAME")
        ->check(&CheckProvider, "")
        ->excludes(path);
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
    command
        .add_option("--timeout", timeout,
                    "End with exit code 5 when the module takes longer for one request (default: "
                    "wait for ever)")
        ->type_name("SECONDS")
        ->check(CLI::Range(kShortestTimeout, kLongestTimeout).description(""));
    command.add_flag("--log", log,
                     "Show the module's log lines on the standard error, errors marked with !");
    command.add_flag("--silent", silent,
                     "Create the module without user interface: no window, and no log line about "
                     "its configuration");
}

CLoadedModule::CLoadedModule(const ModuleOptions& options)
    : m_config(options.config, options.language, options.pkiConfig),
      m_path(FindModule(options.module, options.provider)),
      m_watch(Harmless(m_path), Milliseconds(options.timeout)),
      m_library(m_path),
      // The log begins before CM_Init, which writes its first lines.
      m_module((BeginLog(options, m_config), m_library), options.silent) {}

}  // namespace host
