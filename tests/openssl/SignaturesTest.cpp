#include "tests/common/HttpTestServer.h"
#include "tests/openssl/SignaturesFixture.h"

#include <gmock/gmock.h>

#include <chrono>
#include <fstream>
#include <functional>

using testing::HasSubstr;
using testing::Not;

TEST_F(SignaturesTest, OthersAcceptWhatIsSignedHere) {
    struct Case {
        const char* signer;
        const char* members;
    };
    const Case cases[] = {
        {"alice", ""},
        {"alice", R"(,"hashAlg":"SHA-512")"},
        {"alice", R"(,"extInitParams":"RSA_PADDING=PSS")"},
        {"bob", ""},
        {"bob", R"(,"hashAlg":"2.16.840.1.101.3.4.2.2")"},
        {"pss", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.signer) + c.members);
        const std::string attached = Sign(By(c.signer) + c.members);
        EXPECT_TRUE(OpenSslAccepts(attached, "-cades"));
        EXPECT_EQ(TemporaryDir::Read(Scratch("out")), kContent);
        EXPECT_EQ(Verify(attached), "16200/16200 ");
        const std::string apart = Make(27, kContent, By(c.signer) + c.members);
        EXPECT_TRUE(OpenSslAccepts(apart, "-cades -content " + Scratch("content")));
        EXPECT_EQ(VerifyApart(apart, kContent), "16200/16200 ");
        EXPECT_EQ(VerifyApart(apart, kContent + "."), "16109/16200 ");
        EXPECT_EQ(Verify(apart), "16199/16199 ") << "nothing to check";
        const std::string hash = Make(50, kContent, c.members);
        if (hash.size() != 32 || std::string(c.members).find("384") == std::string::npos) {
            const std::string byHash = Make(56, hash, By(c.signer) + c.members);
            EXPECT_TRUE(OpenSslAccepts(byHash, "-cades -content " + Scratch("content")));
        }
    }
    const std::string edwards = Sign(By("ed"));  // OpenSSL's command line has no such messages
    EXPECT_EQ(Verify(edwards), "16200/16200 ");
}

TEST_F(SignaturesTest, AcceptsWhatOthersSign) {
    struct Case {
        const char* signer;
        const char* options;
        const char* verdicts;
    };
    const Case cases[] = {
        {"alice", "-nodetach", "16200/16200 "},
        {"alice", "-nodetach -noattr -keyid", "16200/16200 "},
        {"alice", "-nodetach -nocerts -cades", "16200/16200 "},
        {"alice", "-nodetach -md sha1", "16109/16200 "},
        {"bob", "-nodetach -stream", "16200/16200 "},
        {"bob", "-nodetach -econtent_type 1.2.3 -noattr", "16109/16200 "},
        {"expired", "-nodetach", "16200/16201 "},
        {"encipher", "-nodetach", "16200/16205 "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.signer) + ' ' + c.options);
        EXPECT_EQ(Verify(Theirs(c.signer, c.options)), c.verdicts);
    }
}

TEST_F(SignaturesTest, NoChangedOctetSaysSomethingElse) {
    std::string message = Sign(By("bob") + R"(,"certInclude":1)");
    std::filesystem::remove(Store("MY/bob.crt"));  // the message's own certificate is to count
    const auto said = [this](const std::string& octets) {
        const Answer answer = Ask(15, octets, R"(,"needExtraction":true)");
        if (answer.Code() != 0 || Verdicts(answer) != "16200/16200 ") {
            return std::string();
        }
        const auto& info = answer.json["signInfo"][0];
        return std::string(info["SignCert"]["Id"].GetString()) + info["SignTimeUTC"].GetString() +
               info["HashAlg"].GetString() + answer.json["fileData"].GetString();
    };
    const std::string original = said(message);
    EXPECT_THAT(original, HasSubstr(Base64(kContent)));
    std::size_t harmless = 0;
    for (char& octet : message) {
        octet ^= 1;
        const std::string other = said(message);
        octet ^= 1;
        harmless += other.empty() ? 0 : 1;
        ASSERT_TRUE(other.empty() || other == original) << &octet - message.data() << '\n'
                                                        << other << '\n'
                                                        << original;
    }
    EXPECT_LT(harmless, 20U) << "versions, the list of digests and the like";
}

