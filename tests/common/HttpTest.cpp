#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/HostRules.h"
#include "tests/common/HttpFixture.h"

#include <chrono>
#include <csignal>

namespace {

using ca_test::Canned;
using ca_test::ClosedPort;
using ca_test::Connection;
using ca_test::Endless;
using ca_test::HttpTestServer;
using ca_test::Identity;
using ca_test::Narrow;
using ca_test::RedirectTo;
using ca_test::Request;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct AnswerCase {
    const char* name;
    std::string answer;
    std::string result;
};

TEST_F(HttpTest, JudgesEachKindOfAnswer) {
    m_settings.maxBodySize = 1000;
    const std::string gigantic = "HTTP/1.1 200 OK\r\nContent-Length: 9223372036854775807\r\n\r\nx";
    const AnswerCase cases[] = {
        {"counted", kOk, "hello"},
        {"chunked",
         "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nhel\r\n2\r\nlo\r\n0\r\n\r\n",
         "hello"},
        {"until close", "HTTP/1.0 200 OK\r\n\r\nhello", "hello"},
        {"body of exactly the limit", "HTTP/1.0 200 OK\r\n\r\n" + std::string(1000, 'x'),
         std::string(1000, 'x')},
        {"one octet too many", "HTTP/1.0 200 OK\r\n\r\n" + std::string(1001, 'x'), "error 16264"},
        {"announced too many", gigantic, "error 16264"},
        {"not found", "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\ngone", "error 16264"},
        {"server failed", "HTTP/1.1 503 Busy\r\n\r\n", "error 16264"},
        {"redirect without a target", "HTTP/1.1 304 Not Modified\r\n\r\n", "error 16264"},
        {"redirect to itself", RedirectTo("/again"), "error 16264"},
        {"redirect to a file", RedirectTo("file:///etc/passwd"), "error 16264"},
        {"redirect to ftp", RedirectTo("ftp://127.0.0.1/x"), "error 16264"},
        {"not HTTP", "hello there\r\n\r\n", "error 16264"},
        {"fewer octets than announced", "HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\nhello",
         "error 16263"},
        {"chunk of 68 bits",
         "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nFFFFFFFFFFFFFFFFF\r\nhello",
         "error 16263"},
        {"header line without an end", "HTTP/1.1 200 OK\r\nX: " + std::string(3'000'000, 'x'),
         "error 16264"},
        {"compressed, which nobody asked for",
         "HTTP/1.0 200 OK\r\nContent-Encoding: gzip\r\n\r\nhello", "hello"},
        {"cut in the header", "HTTP/1.1 200 OK\r\nContent-Le", "error 16263"},
        {"nothing", "", "error 16263"},
    };
    for (const AnswerCase& c : cases) {
        SCOPED_TRACE(c.name);
        const HttpTestServer server(Canned(c.answer));
        EXPECT_EQ(c.result, Fetch(server.Url()));
    }
}

TEST_F(HttpTest, FollowsARedirectToAnotherServer) {
    const HttpTestServer last(Canned(kOk));
    const HttpTestServer first(Canned(RedirectTo(Narrow(last.Url(L"/there")))));
    std::wstring url = first.Url();
    url.insert(url.find(L"127"), L"name:secret@");

    EXPECT_EQ("hello", Fetch(url));
    EXPECT_THAT(first.Requests().front().head, HasSubstr("Authorization: Basic "));
    EXPECT_THAT(last.Requests().front().head, StartsWith("GET /there HTTP/1.1\r\n"));
    EXPECT_THAT(last.Requests().front().head, Not(HasSubstr("Authorization")));
}

TEST_F(HttpTest, KeepsCredentialsOnlyOnTheSameServer) {
    const HttpTestServer server([](Connection& connection, const Request& request) {
        connection.Write(request.head.starts_with("GET /first") ? RedirectTo("/second") : kOk);
    });
    std::wstring url = server.Url(L"/first");
    EXPECT_EQ("hello", Fetch(url.insert(url.find(L"127"), L"na%40me:secret@")));
    EXPECT_THAT(server.Requests().back().head, HasSubstr("Authorization: Basic bmFAbWU6c2VjcmV0"));
}

// The server of a redirect is checked like the first one, by its name and by the address that is
// connected to.
TEST_F(HttpTest, AsksNoHostThatIsNotAllowed) {
    const HttpTestServer last(Canned(kOk));
    const std::string port = ":" + std::to_string(last.Port()) + "/";
    const std::wstring wide(port.begin(), port.end());
    const HttpTestServer toAddress(Canned(RedirectTo("http://127.0.0.1" + port)));
    const HttpTestServer toName(Canned(RedirectTo("http://localhost" + port)));
    const auto named = [](const HttpTestServer& server) {
        return L"http://localhost:" + std::to_wstring(server.Port()) + L"/";
    };
    const struct {
        std::vector<std::wstring> patterns;
        std::wstring url;
        const wchar_t* forbidden;  // in the log; null: none
    } cases[] = {
        {{L"127.0.0.0/8"}, last.Url(), nullptr},
        {{L"127.0.0.0/8"}, named(last), nullptr},
        {{L"localhost"}, named(toName), nullptr},
        {{L"localhost"}, named(toAddress), L"127.0.0.1"},
        {{L"localhost"}, L"http://[::ffff:127.0.0.1]" + wide, L"::ffff:127.0.0.1"},
        {{L"*", L"!127.0.0.0/8", L"!::1"}, L"http://2130706433" + wide, L"127.0.0.1"},
        {{L"*", L"!127.0.0.0/8", L"!::1"}, named(last), L"localhost ("},
        {{L"127.0.0.1", L"!localhost"}, toName.Url(), L"localhost"},
        {{}, L"http://host.invalid/", L"host.invalid"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.url));
        const std::size_t before = last.Requests().size();
        logLines.clear();
        m_settings.hosts = std::make_shared<const ca::HostRules>(c.patterns);
        EXPECT_EQ(Fetch(c.url), c.forbidden == nullptr ? "hello" : "error 16268");
        EXPECT_EQ(last.Requests().size(), before + (c.forbidden == nullptr ? 1 : 0));
        if (c.forbidden != nullptr) {
            EXPECT_THAT(logLines.back(),
                        StartsWith(L"The configuration does not allow the address " +
                                   std::wstring(c.forbidden)));
        }
    }
}

