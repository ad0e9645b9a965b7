#include "common/ConfigFileParser.h"
#include "common/HostRules.h"
#include "common/Json.h"
#include "tests/common/HttpFixture.h"
#include "tests/common/ProxyTestServer.h"

#include <chrono>
#include <cstdlib>

namespace {

using ca::ProxyType;
using ca_test::Canned;
using ca_test::ClosedPort;
using ca_test::Connection;
using ca_test::Endless;
using ca_test::HttpTestServer;
using ca_test::Narrow;
using ca_test::ProxyTestServer;
using ca_test::RedirectTo;
using ca_test::Request;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using Kind = ProxyTestServer::Kind;

class HttpProxyTest : public HttpsTest {
  protected:
    void SetUp() override {
        HttpsTest::SetUp();
        m_settings.proxyAddress = L"127.0.0.1";
    }
    void Use(ProxyType type, std::uint16_t port, const wchar_t* login = L"",
             const wchar_t* password = L"") {
        m_settings.proxyType = type;
        m_settings.proxyPort = port;
        m_settings.proxyLogin = login;
        m_settings.proxyPassword = password;
    }
    // That server under a name that only a proxy can look up.
    static std::wstring NamedUrl(const HttpTestServer& server) {
        std::wstring url = server.Url(L"/x");
        return url.replace(url.find(L"127.0.0.1"), 9, L"host.invalid");
    }
};

TEST_F(HttpProxyTest, GoesThroughEachKindOfProxy) {
    const HttpTestServer plain(Canned(kOk));
    const HttpTestServer secure(Canned(kOk), &m_server);
    const struct {
        const char* name;
        ProxyType type;
        Kind kind;
        bool looksUpNames;
    } cases[] = {
        {"HTTP", ProxyType::kHttp, Kind::kHttp, true},
        {"SOCKS 4", ProxyType::kSocks4, Kind::kSocks, false},
        {"SOCKS 4a", ProxyType::kSocks4a, Kind::kSocks, true},
        {"SOCKS 5", ProxyType::kSocks5, Kind::kSocks, true},
    };
    for (const auto& c : cases) {
        for (const HttpTestServer* const server : {&plain, &secure}) {
            const std::wstring url = c.looksUpNames ? NamedUrl(*server) : server->Url(L"/x");
            SCOPED_TRACE(c.name + (' ' + Narrow(url)));
            const ProxyTestServer proxy(c.kind);
            Use(c.type, proxy.Port());
            EXPECT_EQ("hello", Fetch(url));
            EXPECT_EQ(L"", Send(url, "result"));
            EXPECT_EQ("result", server->Requests().back().body);
            const std::string target = Narrow(url.substr(url.find(L"//") + 2));
            const std::string wanted = target.substr(0, target.find('/'));
            EXPECT_THAT(proxy.Targets(), ElementsAre(wanted, wanted));
            // A tunnel hides the request from the proxy, and the proxy from the server.
            const bool isForwarded = c.type == ProxyType::kHttp && server == &plain;
            EXPECT_THAT(server->Requests().back().head,
                        StartsWith(isForwarded ? "POST " + Narrow(url) + ' ' : "POST /x "));
        }
    }
}

// A proxy looks up names and connects: only what the URL says can be judged.
TEST_F(HttpProxyTest, LetsTheProxyAskAllowedNamesOnly) {
    const HttpTestServer server(Canned(kOk));
    const HttpTestServer astray(Canned(RedirectTo("http://other.invalid/")));
    const ProxyTestServer proxy(Kind::kHttp);
    Use(ProxyType::kHttp, proxy.Port());
    m_settings.hosts = std::make_shared<const ca::HostRules>(
        std::vector<std::wstring>{L"host.invalid", L"10.0.0.0/8", L"!127.0.0.0/8"});
    EXPECT_EQ("hello", Fetch(NamedUrl(server)));
    EXPECT_EQ("error 16268", Fetch(server.Url()));
    EXPECT_EQ("error 16268", Fetch(L"http://other.invalid/")) << "whatever its address";
    EXPECT_EQ("error 16268", Fetch(NamedUrl(astray)));
    EXPECT_EQ(proxy.Targets().size(), 2U);
}

TEST_F(HttpProxyTest, ProvesItselfToTheProxyAlone) {
    const HttpTestServer plain(Canned(kOk));
    const HttpTestServer secure(Canned(kOk), &m_server);
    for (const auto& [type, kind] :
         {std::pair{ProxyType::kHttp, Kind::kHttp}, std::pair{ProxyType::kSocks5, Kind::kSocks}}) {
        const ProxyTestServer proxy(kind, "user:p:geheim");
        for (const HttpTestServer* const server : {&plain, &secure}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(type) << server->Url());
            const std::size_t before = server->Requests().size();
            Use(type, proxy.Port());
            EXPECT_EQ("error 16263", Fetch(NamedUrl(*server)));
            Use(type, proxy.Port(), L"user", L"p:falsch");
            EXPECT_EQ("error 16263", Fetch(NamedUrl(*server)));
            EXPECT_EQ(before, server->Requests().size());
            Use(type, proxy.Port(), L"user", L"p:geheim");
            EXPECT_EQ("hello", Fetch(NamedUrl(*server)));
            ASSERT_EQ(before + 1, server->Requests().size());
            EXPECT_THAT(server->Requests().back().head, Not(HasSubstr("Authorization")));
        }
    }
    for (const wchar_t* secret : {L"user", L"geheim", L"falsch", L"dXNlc"}) {
        EXPECT_THAT(AllLines(), Not(HasSubstr(secret)));
    }
}

