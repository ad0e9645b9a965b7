#pragma once

#include "tests/openssl/OpenSslFixture.h"

#include <string>

inline const std::string kContent = "Dear Ann,\nthe draft is done.\n";

/// With users' keys, the roots and the authority in their stores.
class SignaturesTest : public OpenSslTest {
  protected:
    SignaturesTest() {
        for (const char* name :
             {"alice", "bob", "pss", "ed", "revoked", "encipher", "expired", "self"}) {
            Put(std::string("user/MY/") + name + ".crt", Pki(std::string(name) + ".crt"));
            Put(std::string("user/MY/") + name + ".key", Pki(std::string(name) + ".key"));
            std::filesystem::permissions(Store(std::string("MY/") + name + ".key"),
                                         std::filesystem::perms(0600));
        }
        Put("user/Root/root.crt", Pki("root.crt"));
        Put("user/CA/ca.crt", Pki("ca.crt"));
        Put("content", kContent);
    }

    static std::string By(const std::string& name) {
        return R"(,"senderCertId":")" + Id(name + ".crt") + '"';
    }
    /// The octets of an answer's file data.
    Answer Ask(int mode, const std::string& octets, const std::string& members = "") {
        return Call(R"({"mode":)" + std::to_string(mode) + R"(,"fileData":")" + Base64(octets) +
                    '"' + members + "}");
    }
    std::string Make(int mode, const std::string& octets, const std::string& members = "") {
        const Answer answer = CallRaw(R"("mode":)" + std::to_string(mode) + members, octets);
        EXPECT_EQ(answer.Code(), 0U) << answer.text;
        return answer.raw;
    }
    std::string Sign(const std::string& members) {
        return Make(14, kContent, R"(,"isAttached":true)" + members);
    }
    /// "signature/certificate" of each signature.
    static std::string Verdicts(const Answer& answer) {
        std::string text;
        for (const auto& each : answer.json["signInfo"].GetArray()) {
            const auto& codes = each["VerifyResultEx"];
            text += std::to_string(codes["SignatureVerifyResult"].GetUint()) + '/' +
                    std::to_string(codes["CertificateVerifyResult"].GetUint()) + ' ';
        }
        return text;
    }
    std::string Verify(const std::string& message, const std::string& members = "") {
        return Verdicts(Ask(15, message, members));
    }
    /// Of a message apart from its content.
    std::string VerifyApart(const std::string& signature, const std::string& content) {
        return Verdicts(Ask(15, content, R"(,"sendSignData":")" + Base64(signature) + '"'));
    }
    /// A message that OpenSSL's command line made.
    std::string Theirs(const std::string& name, const std::string& options) {
        EXPECT_EQ(0, Run("openssl cms -sign -binary -outform DER -in " + Scratch("content") +
                         " -out " + Scratch("theirs") + " -signer " + PkiPath(name + ".crt") +
                         " -inkey " + PkiPath(name + ".key") + ' ' + options));
        return TemporaryDir::Read(Scratch("theirs"));
    }
    bool OpenSslAccepts(const std::string& message, const std::string& options) {
        Put("message", message);
        return Run("openssl cms -verify -binary -purpose any -inform DER -in " +
                   Scratch("message") + " -CAfile " + PkiPath("root.crt") + " -out " +
                   Scratch("out") + ' ' + options + " 2> " + Scratch("error")) == 0;
    }
};
