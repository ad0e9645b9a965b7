// Requests whose data are fetched and whose results are sent, by servers on loopback.

#include "tests/common/HttpTestServer.h"
#include "tests/module/ModuleLibrary.h"
#include "tests/module/OpenSslObjects.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

using ca_test::Canned;
using ca_test::ClosedPort;
using ca_test::Connection;
using ca_test::Endless;
using ca_test::HttpTestServer;
using ca_test::Identity;
using ca_test::Narrow;
using ca_test::Request;
using std::chrono::milliseconds;
using testing::HasSubstr;

class TransferTest : public LibraryTest {
  protected:
    /// The answer to a request of that mode whose data are fetched.
    Answer Fetch(int mode, const std::wstring& url, const std::string& members = "") {
        return Call("{\"mode\":" + std::to_string(mode) + members + ",\"fileDataUrl\":\"" +
                    Narrow(url) + "\"}");
    }
    /// Signs, the result being sent there.
    Answer SignAndSend(const std::wstring& url, const std::string& members) {
        return Call("{\"mode\":14,\"fileData\":\"SGVsbG8=\",\"uploadUrl\":\"" + Narrow(url) + "\"" +
                    members + "}");
    }
    void ExpectAlive() { EXPECT_EQ(Call(R"({"mode":38})").Code(), 0U); }

    static std::wstring LogText() {
        std::wstring all;
        for (const LogLine& line : LogRecorder::Take()) {
            all += line.text + L'\n';
        }
        return all;
    }
};

constexpr int kSign = 14;
constexpr int kGetCertInfo = 22;
constexpr int kEnumCerts = 38;
constexpr const char* kLastChunk = ",\"streamFinalChunk\":true";

}  // namespace

TEST_F(TransferTest, AnswersFetchedDataAsDataOfTheRequest) {
    const Identity root = ca_test::MakeRoot();
    const std::string der = DerOf(root.certificate.get());
    const struct {
        const char* name;
        int mode;
        std::string payload;
    } cases[] = {
        {"certificate", kGetCertInfo, der},
        {"armoured certificate", kGetCertInfo, root.Pem()},
        {"octets to sign", kSign, std::string("\0\xFF\r\n", 4)},
        {"Base64 to sign", kSign, Base64("content")},
        {"broken Base64 to sign", kSign, "-----BEGIN CMS-----\n!!!!\n-----END CMS-----"},
        {"nothing", kGetCertInfo, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const HttpTestServer server(Canned(ca_test::Ok(c.payload)));
        const std::string mode = "\"mode\":" + std::to_string(c.mode);
        const std::string asText = "\"fileData\":\"" + Base64(c.payload) + '"';
        const Answer base64 = Call("{" + mode + "," + asText + "}");
        const Answer fetched = Fetch(c.mode, server.Url(L"/file?a=1"));
        EXPECT_EQ(base64.text, fetched.text);

        // The raw octets of a request are another way into the same operation, and the first source
        // of data wins.
        const Answer raw = CallRaw(mode, c.payload);
        EXPECT_EQ(raw.Code(), fetched.Code());
        const Answer all = CallRaw(
            mode + R"(,"fileData":"AAAA","fileDataUrl":")" + Narrow(server.Url()) + '"', "raw");
        EXPECT_EQ(fetched.text, all.text);
        EXPECT_EQ(all.raw, "");
        EXPECT_EQ(server.Requests().size(), 2U);
    }
    const HttpTestServer server(Canned(ca_test::Ok(der)));
    EXPECT_EQ(IdOf(der), Fetch(kGetCertInfo, server.Url()).json["certInfo"]["Id"].GetString());
}

TEST_F(TransferTest, AnswersWhyDataCouldNotBeFetched) {
    Init();
    const ClosedPort closed;
    const Identity root = ca_test::MakeRoot();
    const Identity stranger = ca_test::MakeServer(root, "IP:127.0.0.1");
    const HttpTestServer missing(Canned("HTTP/1.1 404 No\r\nContent-Length: 0\r\n\r\n"));
    const HttpTestServer untrusted(Canned(ca_test::Ok("hello")), &stranger);
    const struct {
        const char* name;
        std::wstring url;
        unsigned code;
    } cases[] = {
        {"nobody listens", closed.Url(), 16263},
        {"untrusted server", untrusted.Url(), 16263},
        {"not there", missing.Url(), 16264},
        {"another scheme", L"file:///etc/passwd", 16268},
        {"control character", closed.Url(L"/\\u000d\\u000aX-Injected: 1"), 16268},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Answer answer = Fetch(kEnumCerts, c.url);
        EXPECT_EQ(answer.Code(), c.code);
        EXPECT_EQ(answer.Message().find("ERROR "), 0U) << answer.Message();
        EXPECT_FALSE(answer.json.HasMember("certificates")) << "the operation must not run";
        ExpectAlive();
    }
    EXPECT_EQ(LogText().find(L"passwd"), std::wstring::npos);
}

TEST_F(TransferTest, EndsAFetchInTheTimeThatWasGiven) {
    const HttpTestServer slow(Endless("HTTP/1.1 200 OK\r\n\r\n", "x", milliseconds(20)));
    const struct {
        const char* config;
        const char* members;
        unsigned code;
    } cases[] = {
        {"Language=En\nGeneralTimeout=300\n", "", 16263},
        {"Language=En\n", R"(,"extInitParams":"INET_TIMEOUT=300;")", 16263},
        {"Language=En\nGeneralTimeout=600000\n", R"(,"extInitParams":"A=1;inet_timeout=300")",
         16263},
        {"Language=En\nGeneralTimeout=300\n", R"(,"extInitParams":"INET_TIMEOUT=600000")", 16263},
        {"Language=En\nGeneralTimeout=300\n", R"(,"extInitParams":"INET_TIMEOUT=0")", 16263},
        {"Language=En\n", R"(,"extInitParams":"INET_TIMEOUT=2147483648")", 16268},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.config << c.members);
        SetConfig(c.config);
        Init();
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(Fetch(kEnumCerts, slow.Url(), c.members).Code(), c.code);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
        ExpectAlive();
    }
}

