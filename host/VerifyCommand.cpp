#include "host/VerifyCommand.h"

#include "common/Encode.h"
#include "common/Json.h"
#include "host/CallParameters.h"
#include "host/FileIo.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/StandardStreams.h"
#include "host/Terminal.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <ctime>
#include <memory>
#include <string>

namespace {

constexpr const char* kExamples = R"(Examples:
  cmhost verify letter.p7m
  cmhost verify letter.txt.p7s --content letter.txt
  cmhost verify letter.p7m --at 2026-06-30T12:00:00    # UTC

Signatures on a signature stand below it: 1.1, 1.2. Exits with 0 when every signature is valid
and every signer is trusted, else with 1.)";

constexpr unsigned kMaxLevels = 32;  // of signatures on signatures; records are not deeper
constexpr unsigned kGood = 16200;    // the code of a signature or certificate that was found good

// Octets as a JSON string.
std::string Base64Json(const std::string& octets) {
    std::string text;
    const std::span<const unsigned char> view = host::AsOctets(octets);
    ca::Base64Encode(view.data(), static_cast<unsigned>(view.size()), text);
    return host::QuoteJson(text);
}

struct VerifyOptions {
    host::CallParameters call;
    std::string file;
    std::string content;
    std::string extracted;
    std::string time;
};

// The seconds of "2026-06-30" or "2026-06-30T12:00:00"; throws CHostError for another text.
std::string Seconds(const std::string& text) {
    std::tm parts{};
    const char* const end =
        ::strptime(text.c_str(),
                   text.find('T') != std::string::npos ? "%Y-%m-%dT%H:%M:%S" : "%Y-%m-%d", &parts);
    if (end == nullptr || *end != '\0') {
        throw host::CHostError(host::kExitUsage, "no time as 2026-06-30T12:00:00: " + text);
    }
    return std::to_string(::timegm(&parts));
}

// The answer may be anybody's: nothing about its members is believed.
const rapidjson::Value* Find(const rapidjson::Value& object, const char* key) {
    if (!object.IsObject()) {
        return nullptr;
    }
    const auto member = object.FindMember(key);
    return member != object.MemberEnd() ? &member->value : nullptr;
}

std::string Text(const rapidjson::Value* object, const char* key) {
    const rapidjson::Value* const value = object != nullptr ? Find(*object, key) : nullptr;
    return value != nullptr && value->IsString() ? std::string(value->GetString()) : std::string();
}

unsigned Code(const rapidjson::Value* object, const char* key) {
    const rapidjson::Value* const value = object != nullptr ? Find(*object, key) : nullptr;
    return value != nullptr && value->IsUint() ? value->GetUint() : 0;
}

// Each line of a text after an indent, harmless to a terminal.
std::string Indented(const std::string& text, std::size_t indent) {
    std::string out;
    std::size_t from = 0;
    while (from <= text.size()) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        out += std::string(indent, ' ') + host::Harmless(text.substr(from, end - from)) + '\n';
        indent = indent < 4 ? indent + 2 : indent;
        from = end + 1;
    }
    return out;
}

// Prints one signature; false when it is not valid, or its signer not trusted.
bool Print(const rapidjson::Value& signature, const std::string& number, bool isRussian) {
    const rapidjson::Value* const result = Find(signature, "VerifyResultEx");
    const rapidjson::Value* const certificate = Find(signature, "SignCert");
    const bool isGood = Code(result, "SignatureVerifyResult") == kGood &&
                        Code(result, "CertificateVerifyResult") == kGood;
    std::string head = (isRussian ? "Подпись " : "Signature ") + number + ": " +
                       (isGood      ? isRussian ? "ДЕЙСТВИТЕЛЬНА" : "VALID"
                        : isRussian ? "НЕ ПОДТВЕРЖДЕНА"
                                    : "NOT VALID");
    host::Put(head + '\n');
    host::Put(Indented(Text(certificate, "Description") + ", " + Text(&signature, "SignTime"), 2));
    host::Put(Indented(Text(result, "SignatureVerifyResultString"), 2));
    host::Put(Indented(Text(result, "CertificateVerifyResultString"), 2));
    return isGood;
}

// Prints signatures, and below each those on it ("1.2"); false when one of them is not good.
bool PrintAll(const rapidjson::Value* signatures, const std::string& prefix, unsigned level,
              bool isRussian) {
    if (signatures == nullptr || !signatures->IsArray() || level == kMaxLevels) {
        return true;
    }
    bool areGood = true;
    for (rapidjson::SizeType i = 0; i < signatures->Size(); ++i) {
        const rapidjson::Value& each = (*signatures)[i];
        const std::string number = prefix + std::to_string(i + 1);
        areGood = Print(each, number, isRussian) && areGood;
        areGood = PrintAll(Find(each, "CoSigners"), number + '.', level + 1, isRussian) && areGood;
    }
    return areGood;
}

int Verify(VerifyOptions& options) {
    if (!options.time.empty()) {
        options.call.Add("VERIFY_TIME", Seconds(options.time));
    }
    host::CRequestBuilder builder = options.call.Begin("Verify");
    const std::string message = host::ReadFile(options.file);
    std::string content;
    if (!options.content.empty()) {
        content = host::ReadFile(options.content);
        builder.Set("sendSignData", Base64Json(message));
    }
    builder.Set("needExtraction", options.extracted.empty() ? "false" : "true");
    const host::CLoadedModule module(options.call.module);
    const host::CAnswer answer = host::AskAsUser(
        module, builder, options.content.empty() ? &message : &content, options.file);
    if (!answer.IsGood()) {
        return host::kExitAnsweredBad;
    }
    rapidjson::Document root;
    root.Parse<rapidjson::kParseIterativeFlag>(answer.GetText().data(), answer.GetText().size());
    const rapidjson::Value* const signatures = Find(root, "signInfo");
    const bool isThere = signatures != nullptr && signatures->IsArray() && !signatures->Empty();
    const bool areGood =
        PrintAll(signatures, /*prefix=*/"", /*level=*/0, module.IsRussian()) && isThere;
    host::Flush();
    if (areGood && !options.extracted.empty()) {
        host::WriteFile(options.extracted, answer.ExtractOctets().value_or(content));
    }
    return areGood ? host::kExitDone : host::kExitAnsweredBad;
}

}  // namespace

namespace host {

void AddVerifyCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command =
        program.add_subcommand("verify", "Verify the signatures of a message, and say why");
    const auto options = std::make_shared<VerifyOptions>();
    command->add_option("file", options->file, "The message; - is the standard input")
        ->required()
        ->type_name("FILE");
    command
        ->add_option("--content", options->content, "What a message apart from its content signs")
        ->type_name("FILE");
    command
        ->add_option("-o,--output", options->extracted,
                     "Write the content there when every signature is valid")
        ->type_name("FILE");
    command->add_option("--at", options->time, "Judge certificates at this time, UTC")
        ->type_name("TIME");
    options->call.AddTo(*command, /*withPassword=*/false);
    command->footer(kExamples);
    command->callback([options, &exitCode] { exitCode = Verify(*options); });
}

}  // namespace host