TEST_F(SignaturesTest, AddsSignatures) {
    const std::string first = Sign(By("alice"));
    const std::string both = Make(28, first, By("bob"));
    EXPECT_EQ(Verify(both), "16200/16200 16200/16200 ");
    EXPECT_TRUE(OpenSslAccepts(both, "-cades"));
    const std::string three = Make(28, both, By("ed") + R"(,"hashAlg":"SHA512")");
    EXPECT_EQ(Verify(three), "16200/16200 16200/16200 16200/16200 ");

    const std::string apart = Make(14, kContent, By("alice"));
    const std::string content = R"(,"sendSignData":")" + Base64(apart) + '"';
    EXPECT_EQ(VerifyApart(Make(28, kContent, content + By("bob")), kContent),
              "16200/16200 16200/16200 ");
    EXPECT_EQ(Ask(28, apart, By("bob")).Code(), 16307U);
    EXPECT_EQ(Ask(28, kContent, By("bob")).Code(), 16308U);
}

TEST_F(SignaturesTest, SignsWithoutAMessage) {
    for (const char* const name : {"alice", "bob", "ed", "pss"}) {
        SCOPED_TRACE(name);
        const std::string signature = Make(51, kContent, By(name));
        const auto verify = [&](const std::string& content) {
            const Answer answer =
                Ask(52, content, By(name) + R"(,"sendSignData":")" + Base64(signature) + '"');
            return answer.json["verifyResult"]["SignatureVerifyResult"].GetUint();
        };
        EXPECT_EQ(verify(kContent), 16200U);
        EXPECT_EQ(verify(kContent + "x"), 16109U);
    }
    const std::string raw = Make(58, Make(50, kContent), By("alice"));
    Put("raw", raw);
    EXPECT_EQ(
        0, Run("openssl x509 -pubkey -noout -in " + PkiPath("alice.crt") + " > " + Scratch("pub") +
               " && openssl dgst -sha256 -verify " + Scratch("pub") + " -signature " +
               Scratch("raw") + ' ' + Scratch("content") + " > " + Scratch("said")));
}

TEST_F(SignaturesTest, RefusesToSign) {
    struct Case {
        std::string members;
        unsigned code;
    };
    const Case cases[] = {
        {"", 16118},  // several could be meant
        {R"(,"senderCertId":"00")", 16104},
        {R"(,"senderCertId":")" + Id("ca.crt") + '"', 16104},
        {By("encipher"), 16205},
        {By("expired"), 16123},
        {By("expired") + R"(,"extInitParams":"CERT_CHECK_EXPIRED=0")", 0},
        {By("bob") + R"(,"hashAlg":"MD5")", 16268},
        {By("bob") + R"(,"hashAlg":"none")", 16303},
        {By("revoked") + R"(,"extInitParams":"CERT_FULL_CHECK=1")", 16203},
    };
    Put("user/CA/ca.crl", Pki("ca.crl"));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.members);
        EXPECT_EQ(Ask(14, kContent, c.members).Code(), c.code);
    }
    EXPECT_STREQ(Ask(14, kContent, R"(,"senderCertId":"00")").json["needCertId"].GetString(), "00");
    std::filesystem::permissions(Store("MY/bob.key"), std::filesystem::perms(0640));
    EXPECT_EQ(Ask(14, kContent, By("bob")).Code(), 16102U);
    Put("user/MY/bob.key", Pki("passworded.key"));
    std::filesystem::permissions(Store("MY/bob.key"), std::filesystem::perms(0600));
    LogRecorder::Take();
    EXPECT_EQ(Ask(14, kContent, By("bob")).Code(), 16402U);
    EXPECT_EQ(Ask(14, kContent, By("bob") + kPassword).Code(), 0U);
    for (const LogLine& line : LogRecorder::Take()) {
        EXPECT_THAT(line.text, Not(testing::HasSubstr(L"secret")));
    }
}

TEST_F(SignaturesTest, JudgesByTimeAndTrust) {
    const std::string message = Sign(By("bob"));
    EXPECT_EQ(Verify(message, R"(,"extInitParams":"VERIFY_TIME=1000000000")"), "16200/16201 ");
    std::filesystem::remove(Store("Root/root.crt"));
    EXPECT_EQ(Verify(message), "16200/16220 ");
    std::filesystem::remove(Store("CA/ca.crt"));
    EXPECT_EQ(Verify(message), "16200/16206 ")
        << "the message brings the root, which proves nothing";
    EXPECT_EQ(Verify(Sign(By("bob"))), "16200/16220 ");
}

