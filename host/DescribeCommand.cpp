#include "host/DescribeCommand.h"

#include "common/Hex.h"
#include "common/Lng.h"
#include "host/Describer.h"
#include "host/HostError.h"
#include "host/ModuleOptions.h"
#include "host/StandardStreams.h"
#include "host/Terminal.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

// Descriptions held while an earlier one is still awaited.
constexpr std::size_t kWindow = 64;
// More would only wait for each other.
constexpr unsigned kMaxThreads = 256;
constexpr std::size_t kWidthOfFiles = 120;  // columns when the output is not a terminal
// Lines of the closing count; archives of strangers fail in thousands of ways.
constexpr std::size_t kShownReasons = 50;

constexpr const char* kExamples =
    R"(Certificates, revocation lists, signed and enveloped messages and attribute
certificates are described by the module; OCSP and time-stamp requests and answers,
certification requests, keys and their parameters, PKCS #12 files, evidence records
and the other messages by this program. Secrets are not shown. A file is DER or BER,
PEM (with text around), S/MIME or bare Base64; - is the standard input. A folder
stands for all files below it, in sorted order. With more than one file a count of
what was not described, and why, goes to the standard error at the end. The exit
code is 2 when a file could not be read, which the standard error says, else 1 when
something was not described; the others are.

--json writes the answer or description of each object with "file" in front.
--ndjson writes a line for each object, one of
  {"file":"a.pem","kind":"certificate","answer":{...}}
  {"file":"b.der","kind":"ocspResponse","description":{...}}
  {"file":"c.txt","error":"...","errorCode":16113}
where "answer" is the module's, of the kinds attributeCertificate, certificate,
certificates, crl, envelope and signature. "object" is the number of one of several
in a file. The errorCode is left out when the file could not be read. The octets of a
name that is not UTF-8 stand in "fileBase64", and "file" shows what can be shown.

Of a revocation list the first 1000 entries are described, and how many more there
are is said; --serial, --first, --count and --all ask for others. "Faults" say what
else there is in a file beside what was described, and where.

Examples:
  cmhost describe certificate.pem
  cmhost describe message.p7s --language ru
  cmhost describe list.crl --first 1000 --count 50
  cmhost describe list.crl --serial 0a1b
  openssl s_client -connect host:443 -showcerts </dev/null | cmhost describe -
  cmhost describe --ndjson --threads 4 archive/ > archive.ndjson)";

struct DescribeOptions {
    host::ModuleOptions module;
    std::vector<std::string> files;
    bool json = false;
    bool lines = false;
    unsigned threads = 1;
    std::size_t width = 0;
    std::string serial;
    std::optional<std::uint32_t> first;
    std::optional<std::uint32_t> count;
    bool all = false;
};

// The entries of revocation lists that are asked for, as the module's parameters.
std::string ListParams(const DescribeOptions& options) {
    std::string params;
    const auto add = [&](const char* name, const std::string& value) {
        params.append(name).append("=").append(value).append(";");
    };
    if (!options.serial.empty()) {
        add("CRL_SERIAL", options.serial);
    }
    if (options.first) {
        add("CRL_FIRST", std::to_string(*options.first));
    }
    if (options.count || options.all || !options.serial.empty()) {
        // A number has no page: all entries of it are wanted.
        add("CRL_COUNT",
            std::to_string(options.count.value_or(std::numeric_limits<std::uint32_t>::max())));
    }
    return params;
}

// Digits as the module takes them; it has parameters of its own after a semicolon.
std::string CheckSerial(const std::string& text) {
    const auto isDigitOrMark = [](char c) { return c == ':' || c == ' ' || ca::IsHexDigit(c); };
    const bool isHex = std::ranges::all_of(text, isDigitOrMark) &&
                       text.find_first_not_of(": ") != std::string::npos;
    return isHex ? "" : "hexadecimal digits wanted";
}