TEST_F(HttpTest, KeepsALargeBodyWhole) {
    std::string body(5'000'000, '\0');
    for (std::size_t i = 0; i < body.size(); ++i) {
        body[i] = static_cast<char>(i * 2654435761U >> 24);
    }
    const HttpTestServer counted(Canned(
        "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body));
    const HttpTestServer uncounted(Canned("HTTP/1.0 200 OK\r\n\r\n" + body));

    EXPECT_TRUE(Fetch(counted.Url()) == body);
    EXPECT_TRUE(Fetch(uncounted.Url()) == body);
}

TEST_F(HttpTest, EndsInTimeWhateverTheServerDoes) {
    const std::string head = "HTTP/1.1 200 OK\r\n";
    struct {
        const char* name;
        HttpTestServer::Handler handler;
        const char* result;
    } const cases[] = {
        {"endless body", Endless(head + "\r\n", std::string(65536, 'x'), milliseconds(0)),
         "error 16264"},
        {"slow body", Endless(head + "\r\n", "x", milliseconds(20)), "error 16263"},
        {"slow header", Endless(head, "X-Header: x\r\n", milliseconds(20)), "error 16263"},
        {"endless header", Endless(head, "X: " + std::string(60000, 'x') + "\r\n", milliseconds(0)),
         "error 16264"},
        {"endless interim answers", Endless("", "HTTP/1.1 100 Continue\r\n\r\n", milliseconds(1)),
         "error 16263"},
        {"silent", [](Connection& connection, const Request&) { connection.Read(); },
         "error 16263"},
    };
    m_settings.maxBodySize = 1'000'000;
    m_settings.totalTimeoutMs = 300;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const HttpTestServer server(c.handler);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(c.result, Fetch(server.Url()));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    }
}

TEST_F(HttpTest, RefusesUrlsBeforeAnythingIsSent) {
    const HttpTestServer server(Canned(kOk));
    const std::wstring good = server.Url();
    const std::wstring host = good.substr(7);
    const std::wstring urls[] = {
        L"",
        L"127.0.0.1",
        L"file:///etc/passwd",
        L"ftp://" + host,
        L"//" + host,
        L"http:" + host,
        L"http:///path",
        L"http://127.0.0.1:0/",
        L"http://127.0.0.1:65536/",
        L"http://name:secret/x@" + host,
        L" " + good,
        good + L"a b",
        good + L"a\r\nX-Injected: 1",
        good + L'\0',
        good + L'\x85',
        good + L"\\",
        good + wchar_t{0xD800},
        good + static_cast<wchar_t>(0x110000),
        good + std::wstring(8192, L'x'),
    };
    for (const std::wstring& url : urls) {
        logLines.clear();
        EXPECT_EQ("error 16268", Fetch(url)) << testing::PrintToString(url);
        EXPECT_THAT(logLines, ElementsAre(L"Sending data is not possible"));
    }
    EXPECT_TRUE(server.Requests().empty());
}

TEST_F(HttpTest, EncodesWhatAUrlMayNotHold) {
    const HttpTestServer server(Canned(kOk));
    EXPECT_EQ("hello", Fetch(server.Url(L"/\x434|?q=%41%2F\U0001F600#part")));
    EXPECT_THAT(server.Requests().front().head,
                StartsWith("GET /%D0%B4%7C?q=A%2F%F0%9F%98%80 HTTP/1.1\r\n"));
}

TEST_F(HttpTest, LogsEachStepWithoutCredentials) {
    const HttpTestServer good(Canned(kOk));
    const HttpTestServer bad(Canned("HTTP/1.1 403 No\r\n\r\n"));
    const ClosedPort port;
    const std::wstring targets[] = {good.Url(L"/a?token=secret#secret"), bad.Url(L"/b"),
                                    port.Url(L"/c")};
    for (std::wstring url : targets) {
        Fetch(url.insert(url.find(L"127"), L"secret:secret@"));
    }
    EXPECT_THAT(AllLines(), Not(HasSubstr(L"secret")));
    ASSERT_GE(logLines.size(), 6U);
    const std::wstring sending = L"Sending Data ( 0 bytes). Url = ";
    EXPECT_EQ(sending + good.Url(L"/a") + L"?...", logLines[0]);
    EXPECT_EQ(L"Data were sent. Received 5 bytes", logLines[1]);
    EXPECT_EQ(sending + bad.Url(L"/b"), logLines[2]);
    EXPECT_EQ(L"Curl request error: status 403, error code 22", logLines[3]);
    EXPECT_EQ(sending + port.Url(L"/c"), logLines[4]);
    EXPECT_EQ(L"Data were not sent. Curl error 7", logLines[5]);
}

TEST_F(HttpTest, LogsTheProgressOfALongTransferInTheChosenLanguage) {
    const HttpTestServer server(Endless("HTTP/1.1 200 OK\r\n\r\n", "x", milliseconds(20)));
    m_settings.totalTimeoutMs = 400;
    m_settings.progressIntervalMs = 50;
    SetZORNALng(L"ru");
    EXPECT_EQ("error 16263", Fetch(server.Url()));
    EXPECT_THAT(AllLines(), HasSubstr(L"\nДанные отправлены. Получено "));
}

TEST_F(HttpTest, KeepsABrokenPipeFromTheProcess) {
    // Stands for a TLS library that writes to a closed connection; the signal's default would end
    // this process.
    std::vector<std::wstring> customTexts;
    LogInit(
        [](const wchar_t* line, bool isError) {
            KeepLine(line, isError);
            return std::wstring(line).find(L"Received") == std::wstring::npos ||
                   raise(SIGPIPE) == 0;
        },
        customTexts);
    const HttpTestServer server(Endless("HTTP/1.1 200 OK\r\n\r\n", "x", milliseconds(20)));
    m_settings.totalTimeoutMs = 400;
    m_settings.progressIntervalMs = 50;
    EXPECT_EQ("error 16263", Fetch(server.Url()));
    EXPECT_THAT(AllLines(), HasSubstr(L"Received"));
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(0, sigismember(&pending, SIGPIPE));
}

TEST_F(HttpsTest, TalksToATrustedServerOnly) {
    const HttpTestServer trusted(Canned(kOk), &m_server);
    EXPECT_EQ("hello", Fetch(trusted.Url()));

    const Identity otherHost = ca_test::MakeServer(m_root, "DNS:other.example");
    const HttpTestServer wrongName(Canned(kOk), &otherHost);
    EXPECT_EQ("error 16263", Fetch(wrongName.Url()));

    const Identity otherRoot = ca_test::MakeRoot();
    const Identity stranger = ca_test::MakeServer(otherRoot, "IP:127.0.0.1");
    const HttpTestServer untrusted(Canned(kOk), &stranger);
    EXPECT_EQ("error 16263", Fetch(untrusted.Url()));

    m_settings.caFile.clear();
    EXPECT_EQ("error 16263", Fetch(trusted.Url())) << "a throw-away root is not the system's";
    EXPECT_TRUE(wrongName.Requests().empty());
    EXPECT_TRUE(untrusted.Requests().empty());
    EXPECT_EQ(1U, trusted.Requests().size());
}

TEST_F(HttpsTest, LetsNoServerStartALineOfTheLog) {
    const Identity liar = ca_test::MakeServer(m_root, "", "a\r\nlog ! forged");
    const HttpTestServer server(Canned(kOk), &liar);
    EXPECT_EQ("error 16263", Fetch(server.Url()));
    EXPECT_THAT(AllLines(), HasSubstr(L"'a??log ! forged'"));
}

TEST_F(HttpsTest, SurvivesBrokenTls) {
    const HttpTestServer::Handler handlers[] = {
        Canned(kOk),
        Canned(""),
        Canned("\x16\x03\x03\xFF\xFF\x02"),
        [](Connection& connection, const Request&) {  // never answers the greeting
            while (!connection.Read().empty()) {
            }
        },
        Endless("", std::string("\x16\x03\x03\0\1\0", 6), milliseconds(1)),
    };
    m_settings.totalTimeoutMs = 500;
    for (const HttpTestServer::Handler& handler : handlers) {
        const HttpTestServer server(handler, nullptr, HttpTestServer::Reading::kNothing);
        std::wstring url = server.Url();
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ("error 16263", Fetch(url.insert(4, L"s")));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    }
}

TEST_F(HttpsTest, DoesNotFollowARedirectOutOfTls) {
    const HttpTestServer plain(Canned(kOk));
    const HttpTestServer secure(Canned(RedirectTo(Narrow(plain.Url()))), &m_server);
    EXPECT_EQ("error 16264", Fetch(secure.Url()));
    EXPECT_TRUE(plain.Requests().empty());
}

TEST_F(HttpsTest, SurvivesAServerThatHangsUpDuringAnUpload) {
    const std::string body(8'000'000, 'x');
    const HttpTestServer server(Canned(""), &m_server, HttpTestServer::Reading::kHead);
    EXPECT_THAT(Send(server.Url(), body), StartsWith(L"Error occured during upload operation: "));
}

TEST_F(HttpTest, UploadsByPost) {
    const HttpTestServer server(Canned("HTTP/1.1 201 Created\r\nContent-Length: 2\r\n\r\nok"));
    std::string body(3'000'000, 'x');
    body[5] = '\0';
    for (const std::string& text : {body, std::string()}) {
        EXPECT_EQ(L"", Send(server.Url(L"/put"), text));
        const Request request = server.Requests().back();
        EXPECT_TRUE(request.body == text);
        EXPECT_THAT(request.head, StartsWith("POST /put HTTP/1.1\r\n"));
        EXPECT_THAT(request.head, HasSubstr("Content-Type: application/octet-stream\r\n"));
        EXPECT_THAT(request.head, Not(HasSubstr("Expect")));
    }
    EXPECT_EQ(L"Sending Data ( 3000000 bytes). Url = " + server.Url(L"/put"), logLines[0]);
    EXPECT_EQ(L"Data were sent. Received 2 bytes", logLines[1]);
}

TEST_F(HttpTest, UploadsTheBodyAgainAfterARedirect) {
    const HttpTestServer last(Canned(kOk));
    for (const int status : {301, 302, 307, 308}) {
        const HttpTestServer first(Canned(RedirectTo(Narrow(last.Url()), status)));
        EXPECT_EQ(L"", Send(first.Url(), "result"));
        EXPECT_EQ("result", last.Requests().back().body) << status;
    }
    const HttpTestServer elsewhere(Canned(RedirectTo(Narrow(last.Url()), 303)));
    EXPECT_EQ(L"", Send(elsewhere.Url(), "result"));
    EXPECT_THAT(last.Requests().back().head, StartsWith("GET / "));
}

TEST_F(HttpTest, ReportsAFailedUploadWithItsReason) {
    const std::wstring text = ::GetErrorMessage(ca::kErrUpload, /*prefix=*/false);
    const HttpTestServer refusing(Canned("HTTP/1.1 507 Full\r\n\r\n"));
    EXPECT_EQ(text + L"HTTP 507", Send(refusing.Url(), "x"));

    const ClosedPort port;
    EXPECT_THAT(Send(port.Url(), "x"), StartsWith(text + L"Failed to connect"));
    EXPECT_EQ(text + L"no http or https address", Send(L"ftp://127.0.0.1/", "x"));

    const HttpTestServer endless(
        Endless("HTTP/1.1 200 OK\r\n\r\n", std::string(65536, 'x'), milliseconds(0)));
    EXPECT_THAT(Send(endless.Url(), "x"), StartsWith(text));
}

}  // namespace
