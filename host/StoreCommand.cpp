#include "host/StoreCommand.h"

#include "common/ConfigFileParser.h"
#include "common/Encode.h"
#include "common/Json.h"
#include "common/PKIConfigFileParser.h"
#include "common/StorePaths.h"
#include "host/CallParameters.h"
#include "host/FileIo.h"
#include "host/HostError.h"
#include "host/JsonEvents.h"
#include "host/StandardStreams.h"
#include "host/StoreRemoval.h"
#include "host/Terminal.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <unistd.h>
#include <utility>
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

constexpr const char* kRemoveExamples = R"(Examples:
  cmhost store remove 11ae56e7...                     # asks; the whole id, as list shows it
  cmhost store remove 11ae56e7... --store Root --force

The file of the certificate goes, and that of its key where no other certificate of the store has
the same key. A file that holds other things too is left as it is.)";

struct StoreOptions {
    host::CallParameters call;
    std::string store;
    std::vector<std::string> files;
    std::string id;
    bool isForced = false;
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

// What the module says of each certificate of the store.
std::vector<rapidjson::Document> Certificates(const StoreOptions& options,
                                              const host::CLoadedModule& module) {
    host::CRequestBuilder builder = options.call.Begin("EnumCerts");
    SetStore(options.store, builder);
    const rapidjson::Document ids = Parsed(host::AskAsUser(module, builder, nullptr, "EnumCerts"));
    std::vector<rapidjson::Document> found;
    if (!ids.IsObject() || !ids.HasMember("certificates") || !ids["certificates"].IsArray()) {
        return found;
    }
    for (const rapidjson::Value& id : ids["certificates"].GetArray()) {
        host::CRequestBuilder one = options.call.Begin("GetCertInfo2");
        SetStore(options.store, one);
        one.Set("senderCertId", host::QuoteJson(id.IsString() ? id.GetString() : ""));
        rapidjson::Document info = Parsed(host::AskAsUser(module, one, nullptr, "GetCertInfo2"));
        if (info.IsObject() && info.HasMember("certInfo") && info["certInfo"].IsObject()) {
            found.push_back(std::move(info));
        }
    }
    return found;
}

// The directory of the store, by the configuration that the module reads.
std::string DirectoryOf(const StoreOptions& options) {
    ca::ConfigFileParser service;
    ca::PKIConfigFileParser pki;
    std::wstring fault;
    service.ReadConfig(fault, /*silent=*/true);
    pki.ReadConfig(service, fault, /*silent=*/true);
    const std::string& store = options.store;
    const std::size_t colon = store.find(':');
    const std::string location = colon != std::string::npos ? store.substr(0, colon) : "sscu";
    const std::string name = colon != std::string::npos ? store.substr(colon + 1) : store;
    if (location != "sscu" && location != "sslm") {
        throw host::CHostError(host::kExitUsage, "not a store of this machine: " + store);
    }
    return ca::StoreDirectoryPath(pki.Settings().stores, location == "sslm",
                                  ca::u8u16(name.empty() ? "MY" : name));
}

bool IsConfirmed(const StoreOptions& options, const std::vector<std::string>& files) {
    if (options.isForced) {
        return true;
    }
    if (::isatty(STDIN_FILENO) != 1) {
        throw host::CHostError(host::kExitUsage, "nobody to ask: say --force");
    }
    for (const std::string& file : files) {
        host::Note("removes " + file);
    }
    host::Note("Remove? [y/N]");
    std::string line;
    std::getline(std::cin, line);
    return line == "y" || line == "Y";
}

bool RemoveFiles(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        std::error_code error;
        if (!std::filesystem::remove(file, error)) {
            host::Note("cannot remove " + file + ": " + error.message());
            return false;
        }
        host::Note("removed: " + file);
    }
    return true;
}

// The certificate first: a key that is left over by itself does no harm.
int Remove(const StoreOptions& options) {
    const host::CLoadedModule module(options.call.module);
    std::string key;
    std::size_t sharing = 0;
    const std::vector<rapidjson::Document> all = Certificates(options, module);
    for (const rapidjson::Document& each : all) {
        key =
            Text(each["certInfo"], "Id") == options.id ? Text(each["certInfo"], "PublicKey") : key;
    }
    for (const rapidjson::Document& each : all) {
        sharing += Text(each["certInfo"], "PublicKey") == key ? 1 : 0;
    }
    const host::StoreRemoval plan = host::PlanRemoval(DirectoryOf(options), options.id);
    if (key.empty() || (plan.certificates.empty() && plan.mixed.empty())) {
        host::Note("not in a file of the store: " + options.id);
        return host::kExitAnsweredBad;
    }
    if (!plan.mixed.empty()) {
        host::Note("holds other things too, so it stays: " + plan.mixed);
        return host::kExitAnsweredBad;
    }
    std::vector<std::string> files = plan.certificates;
    if (sharing == 1) {
        files.insert(files.end(), plan.keys.begin(), plan.keys.end());
    }
    return IsConfirmed(options, files) && RemoveFiles(files) ? host::kExitDone
                                                             : host::kExitAnsweredBad;
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

    CLI::App* const remove =
        command->add_subcommand("remove", "Remove a certificate, and the key that is its alone");
    remove->add_option("id", options->id, "Its id, 40 hex digits")->required()->type_name("ID");
    remove->add_option("--store", options->store, "Where from; MY when it is left out")
        ->type_name("STORE");
    remove->add_flag("--force", options->isForced, "Do not ask");
    options->call.AddTo(*remove, /*withPassword=*/false);
    remove->footer(kRemoveExamples);
    remove->callback([options, &exitCode] { exitCode = Remove(*options); });

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
