#include "host/CallParameters.h"

#include "common/Json.h"
#include "host/FileIo.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/ModeTable.h"
#include "host/StandardStreams.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace {

// Octets; a longer file is refused, as it does not hold a password.
constexpr std::size_t kLongestPassword = 4096;

// A value of an init string, whatever is in it.
// Quotes are doubled, as the module's parser of such strings reads them.
std::string Quoted(const std::string& value) {
    std::string text = "\"";
    for (const char c : value) {
        text += c == '"' ? "\"\"" : std::string(1, c);
    }
    return text + '"';
}

// The first line of a file; "-" is the standard input.
std::string ReadPassword(const std::string& path) {
    const std::string text = host::ReadFile(path, kLongestPassword);
    return text.substr(0, text.find_first_of("\r\n"));
}

std::string ErrorText(const host::CAnswer& answer) {
    // Iteratively: the depth is the module's choice.
    rapidjson::Document root;
    root.Parse<rapidjson::kParseIterativeFlag>(answer.GetText().data(), answer.GetText().size());
    std::string code = std::to_string(answer.GetErrorCode().value_or(0));
    if (!root.IsObject() || !root.HasMember("errorMessage") || !root["errorMessage"].IsString()) {
        return code;
    }
    return code + ' ' + root["errorMessage"].GetString();
}

}  // namespace

namespace host {

void CallParameters::AddTo(CLI::App& command, bool withPassword) {
    if (withPassword) {
        command
            .add_option("--password-file", passwordFile,
                        "The password of the key is the first line of this file; - is the "
                        "standard input")
            ->type_name("FILE");
    }
    command
        .add_option("--param", params,
                    "A parameter of the call, see docs/init-strings.md; may be given more than "
                    "once")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->take_all();
    module.AddTo(command);
}

void CallParameters::Add(const std::string& name, const std::string& value) {
    params.push_back(name + '=' + Quoted(value));
}

// The password comes from a file: command lines stand in histories and in lists of processes.
CRequestBuilder CallParameters::Begin(std::string_view mode) const {
    CRequestBuilder builder;
    builder.Set("mode", std::to_string(ModeByName(mode).value_or(0)));
    std::string text;
    for (const std::string& param : params) {
        text += param + ';';
    }
    if (!passwordFile.empty()) {
        text += "KEY_PASSWORD=" + Quoted(ReadPassword(passwordFile)) + ';';
    }
    if (!text.empty()) {
        builder.Set("extInitParams", QuoteJson(text));
    }
    return builder;
}

CAnswer AskAsUser(const CLoadedModule& module, const CRequestBuilder& builder,
                  const std::string* payload, std::string_view name) {
    // These commands are the user's own wish, so that the gate is open.
    CRequest request{.octets = builder.Build(payload, PayloadForm::kBinary),
                     .interactive = true,
                     .name = std::string(name)};
    CAnswer answer = module.Get().Ask(request);
    if (!answer.GetFault().empty()) {
        Note(answer.GetFault());
    } else if (!answer.IsGood()) {
        Note(std::string(name) + ": " + ErrorText(answer));
    }
    return answer;
}

std::string StoreJson(const std::string& store) {
    if (store.empty()) {
        return {};
    }
    // "sslm:Root": a location and a name; a name alone is a store of the user.
    const std::size_t colon = store.find(':');
    const bool hasLocation = colon != std::string::npos;
    return R"({"location":)" + QuoteJson(hasLocation ? store.substr(0, colon) : "sscu") +
           R"(,"address":"","name":)" + QuoteJson(hasLocation ? store.substr(colon + 1) : store) +
           '}';
}

}  // namespace host
