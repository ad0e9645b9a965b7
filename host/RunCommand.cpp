#include "host/RunCommand.h"

#include "host/LineReader.h"
#include "host/ModuleOptions.h"
#include "host/Session.h"

#include <cstdio>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

// Answers held while an earlier one is still awaited.
// Bounded, since one slow request would otherwise let all others pile up.
constexpr std::size_t kWindow = 1024;
constexpr unsigned kMaxThreads = 256;

constexpr const char* kExamples =
    R"(Each line of the file is one request, a JSON object; each line of the output is its
answer. One module instance serves them all, so what one request sets the next one
finds. With several threads requests run side by side, in no set order; the answers
still come in the order of the lines.

A line goes to the module as it stands, but for members that begin with @:
  "@mode": "Sign"            the operation by its name
  "@file": "letter.txt"      file data of the request
  "@form": "binary"          how it travels: base64 (default) or binary
  "@output": "letter.sig"    where the octets of the result go
  "@interactive": true       an interactive user's own request (opens the gate)
A line that cannot be sent, and one whose result cannot be written, is answered
{"hostError":"..."}, with a note on the standard error; the session goes on and ends
with exit code 2. These members read and write files: play only sessions that you
trust. A module that crashes or exceeds --timeout ends the session with exit code 5.

Examples:
  cmhost run session.jsonl
  cmhost run --threads 8 session.jsonl > answers.jsonl
  echo '{"@mode":"GetCertInfo","@file":"certificate.pem"}' | cmhost run -)";

struct RunOptions {
    host::ModuleOptions module;
    std::string file;
    unsigned threads = 1;
    bool interactive = false;
};

int Play(const RunOptions& options) {
    host::CLineReader lines(options.file);
    const host::CLoadedModule module(options.module);
    host::COrderedOutput output(stdout, kWindow);
    // Answers that scroll by are progress enough.
    host::CProgressBar progress(/*enabled=*/::isatty(STDOUT_FILENO) != 1);
    host::CSession session(module.Get(), lines, output, progress, options.interactive);
    return session.Play(options.threads);
}

}  // namespace

namespace host {

void AddRunCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command = program.add_subcommand("run", "Play a session of requests");
    const auto options = std::make_shared<RunOptions>();
    command->add_option("file", options->file, "Requests, one a line; - is the standard input")
        ->required()
        ->type_name("FILE");
    command->add_option("--threads", options->threads, "Threads that send requests (default 1)")
        ->type_name("N")
        ->check(CLI::Range(1U, kMaxThreads).description(""));
    command->add_flag("--interactive", options->interactive,
                      "Send as an interactive user's own requests, which opens the gate");
    options->module.AddTo(*command);
    command->footer(kExamples);
    command->callback([options, &exitCode] { exitCode = Play(*options); });
}

}  // namespace host