void AddListOptions(CLI::App& command, DescribeOptions& options) {
    CLI::Option* const serial =
        command.add_option("--serial", options.serial, "Of lists: entries of this serial number")
            ->type_name("HEX")
            ->check(CLI::Validator(CheckSerial, ""));
    CLI::Option* const first =
        command.add_option("--first", options.first, "Of lists: entries from this index, 0 on")
            ->type_name("N")
            ->excludes(serial);
    CLI::Option* const count =
        command.add_option("--count", options.count, "Of lists: so many entries (default 1000)")
            ->type_name("N")
            ->excludes(serial);
    command.add_flag("--all", options.all, "Of lists: all entries")
        ->excludes(serial)
        ->excludes(first)
        ->excludes(count);
}

// The most frequent first, since it tells what an archive is made of.
void ReportFaults(const host::CDescriber::FaultCounts& faults, std::size_t files) {
    std::vector<std::pair<std::size_t, std::string>> rows;
    std::size_t bad = 0;
    for (const auto& [reason, count] : faults) {
        bad += count;
        rows.emplace_back(count, reason);
    }
    std::ranges::stable_sort(rows, [](const auto& a, const auto& b) { return a.first > b.first; });
    host::Note(std::to_string(files - bad) + " of " + std::to_string(files) + " files described");
    for (std::size_t i = 0; i < rows.size() && i < kShownReasons; ++i) {
        std::fprintf(stderr, "%8zu not: %s\n", rows[i].first,
                     host::Harmless(rows[i].second).c_str());
    }
    if (rows.size() > kShownReasons) {
        std::fprintf(stderr, "         and %zu more reasons\n", rows.size() - kShownReasons);
    }
}

int Describe(const DescribeOptions& options) {
    using enum host::DescribeForm;
    const std::vector<host::ListedFile> files = host::ListFiles(options.files);
    const host::CLoadedModule module(options.module);
    SetZORNALng(module.IsRussian() ? L"ru" : L"en");  // texts that are made here
    host::COrderedOutput output(stdout, kWindow);
    const host::DescribeRequest request{
        .listParams = ListParams(options),
        .text = {.width = options.width != 0 ? options.width
                                             : host::TerminalWidth(STDOUT_FILENO, kWidthOfFiles),
                 .russian = module.IsRussian(),  // labels and values go together
                 .isSelection = !options.serial.empty()}};
    const host::DescribeForm form = options.lines ? kLines : options.json ? kJson : kText;
    // It goes with this block: the closing count begins a line of its own.
    host::CDescriber::FaultCounts faults;
    bool isUnreadable = false;
    {
        // Descriptions that scroll by are progress enough.
        host::CProgressBar progress(/*enabled=*/::isatty(STDOUT_FILENO) != 1, "files");
        host::CDescriber describer(module.Get(), output, progress, form, request);
        describer.Describe(files, options.threads);
        faults = describer.GetFaults();
        isUnreadable = describer.GetUnreadable();
    }
    if (files.size() != 1) {
        ReportFaults(faults, files.size());
    }
    // The worst outcome decides.
    return isUnreadable     ? host::kExitUsage
           : faults.empty() ? host::kExitDone
                            : host::kExitAnsweredBad;
}

}  // namespace

namespace host {

void AddDescribeCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command =
        program.add_subcommand("describe", "Say what files of certificates and messages hold");
    const auto options = std::make_shared<DescribeOptions>();
    command->add_option("files", options->files, "Files and folders; - is the standard input")
        ->required()
        ->type_name("FILE");
    CLI::Option* const json =
        command->add_flag("--json", options->json, "Answers and descriptions, indented");
    command->add_flag("--ndjson", options->lines, "A line of JSON for each object")->excludes(json);
    command->add_option("--threads", options->threads, "Threads that ask (default 1)")
        ->type_name("N")
        ->check(CLI::Range(1U, kMaxThreads).description(""));
    AddListOptions(*command, *options);
    AddWidthOption(*command, options->width);
    options->module.AddTo(*command);
    command->footer(kExamples);
    command->callback([options, &exitCode] { exitCode = Describe(*options); });
}

}  // namespace host
