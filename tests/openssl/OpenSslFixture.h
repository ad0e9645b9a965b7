#pragma once

// The library of the OpenSSL provider over a PKI and stores of its own.

#include "tests/module/ModuleLibrary.h"
#include "tests/module/OpenSslObjects.h"

#include <cstdlib>
#include <filesystem>
#include <string>

class OpenSslTest : public LibraryTest {
  protected:
    static void SetUpTestSuite() {
        s_pki = std::make_unique<TemporaryDir>();
        ASSERT_EQ(0, Run(MOD_FOO_MAKE_PKI " " + s_pki->Path()));
    }
    static void TearDownTestSuite() { s_pki.reset(); }

    OpenSslTest() { Configure(""); }

    /// \param settings  members of the PKI configuration, each with a comma after it.
    void Configure(const std::string& settings) {
        SetPkiConfig("{" + settings + R"("trust":{"useSystemRoots":false},"stores":{"user":")" +
                     Store("") + R"(","machine":")" + m_stores.File("machine") + R"("}})");
        Free();
    }

    /// A file of the PKI.
    static std::string Pki(const std::string& name) {
        return TemporaryDir::Read(s_pki->File(name));
    }
    static std::string PkiPath(const std::string& name) { return s_pki->File(name); }
    /// Directory of one of the user's stores.
    std::string Store(const std::string& name) const { return m_stores.File("user/" + name); }
    std::string Scratch(const std::string& name) const { return m_stores.File(name); }
    void Put(const std::string& name, const std::string& octets) const {
        m_stores.Write(name, octets);
    }
    static std::string Id(const std::string& name) {
        const BioPtr file(BIO_new_file(PkiPath(name).c_str(), "r"));
        const X509Ptr certificate(PEM_read_bio_X509(file.get(), nullptr, nullptr, nullptr));
        return IdOf(DerOf(certificate.get()));
    }
    static int Run(const std::string& command) { return std::system(command.c_str()); }

    static constexpr const char* kPassword = R"(,"extInitParams":"KEY_PASSWORD=secret")";

    Answer Add(const std::string& octets, const std::string& members = "", bool gate = true) {
        return Call(R"({"mode":45,"fileData":")" + Base64(octets) + '"' + members + "}", gate);
    }
    static std::string Address(const std::string& name, const std::string& location = "sscu") {
        return R"(,"storeAddress":{"location":")" + location + R"(","name":")" + name + "\"}";
    }
    /// Identifiers in a store.
    std::string Ids(const std::string& address) {
        const Answer answer = Call(R"({"mode":38)" + address + "}");
        EXPECT_EQ(answer.Code(), 0U);
        std::string ids;
        for (const auto& id : answer.json["certificates"].GetArray()) {
            ids += std::string(id.GetString()) + ' ';
        }
        return ids;
    }

  private:
    static inline std::unique_ptr<TemporaryDir> s_pki;
    TemporaryDir m_stores;
};