TEST_F(TransferTest, AsksForTheServiceOnlyWhatIsAllowed) {
    const HttpTestServer server(Canned(ca_test::Ok("hello")));
    const std::string url = Narrow(server.Url()) + "\"}";
    const std::string fetch = R"({"mode":38,"fileDataUrl":")" + url;
    const std::string upload =
        R"({"mode":50,"fileData":"AAAA","streamFinalChunk":true,"uploadUrl":")" + url;
    const struct {
        const char* config;
        unsigned fetchCode;
        unsigned uploadCode;
    } cases[] = {
        {"{}", 0, 0},
        {R"({"network":{"fetch":["*","!@internal"]}})", 16268, 0},
        {R"({"network":{"upload":["127.0.0.2"]}})", 0, 16268},
        {R"({"network":{"upload":["*"],"fetch":["127.0.0.1","oops!"]}})", 16268, 16268},
        {"{", 16268, 16268},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.config);
        SetPkiConfig(c.config);
        Init();
        for (const auto& [request, code] :
             {std::pair{fetch, c.fetchCode}, std::pair{upload, c.uploadCode}}) {
            const std::size_t before = server.Requests().size();
            EXPECT_EQ(Call(request, /*interactive=*/false).Code(), code);
            EXPECT_EQ(server.Requests().size(), before + (code == 0 ? 1 : 0));
            EXPECT_EQ(
                LogText().find(L"does not allow the address 127.0.0.1\n") != std::wstring::npos,
                code != 0);
            EXPECT_EQ(Call(request).Code(), 0U) << "the user's own process asks whom it likes";
        }
    }
}

TEST_F(TransferTest, FetchesNoMoreThanIsAllowed) {
    SetPkiConfig(R"({"network":{"maxFetchSize":1024}})");
    const HttpTestServer just(Canned(ca_test::Ok(std::string(1024, 'x'))));
    const HttpTestServer more(Canned("HTTP/1.0 200 OK\r\n\r\n" + std::string(1025, 'x')));
    EXPECT_EQ(Fetch(kEnumCerts, just.Url()).Code(), 0U);
    EXPECT_EQ(Fetch(kEnumCerts, more.Url()).Code(), 16264U);
}

TEST_F(TransferTest, LeavesTheConfiguredProxyToTheConfiguration) {
    const HttpTestServer proxy(Canned(ca_test::Ok("hello")));
    const HttpTestServer other(Canned(ca_test::Ok("hello")));
    SetConfig("Language=En\nProxyAddress=127.0.0.1\nProxyPort=" + std::to_string(proxy.Port()) +
              "\nProxyLogin=user\nProxyPassword=geheim\n");
    Init();
    const std::string port = std::to_string(other.Port());
    EXPECT_EQ(Fetch(kEnumCerts, L"http://host.invalid/",
                    R"(,"extInitParams":"PROXY_ADDRESS=127.0.0.1;PROXY_PORT=)" + port + "\"")
                  .Code(),
              0U);
    EXPECT_EQ(proxy.Requests().size(), 1U);
    EXPECT_TRUE(other.Requests().empty());
    EXPECT_EQ(LogText().find(L"geheim"), std::wstring::npos);
}

