#include "host/CallCommand.h"

#include "host/AnswerPrinter.h"
#include "host/FileIo.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/ModeTable.h"
#include "host/ModuleOptions.h"
#include "host/Request.h"
#include "host/StandardStreams.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using host::CHostError;

// Characters of one string shown on a terminal; a file or pipe gets all of them.
constexpr std::size_t kLongestOnTerminal = 400;

constexpr const char* kExamples = R"(Examples:
  cmhost call EnumCerts
  cmhost call GetCertInfo --file certificate.pem
  cmhost call Sign --file letter.txt --interactive -o letter.sig
  cmhost call SignRaw --file big.bin --binary --interactive -o big.sig
  cmhost call SetCurStore --client ann --set 'storeAddress={"location":"sscu","name":"MY"}'
  cmhost call 38 --json request.json --log --language en

The answer's JSON goes to the standard output, notes go to the standard error.
A --set value that is JSON is taken as JSON: quote a text that reads as a number
or word of JSON, as in --set 'comment="42"'. A key of the wrong JSON type may make
the module stop the process.)";

struct CallOptions {
    host::ModuleOptions module;
    std::string mode;
    std::optional<std::string> client;
    std::string file;
    bool base64 = false;
    bool binary = false;
    std::vector<std::string> pairs;
    std::string json;
    bool interactive = false;
    std::string output;
};

void AddOptions(CLI::App& command, CallOptions& options) {
    command.add_option("mode", options.mode, "Operation: a name or number of `cmhost modes`")
        ->required()
        ->type_name("NAME-OR-NUMBER");
    command.add_option("--client", options.client, "Client id, whose context the request uses")
        ->type_name("ID");
    command.add_option("--file", options.file, "File data of the request; - is the standard input")
        ->type_name("FILE");
    CLI::Option* const base64 = command.add_flag(
        "--base64", options.base64, "Send the file as announced Base64 text (default)");
    command
        .add_flag("--binary", options.binary,
                  "Send the file as raw octets after the request instead")
        ->excludes(base64);
    command
        .add_option("--set", options.pairs,
                    "Set a member of the request; may be given more than once")
        ->type_name("KEY=VALUE")
        ->expected(1)
        ->take_all();
    command.add_option("--json", options.json, "Start from this JSON object; - is standard input")
        ->type_name("FILE");
    command.add_flag("--interactive", options.interactive,
                     "Send as an interactive user's own request, which opens the gate");
    command
        .add_option("-o,--output", options.output,
                    "Write the octets of the result to a file; - is the standard output, the "
                    "answer then goes to the standard error")
        ->type_name("FILE");
    options.module.AddTo(command);
    command.footer(kExamples);
}

host::CRequest BuildRequest(const CallOptions& options) {
    const std::optional<std::uint32_t> mode = host::ModeByName(options.mode);
    // A number that the list does not have is sent all the same: the module may be newer than this
    // program.
    if (!mode) {
        throw CHostError(host::kExitUsage,
                         host::NoSuchMode(options.mode) + " (`cmhost modes` lists them)");
    }
    if (options.json == "-" && options.file == "-") {
        throw CHostError(host::kExitUsage, "--json and --file cannot both be the standard input");
    }
    host::CRequestBuilder builder;
    if (!options.json.empty()) {
        if (const std::string reason = builder.Load(host::ReadFile(options.json));
            !reason.empty()) {
            throw CHostError(host::kExitUsage, options.json + " is not a request: " + reason);
        }
    }
    // After --json: what stands on the command line wins over the file.
    // Its place in the text does not matter: members are set by name.
    builder.Set("mode", std::to_string(*mode));
    if (options.client) {
        builder.Set("clientId", host::QuoteJson(*options.client));
    }
    for (const std::string& pair : options.pairs) {
        builder.SetPair(pair);
    }
    host::CRequest request{
        .octets = "", .interactive = options.interactive, .name = host::NameMode(*mode)};
    const auto form = options.binary ? host::PayloadForm::kBinary : host::PayloadForm::kBase64;
    if (options.file.empty()) {
        if (options.binary || options.base64) {
            throw CHostError(host::kExitUsage, "--base64 and --binary go with --file");
        }
        request.octets = builder.Build(nullptr, form);
    } else {
        const std::string payload = host::ReadFile(options.file);
        request.octets = builder.Build(&payload, form);
    }
    return request;
}

void PrintAnswer(const CallOptions& options, const host::CAnswer& answer) {
    // The octets may go to the standard output, where the JSON would damage them.
    FILE* const stream = options.output == "-" ? stderr : stdout;
    const bool terminal = ::isatty(::fileno(stream)) == 1;
    // A file or a pipe gets all of every string, as a program may read it.
    const std::string text = host::PrettyAnswer(answer, terminal ? kLongestOnTerminal : 0);
    host::Put(text, stream);
    host::Flush(stream);
    if (!answer.GetFault().empty()) {
        host::Note(answer.GetFault());
    }
}

void StoreOctets(const CallOptions& options, const host::CAnswer& answer) {
    // Raw octets would be lost unseen.
    if (options.output.empty()) {
        if (!answer.GetRaw().empty()) {
            host::Note("after the answer " + host::SummariseOctets(answer.GetRaw()) +
                       " (-o FILE keeps them)");
        }
        return;
    }
    const std::optional<std::string> octets = answer.ExtractOctets();
    if (!octets) {
        host::Note("the answer holds no file data; nothing written");
        return;
    }
    host::WriteFile(options.output, *octets);
    if (options.output != "-") {
        host::Note("written to " + options.output + ": " +
                   host::SummariseOctets(host::AsOctets(*octets)));
    }
}

int Call(const CallOptions& options) {
    host::CRequest request = BuildRequest(options);
    const host::CLoadedModule module(options.module);
    const host::CAnswer answer = module.Get().Ask(request);
    PrintAnswer(options, answer);
    StoreOctets(options, answer);
    return answer.IsGood() ? host::kExitDone : host::kExitAnsweredBad;
}

}  // namespace

namespace host {

void AddCallCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command = program.add_subcommand("call", "Send one request, show its answer");
    const auto options = std::make_shared<CallOptions>();
    AddOptions(*command, *options);
    command->callback([options, &exitCode] { exitCode = Call(*options); });
}

}  // namespace host
