#include "host/StoreCommand.h"

#include "common/Json.h"
#include "host/CallParameters.h"
#include "host/FileIo.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/StandardStreams.h"
#include "host/Terminal.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>
#include <string>
#include <vector>

namespace {

constexpr const char* kListExamples = R"(Examples:
  cmhost store list                  # the user's own certificates
  cmhost store list sslm:Root        # the roots that the machine trusts

K in front of a certificate says that its key is there.)";
constexpr const char* kAddExamples = R"(Examples:
  cmhost store add root.pem --store Root
  cmhost store add alice.p12 --password-file pin.txt

Where no store is named, certificates with their keys go to MY, of authorities to CA,
others to AddressBook.)";

struct StoreOptions {
    host::CallParameters call;
    std::string store;
    std::vector<std::string> files;
};

void SetStore(const std::string& store, host::CRequestBuilder& builder) {
    if (!store.empty()) {
        builder.Set("storeAddress", host::StoreJson(store));
    }
}

rapidjson::Document Parsed(const host::CAnswer& answer) {
    rapidjson::Document root;
    root.Parse<rapidjson::kParseIterativeFlag>(answer.GetText().data(), answer.GetText().size());
    return root;
}

std::string Text(const rapidjson::Value& object, const char* key) {
    const auto member = object.FindMember(key);
    return member != object.MemberEnd() && member->value.IsString() ? member->value.GetString()
                                                                    : "";
}

// One line of a certificate in a store.
std::string Line(const rapidjson::Document& answer) {
    if (!answer.IsObject() || !answer.HasMember("certInfo") || !answer["certInfo"].IsObject()) {
        return {};
    }
    const rapidjson::Value& info = answer["certInfo"];
    const auto key = info.FindMember("HasPrivateKey");
    const bool hasKey = key != info.MemberEnd() && key->value.IsBool() && key->value.GetBool();
    return host::Harmless((hasKey ? "K " : "  ") + Text(info, "Id") + "  " +
                          Text(info, "ValidTo").substr(0, 10) + "  " + Text(info, "Description")) +
           '\n';
}

int List(const StoreOptions& options) {
    const host::CLoadedModule module(options.call.module);
    host::CRequestBuilder builder = options.call.Begin("EnumCerts");
    SetStore(options.store, builder);
    const host::CAnswer answer = host::AskAsUser(module, builder, nullptr, "EnumCerts");
    const rapidjson::Document ids = Parsed(answer);
    if (!answer.IsGood() || !ids.IsObject() || !ids.HasMember("certificates") ||
        !ids["certificates"].IsArray()) {
        return host::kExitAnsweredBad;
    }
    for (const rapidjson::Value& id : ids["certificates"].GetArray()) {
        host::CRequestBuilder one = options.call.Begin("GetCertInfo2");
        SetStore(options.store, one);
        one.Set("senderCertId", host::QuoteJson(id.IsString() ? id.GetString() : ""));
        host::Put(Line(Parsed(host::AskAsUser(module, one, nullptr, "GetCertInfo2"))));
    }
    host::Flush();
    return host::kExitDone;
}

int Add(const StoreOptions& options) {
    const host::CLoadedModule module(options.call.module);
    host::ExitCode code = host::kExitDone;
    for (const std::string& file : options.files) {
        host::CRequestBuilder builder = options.call.Begin("SetCert2");
        SetStore(options.store, builder);
        const std::string octets = host::ReadFile(file);
        if (!host::AskAsUser(module, builder, &octets, file).IsGood()) {
            code = host::kExitAnsweredBad;
        }
    }
    return code;
}

}  // namespace

namespace host {

void AddStoreCommand(CLI::App& program, int& exitCode) {
    CLI::App* const command = program.add_subcommand("store", "List and fill stores");
    command->require_subcommand(1);
    const auto options = std::make_shared<StoreOptions>();
    CLI::App* const list = command->add_subcommand("list", "List the certificates of a store");
    list->add_option("store", options->store, "MY, Root, CA, AddressBook or another; sslm:NAME")
        ->type_name("STORE");
    options->call.AddTo(*list, /*withPassword=*/false);
    list->footer(kListExamples);
    list->callback([options, &exitCode] { exitCode = List(*options); });

    CLI::App* const add =
        command->add_subcommand("add", "Add certificates, keys and key stores (PKCS #12)");
    add->alias("import");
    add->add_option("files", options->files, "Files, each of which is added whole or not at all")
        ->required()
        ->type_name("FILE");
    add->add_option("--store", options->store, "Where to; sslm:NAME for the machine's")
        ->type_name("STORE");
    options->call.AddTo(*add, /*withPassword=*/true);
    add->footer(kAddExamples);
    add->callback([options, &exitCode] { exitCode = Add(*options); });
}

}  // namespace host
