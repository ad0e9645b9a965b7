#include "host/ModesCommand.h"

#include "host/HostError.h"
#include "host/ModeTable.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstdio>
#include <memory>

namespace {

void PrintTable() {
    std::printf("%-5s %-18s %-6s %s\n", "Mode", "Name", "Gated", "What it does");
    for (const host::ModeRow& mode : host::AllModes()) {
        std::printf("%-5u %-18s %-6s %s\n", mode.number, mode.name.empty() ? "-" : mode.name.data(),
                    mode.gated ? "yes" : "-", mode.purpose.data());
    }
    std::printf(
        "\nA gated operation uses a private key or shows a window: it needs --interactive, or\n"
        "AllowServicePrivateKeyAccess=1 in the configuration.\n");
}

void PrintNames() {
    for (const host::ModeRow& mode : host::AllModes()) {
        if (!mode.name.empty()) {
            std::printf("%s\n", mode.name.data());
        }
    }
}

}  // namespace

namespace host {

void AddModesCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command = program.add_subcommand("modes", "List the operations");
    const auto onlyNames = std::make_shared<bool>(false);
    command->add_flag("--names", *onlyNames, "Only the names, one a line");
    command->footer("Examples:\n  cmhost modes\n  cmhost modes --names | sort -u");
    command->callback([onlyNames, &exitCode] {
        *onlyNames ? PrintNames() : PrintTable();
        exitCode = kExitDone;
    });
}

}  // namespace host
