#include "host/Asn1Command.h"
#include "host/CallCommand.h"
#include "host/DescribeCommand.h"
#include "host/HelpFormatter.h"
#include "host/HostError.h"
#include "host/ModesCommand.h"
#include "host/RunCommand.h"
#include "host/SignCommand.h"
#include "host/StandardStreams.h"
#include "host/StoreCommand.h"
#include "host/UsageError.h"
#include "host/VerifyCommand.h"
#include "host/ViewCommand.h"

#include <CLI/App.hpp>

#include <exception>
#include <memory>
#include <new>
#include <sstream>

namespace {

constexpr const char* kAbout =
    R"(Host of a crypto module: sends it requests and shows its answers.)";

constexpr const char* kFooter = R"(Exit codes:
  0  answered, and every errorCode is 0
  1  an answer carries an errorCode, or is no proper answer
  2  wrong usage, or a file or stream that cannot be read or written
  3  the module does not load, or lacks what the command needs
  4  there is no display that a window could be opened on
  5  the module crashed, ended the process or exceeded --timeout

`cmhost COMMAND --help` shows the options of a command with examples. A file whose
name begins with - is written as ./-name, or stands after --.)";

int Report(const char* text, int exitCode) {
    host::Note(text);
    return exitCode;
}

int Run(int argc, const char* const* argv) {
    int exitCode = host::kExitUsage;
    CLI::App program(kAbout, "cmhost");
    program.formatter(std::make_shared<host::CHelpFormatter>());
    program.get_formatter()->label("SUBCOMMAND", "COMMAND");
    program.set_version_flag("--version", "cmhost " CMHOST_VERSION);
    // None at all is answered with the help, not with a complaint.
    program.require_subcommand(/*min=*/0, /*max=*/1);
    program.footer(kFooter);
    host::AddModesCommand(program, exitCode);
    host::AddCallCommand(program, exitCode);
    host::AddRunCommand(program, exitCode);
    host::AddAsn1Command(program, exitCode);
    host::AddDescribeCommand(program, exitCode);
    host::AddViewCommand(program, exitCode);
    host::AddSignCommand(program, exitCode);
    host::AddVerifyCommand(program, exitCode);
    host::AddStoreCommand(program, exitCode);
    for (CLI::App* const command : program.get_subcommands({})) {
        command->group("Commands");
    }
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) {
            host::Put(host::UsageErrorText(program, error), stderr);
            return host::kExitUsage;
        }
        std::ostringstream help;
        program.exit(error, help);
        host::Put(help.str());
        exitCode = host::kExitDone;
    }
    if (argc < 2) {
        host::Put(program.help(), stderr);
    }
    host::Flush();
    return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
    host::PrepareStandardStreams();
    try {
        return Run(argc, argv);
    } catch (const host::CHostError& error) {
        return Report(error.what(), error.GetExitCode());
    } catch (const std::bad_alloc&) {
        return Report("out of memory", host::kExitUsage);
    } catch (const std::exception& error) {
        return Report(error.what(), host::kExitUsage);
    }
}
