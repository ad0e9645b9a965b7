#include "host/ModesCommand.h"

#include "host/HostError.h"
#include "host/ModeTable.h"
#include "host/StandardStreams.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <array>
#include <cstdio>
#include <memory>
#include <string>

namespace {

std::string Row(const char* number, const char* name, const char* gated, const char* purpose) {
    std::array<char, 200> row{};
    std::snprintf(row.data(), row.size(), "%-5s %-18s %-6s %s\n", number, name, gated, purpose);
    return row.data();
}

std::string Table() {
    std::string text = Row("Mode", "Name", "Gated", "What it does");
    for (const host::ModeRow& mode : host::AllModes()) {
        text += Row(std::to_string(mode.number).c_str(), mode.name.empty() ? "-" : mode.name.data(),
                    mode.gated ? "yes" : "-", mode.purpose.data());
    }
    return text +
           "\nA gated operation uses a private key or shows a window: it needs --interactive, or\n"
           "AllowServicePrivateKeyAccess=1 in the configuration.\n";
}

std::string Names() {
    std::string text;
    for (const host::ModeRow& mode : host::AllModes()) {
        text += mode.name.empty() ? "" : std::string(mode.name) + "\n";
    }
    return text;
}

}  // namespace

namespace host {

void AddModesCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command = program.add_subcommand("modes", "List the operations");
    const auto onlyNames = std::make_shared<bool>(false);
    command->add_flag("--names", *onlyNames, "Only the names, one a line");
    command->footer("Examples:\n  cmhost modes\n  cmhost modes --names | sort -u");
    command->callback([onlyNames, &exitCode] {
        Put(*onlyNames ? Names() : Table());
        Flush();
        exitCode = kExitDone;
    });
}

}  // namespace host
