#include "host/SignCommand.h"

#include "common/Encode.h"
#include "host/CallParameters.h"
#include "host/FileIo.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/StandardStreams.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>
#include <optional>
#include <string>

namespace {

constexpr const char* kExamples = R"(Examples:
  cmhost sign letter.txt                          # letter.txt.p7s, apart from the letter
  cmhost sign letter.txt --attached -o letter.p7m
  cmhost sign letter.txt --cert 11ae56e7... --digest SHA-512 --password-file pin.txt
  cmhost sign letter.txt --add letter.txt.p7s     # one more signature

Without --cert the one certificate of the store MY that has a key signs.)";

// Octets as a JSON string.
std::string Base64Json(const std::string& octets) {
    std::string text;
    const std::span<const unsigned char> view = host::AsOctets(octets);
    ca::Base64Encode(view.data(), static_cast<unsigned>(view.size()), text);
    return host::QuoteJson(text);
}

struct SignOptions {
    host::CallParameters call;
    std::string file;
    std::string output;
    std::string certificate;
    std::string digest;
    std::string message;
    bool isAttached = false;
};

std::string OutputOf(const SignOptions& options) {
    if (!options.output.empty()) {
        return options.output;
    }
    if (!options.message.empty()) {
        return options.message;
    }
    return options.file == "-" ? "-" : options.file + (options.isAttached ? ".p7m" : ".p7s");
}

// "Sign" decodes file data that are Base64 text, bare or armoured. A file that could be taken for
// such is encoded once more, so that its own octets are signed.
std::string AsSigned(std::string content) {
    const auto size = static_cast<unsigned>(content.size());
    const bool isTaken = content.find("-----BEGIN ") != std::string::npos ||
                         ca::_IsBase64String(content.c_str(), size);
    if (!isTaken || content.empty()) {
        return content;
    }
    std::string encoded;
    ca::Base64Encode(host::AsOctets(content).data(), size, encoded);
    return encoded;
}

int Sign(const SignOptions& options) {
    const bool isAdded = !options.message.empty();
    host::CRequestBuilder builder = options.call.Begin(isAdded ? "CoSign" : "Sign");
    if (!options.certificate.empty()) {
        builder.Set("senderCertId", host::QuoteJson(options.certificate));
    }
    if (!options.digest.empty()) {
        builder.Set("hashAlg", host::QuoteJson(options.digest));
    }
    builder.Set("isAttached", options.isAttached ? "true" : "false");
    std::string content = host::ReadFile(options.file);
    if (!isAdded) {
        content = AsSigned(std::move(content));
    } else {
        const std::string message = host::ReadFile(options.message);
        builder.Set("sendSignData", Base64Json(message));
    }
    const host::CLoadedModule module(options.call.module);
    const host::CAnswer answer = host::AskAsUser(module, builder, &content, options.file);
    const std::optional<std::string> octets = answer.ExtractOctets();
    if (!answer.IsGood() || !octets) {
        return host::kExitAnsweredBad;
    }
    const std::string output = OutputOf(options);
    host::WriteFile(output, *octets);
    if (output != "-") {
        host::Note("signed: " + output);
    }
    return host::kExitDone;
}

}  // namespace

namespace host {

void AddSignCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command = program.add_subcommand("sign", "Sign a file");
    const auto options = std::make_shared<SignOptions>();
    command->add_option("file", options->file, "What is signed; - is the standard input")
        ->required()
        ->type_name("FILE");
    command
        ->add_option("-o,--output", options->output,
                     "Where the signature goes (default: FILE.p7s, with --attached FILE.p7m)")
        ->type_name("FILE");
    command->add_option("--cert", options->certificate, "Id of the signer's certificate")
        ->type_name("ID");
    command->add_option("--digest", options->digest, "Digest algorithm, as SHA-256")
        ->type_name("NAME");
    CLI::Option* const attached =
        command->add_flag("--attached", options->isAttached, "The message is to hold the file");
    command
        ->add_option("--add", options->message,
                     "Add a signature to this message, which is apart from the file")
        ->type_name("MESSAGE")
        ->excludes(attached);
    options->call.AddTo(*command, /*withPassword=*/true);
    command->footer(kExamples);
    command->callback([options, &exitCode] { exitCode = Sign(*options); });
}

}  // namespace host