TEST_F(HttpProxyTest, TakesAProxyThatFailsForNoConnection) {
    const ClosedPort nobody;
    const HttpTestServer plain(Canned(kOk));
    const HttpTestServer secure(Canned(kOk), &m_server);
    const std::string garbage(3000, '\xFF');
    const HttpTestServer::Handler hangUp = Canned("");
    const HttpTestServer::Handler silent = [](Connection& connection, const Request&) {
        while (!connection.Read().empty()) {
        }
    };
    const struct {
        const char* name;
        ProxyType type;
        HttpTestServer::Handler handler;
        bool isForSecure;
    } cases[] = {
        {"refuses a tunnel", ProxyType::kHttp, Canned("HTTP/1.1 403 No\r\n\r\n"), true},
        {"hangs up", ProxyType::kHttp, hangUp, true},
        {"talks nonsense", ProxyType::kHttp, Canned(garbage), true},
        {"sends an endless header", ProxyType::kHttp,
         Endless("HTTP/1.1 200 OK\r\n", "X: x\r\n", milliseconds(1)), true},
        {"is silent", ProxyType::kHttp, silent, true},
        {"opens a tunnel to no TLS", ProxyType::kHttp, Canned("HTTP/1.1 200 OK\r\n\r\nhello"),
         true},
        {"SOCKS 5 talks nonsense", ProxyType::kSocks5, Canned(garbage), false},
        {"SOCKS 5 takes no method", ProxyType::kSocks5, Canned("\5\xFF"), false},
        {"SOCKS 4 talks nonsense", ProxyType::kSocks4a, Canned(garbage), false},
    };
    m_settings.totalTimeoutMs = 500;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const HttpTestServer proxy(c.handler, nullptr, HttpTestServer::Reading::kHead);
        const HttpTestServer raw(c.handler, nullptr, HttpTestServer::Reading::kNothing);
        Use(c.type, (c.type == ProxyType::kHttp ? proxy : raw).Port());
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ("error 16263", Fetch(NamedUrl(c.isForSecure ? secure : plain)));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    }
    EXPECT_THAT(plain.Requests(), IsEmpty());
    EXPECT_THAT(secure.Requests(), IsEmpty());
}

TEST_F(HttpProxyTest, NeverGoesPastAProxyThatIsNotThere) {
    const ClosedPort nobody;
    const HttpTestServer server(Canned(kOk));
    const std::wstring url = nobody.Url();
    for (const ProxyType type :
         {ProxyType::kHttp, ProxyType::kSocks4, ProxyType::kSocks4a, ProxyType::kSocks5}) {
        const std::size_t colon = url.rfind(L':');
        Use(type, static_cast<std::uint16_t>(std::stoul(url.substr(colon + 1))));
        EXPECT_EQ("error 16263", Fetch(server.Url()));

        // Whom the proxy cannot reach either.
        const ProxyTestServer proxy(type == ProxyType::kHttp ? Kind::kHttp : Kind::kSocks);
        Use(type, proxy.Port());
        std::wstring secureUrl = url;
        EXPECT_EQ("error 16263", Fetch(secureUrl.insert(4, L"s")));
        EXPECT_EQ(1U, proxy.Targets().size());
    }
    EXPECT_THAT(server.Requests(), IsEmpty());
    Use(ProxyType::kHttp, 80);
    m_settings.proxyAddress = L"127.0.0.1\r\n";
    EXPECT_EQ("error 16268", Fetch(server.Url()));
}

TEST_F(HttpTest, TakesProxyAndTimeOutFromTheConfiguration) {
    ca::ConfigFileParser config;
    EXPECT_TRUE(ca::HttpSettings::FromConfig(config).proxyAddress.empty());
    ca::JsonDocument document;
    document.Parse<ca::kJsonParseFlags>(
        R"({"ProxyAddress": "a", "ProxyPort": 65535, "ProxyType": 3, "ProxyLogin": "l",
            "ProxyPassword": "p", "GeneralTimeout": 2147483647})");
    config.FromJson(document);

    const ca::HttpSettings settings = ca::HttpSettings::FromConfig(config);
    EXPECT_EQ(L"a", settings.proxyAddress);
    EXPECT_EQ(65535, settings.proxyPort);
    EXPECT_EQ(ca::ProxyType::kSocks5, settings.proxyType);
    EXPECT_EQ(L"l", settings.proxyLogin);
    EXPECT_EQ(L"p", settings.proxyPassword);
    EXPECT_EQ(2147483647U, settings.totalTimeoutMs);
}

TEST_F(HttpTest, IgnoresTheProxyOfTheEnvironment) {
    const HttpTestServer server(Canned(kOk));
    const ClosedPort port;
    setenv("http_proxy", Narrow(port.Url()).c_str(), 1);
    EXPECT_EQ("hello", Fetch(server.Url()));
    unsetenv("http_proxy");
}

}  // namespace