// Servers are asked for lists that are missing, once for as long as they are kept, and never on
// behalf of a certificate that is not trusted.
TEST_F(SignaturesTest, FetchesListsThatAreMissing) {
    const auto configure = [this](const std::wstring& url, const char* policy, int cacheTime) {
        Configure(R"("crl":{"sources":[{"url":")" + ca_test::Narrow(url) + R"(","cacheTime":)" +
                  std::to_string(cacheTime) + R"(}]},"policies":{"signing":{"revocation":")" +
                  policy + R"("}},)");
    };
    const std::string byBob = Theirs("bob", "-nodetach -md sha256");
    const std::string byRevoked = Theirs("revoked", "-nodetach -md sha256");
    const ca_test::HttpTestServer server(ca_test::Canned(ca_test::Ok(Pki("ca.crl"))));
    configure(server.Url(), "ifKnown", 3600);
    EXPECT_EQ(Verify(byRevoked), "16200/16203 ");
    EXPECT_EQ(Verify(byBob), "16200/16200 ");
    EXPECT_EQ(server.Requests().size(), 1U);
    configure(server.Url(), "required", 0);
    EXPECT_EQ(Verify(byBob), "16200/16207 ") << "nothing tells of the authority itself";
    Put("user/Root/root.crl", Pki("root.crl"));
    EXPECT_EQ(Verify(byBob), "16200/16200 ");
    EXPECT_EQ(server.Requests().size(), 3U) << "nothing is kept";

    std::filesystem::remove(Store("Root/root.crt"));
    EXPECT_EQ(Verify(byRevoked), "16200/16220 ");
    EXPECT_EQ(server.Requests().size(), 3U);
    Put("user/Root/root.crt", Pki("root.crt"));

    for (const std::string& answer : {Pki("root.crl"), std::string("no list")}) {
        const ca_test::HttpTestServer other(ca_test::Canned(ca_test::Ok(answer)));
        configure(other.Url(), "required", 3600);
        EXPECT_EQ(Verify(byBob), "16200/16207 ");
    }
    configure(ca_test::ClosedPort().Url(), "required", 3600);
    EXPECT_EQ(Verify(byBob), "16200/16207 ");
}

TEST_F(SignaturesTest, KeepsListsInADirectory) {
    const std::string byRevoked = Theirs("revoked", "-nodetach -md sha256");
    const std::string directory = Scratch("kept/lists");
    std::string answer = ca_test::Ok(Pki("ca.crl"));
    const ca_test::HttpTestServer server(
        [&](ca_test::Connection& connection, const ca_test::Request&) {
            connection.Write(answer);
        });
    const auto configure = [&](const std::string& crl) {  // a new module, whose memory is empty
        Configure(R"("crl":{"cacheDirectory":")" + directory + '"' + crl +
                  R"(,"sources":[{"url":")" + ca_test::Narrow(server.Url()) + R"("}]},)");
    };
    configure("");
    EXPECT_EQ(Verify(byRevoked), "16200/16203 ");
    ASSERT_TRUE(std::filesystem::is_directory(directory));
    const std::string file = std::filesystem::directory_iterator(directory)->path();
    const std::string list = TemporaryDir::Read(file);
    answer = "HTTP/1.1 404 Gone\r\n\r\n";
    const auto write = [&](const std::string& octets, int mode = 0600) {
        std::filesystem::remove(file);
        std::ofstream(file) << octets;
        std::filesystem::permissions(file, std::filesystem::perms(mode));
    };
    struct Case {
        const char* what;
        std::function<void()> change;
        const char* verdicts;
        const char* crl = "";
    };
    const auto age = [&](int seconds) {
        std::filesystem::last_write_time(
            file, std::filesystem::file_time_type::clock::now() - std::chrono::seconds(seconds));
    };
    const Case cases[] = {
        {"whole", [] {}, "16200/16203 "},
        {"old", [&] { age(4000); }, "16200/16200 "},
        {"future", [&] { age(-4000); }, "16200/16200 "},
        {"written by others", [&] { write(list, 0622); }, "16200/16200 "},
        {"damaged", [&] { write(list.substr(0, list.size() / 2)); }, "16200/16200 "},
        {"no list", [&] { write("no list"); }, "16200/16200 "},
        {"large", [&] { write(list + std::string(1024, 'x')); }, "16200/16200 ",
         R"(,"maxSize":1024)"},
        {"link",
         [&] {
             Put("elsewhere", list);
             std::filesystem::remove(file);
             std::filesystem::create_symlink(Scratch("elsewhere"), file);
         },
         "16200/16200 "},
        {"whole again", [&] { write(list); }, "16200/16203 "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        c.change();
        configure(c.crl);
        EXPECT_EQ(Verify(byRevoked), c.verdicts);
    }
}