TEST_F(TransferTest, SendsTheResultWithTheLastChunk) {
    const HttpTestServer server(Canned(ca_test::Ok("thanks")));
    const Answer kept = SignAndSend(server.Url(), "");
    EXPECT_EQ(SignAndSend(server.Url(), ",\"streamFinalChunk\":false").text, kept.text);
    EXPECT_TRUE(server.Requests().empty()) << "more chunks are to come";

    EXPECT_EQ(SignAndSend(server.Url(L"/result"), kLastChunk).text, kept.text);
    ASSERT_EQ(server.Requests().size(), 1U);
    const Request request = server.Requests().front();
    EXPECT_EQ(request.head.find("POST /result HTTP/1.1\r\n"), 0U);
    EXPECT_EQ(Base64(request.body), kept.json["fileData"].GetString());

    const Answer raw = CallRaw(
        "\"mode\":14" + std::string(kLastChunk) + ",\"uploadUrl\":\"" + Narrow(server.Url()) + '"',
        "octets");
    EXPECT_EQ(server.Requests().back().body, raw.raw);
    EXPECT_EQ(raw.raw.size(), 64U);

    // Nothing is sent without a result, and none of a request that failed.
    const std::string url = kLastChunk + (",\"uploadUrl\":\"" + Narrow(server.Url())) + "\"}";
    EXPECT_EQ(Call("{\"mode\":38" + url).Code(), 0U);
    EXPECT_NE(Call("{\"mode\":22,\"fileData\":\"AAAA\"" + url).Code(), 0U);
    EXPECT_EQ(server.Requests().size(), 2U);
}

TEST_F(TransferTest, ReportsAResultThatCouldNotBeSent) {
    const HttpTestServer refusing(Canned("HTTP/1.1 507 Full\r\nContent-Length: 0\r\n\r\n"));
    const ClosedPort closed;
    const struct {
        std::wstring url;
        const wchar_t* detail;  // in the log; the answer has the code's text
    } cases[] = {
        {refusing.Url(), L"Curl request error: status 507, error code 22\n"},
        {closed.Url(), L"Failed to connect to 127.0.0.1"},
        {L"file:///tmp/x", L"Sending data is not possible\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.url);
        Init();
        LogRecorder::Take();
        const Answer answer = SignAndSend(c.url, kLastChunk);
        EXPECT_EQ(answer.Code(), 16305U);
        EXPECT_EQ(answer.Message(), "ERROR Error occured during upload operation: ");
        EXPECT_THAT(LogText(), HasSubstr(c.detail));
        ExpectAlive();
    }
}

TEST_F(TransferTest, ServesFetchesAndUploadsOfManyThreads) {
    const Identity root = ca_test::MakeRoot();
    const Identity leaf = ca_test::MakeServer(root, "IP:127.0.0.1");
    const TemporaryDir places;
    SetPkiConfig(R"({"trust":{"stores":[")" + places.Write("root.pem", root.Pem()) + "\"]}}");
    Init();
    const HttpTestServer files(Canned(ca_test::Ok(DerOf(leaf.certificate.get()))));
    const HttpTestServer results(Canned(ca_test::Ok("")));
    const std::string get = R"({"mode":22,"fileDataUrl":")" + Narrow(files.Url()) + "\"}";
    const std::string put = R"({"mode":14,"fileDataUrl":")" + Narrow(files.Url()) +
                            R"(","streamFinalChunk":true,"uploadUrl":")" + Narrow(results.Url()) +
                            "\"}";
    const std::string wanted = Call(get).text;
    EXPECT_THAT(wanted, HasSubstr("\"IssuerCert\":"));
    std::vector<std::thread> threads(6);
    for (std::thread& thread : threads) {
        thread = std::thread([&] {
            for (int round = 0; round < 4; ++round) {
                std::string request = get;
                EXPECT_EQ(Answer(Process(request.data(), request.size())).text, wanted);
                request = put;
                EXPECT_EQ(Answer(Process(request.data(), request.size())).Code(), 0U);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(results.Requests().size(), 24U);
}
