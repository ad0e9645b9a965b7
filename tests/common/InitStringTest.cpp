#include "common/ConfigFileParser.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/InitString.h"
#include "common/PKIConfigFileParser.h"
#include "tests/common/EnglishTest.h"
#include "tests/common/RecordJson.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class InitStringTest : public EnglishTest {
  protected:
    // The message of the refusal; empty when there is none.
    template <class Action>
    static std::wstring Refusal(Action action) {
        try {
            action();
        } catch (const ca::Exception& e) {
            EXPECT_EQ(e.errorCode, ca::kErrParameters);
            return e.message;
        }
        return {};
    }
};

TEST_F(InitStringTest, ReadsAndWrites) {
    const struct {
        const wchar_t* text;
        const wchar_t* written;
    } cases[] = {
        {L"", L""},
        {L" ;; ;\r\n", L""},
        {L"A=1", L"A=1;"},
        {L" A = 1 2 ;b.c-d_9= ;", L"A=1 2;b.c-d_9=;"},
        {L"B=1;A=2;b=3;", L"B=1;A=2;b=3;"},
        {L"URL=http://a/?b=c&d=\u044F;", L"URL=http://a/?b=c&d=\u044F;"},
        {L"A=\"x;y\" ;B=\"\"", L"A=\"x;y\";B=;"},
        {L"A=\" x\";B=\"x\";C=\"say \"\"x\"\"\"", L"A=\" x\";B=x;C=\"say \"\"x\"\"\";"},
        {L"A=\"\"\"\";B=\"a\nb\"", L"A=\"\"\"\";B=a\nb;"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.text);
        EXPECT_EQ(ca::InitString(c.text).ToString(), c.written);
        EXPECT_EQ(ca::InitString(c.written).ToString(), c.written);
    }
}

TEST_F(InitStringTest, NamesTheItemItCannotRead) {
    const std::wstring longName(65, L'N');
    const struct {
        std::wstring text;
        const wchar_t* which;
    } cases[] = {
        {L"A=1;B", L"#2"},    {L"PIN=1;23;C=2", L"#2"},  // what is not a name may be secret
        {L"=1", L"#1"},       {L"A=1;;B C=2", L"#2"},    {L"A=\"1", L"A"},
        {L"A=\"1\"\"", L"A"}, {L"A=\"1\"x;", L"A"},      {L"A=1\"2\"", L"A"},
        {L"\u042F=1", L"#1"}, {longName + L"=1", L"#1"}, {std::wstring(L"A\0=1", 4), L"#1"},
        {L"\"A\"=1", L"#1"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.text);
        ca::InitString items(L"KEPT=1");
        EXPECT_EQ(Refusal([&] { items.Append(c.text); }),
                  std::wstring(L"Wrong initialisation parameter: ") + c.which);
        EXPECT_EQ(items.ToString(), L"KEPT=1;");
    }
    EXPECT_EQ(Refusal([] { ca::InitString(std::wstring(65537, L';')); }),
              L"Initialisation parameters are too long");
    EXPECT_EQ(ca::InitString(std::wstring(65536, L';')).Items().size(), 0U);
    EXPECT_NE(Refusal([] { ca::InitString().Add(L"A;", L""); }), L"");
}

TEST_F(InitStringTest, LastItemOfANameWins) {
    ca::InitString items(L"TSP_URL=a;tsp_url=b;");
    items.Append(L"Tsp_Url=c");
    EXPECT_EQ(items.GetText(L"TSP_URL"), L"c");
    EXPECT_EQ(items.GetText(L"none", L"x"), L"x");
    EXPECT_EQ(items.Find(L"TSP_UR"), nullptr);
    EXPECT_EQ(items.Items().size(), 3U);
    items.Set(L"TSP_URL", L"d");
    items.Set(L"NEW", L"e");
    EXPECT_EQ(items.ToString(), L"TSP_URL=a;tsp_url=b;Tsp_Url=d;NEW=e;");
}

TEST_F(InitStringTest, ReadsNumbersOfTheirRange) {
    const struct {
        const wchar_t* text;
        bool right;
    } cases[] = {
        {L"10", true},
        {L"0010", true},
        {L"99", true},
        {L"9", false},
        {L"100", false},
        {L"", false},
        {L"+10", false},
        {L"-1", false},
        {L"1 0", false},
        {L"0x10", false},
        {L"18446744073709551626", false},  // 2^64 + 10
        {L"\u0661\u0660", false},          // digits, but not ASCII
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.text);
        ca::InitString items;
        items.Add(L"N", c.text);
        EXPECT_EQ(Refusal([&] { items.GetUnsigned(L"n", 10, 99, 50); }),
                  c.right ? L"" : L"Wrong initialisation parameter: n");
    }
    EXPECT_EQ(ca::InitString().GetUnsigned(L"N", 10, 99, 5), 5U);
    ca::InitString largest;
    largest.AddUnsigned(L"N", UINT64_MAX);
    EXPECT_EQ(largest.GetUnsigned(L"N", 0, UINT64_MAX, 0), UINT64_MAX);
}

TEST_F(InitStringTest, HidesSecretsInTheLog) {
    const ca::InitString items(L"PROXY_PASSWORD=geheim;pin=\"12;34\";PINS=1;A=\"x\ny\";");
    EXPECT_EQ(items.ToLogString(), L"PROXY_PASSWORD=***;pin=***;PINS=1;A=x?y;");
}

TEST_F(InitStringTest, StartsFromTheConfiguration) {
    ca::ConfigFileParser config;
    EXPECT_EQ(ca::BuildBaseInitString(config, {}),
              L"INET_TIMEOUT=30000;TSP_INET_TIMEOUT=30000;OCSP_INET_TIMEOUT=30000;OCSP_CHECK=0;"
              L"CRL_INET_TIMEOUT=30000;CRL_FORCE_DOWNLOAD=0;CRL_CUSTOM_ONLY=0;"
              L"CRL_IGNORE_UNKNOWN=0;CERT_INCLUDE=2;CERT_CHECK_EXPIRED=1;CERT_FULL_CHECK=0;");

    FromJsonText(config, R"({"TSPTimeout":2147483647,"TSPUrl":"http://a/;b","CheckOCSP":true,
        "ProxyAddress":"p","ProxyPassword":"\";INET_TIMEOUT=1;"})");
    ca::InitString items(ca::BuildBaseInitString(config, {}) + L"tsp_inet_timeout=5");
    EXPECT_EQ(items.GetText(L"INET_TIMEOUT"), L"30000");
    EXPECT_EQ(items.GetText(L"TSP_INET_TIMEOUT"), L"5");
    EXPECT_EQ(items.GetText(L"TSP_URL"), L"http://a/;b");
    EXPECT_EQ(items.GetText(L"OCSP_CHECK"), L"1");
    EXPECT_EQ(items.GetText(L"PROXY_PORT"), L"80");
    EXPECT_EQ(items.GetText(L"PROXY_PASSWORD"), L"\";INET_TIMEOUT=1;");
    EXPECT_EQ(items.Find(L"PROXY_LOGIN"), nullptr);
}

TEST_F(InitStringTest, TakesWhatAPkiFileSaysInPlaceOfTheConfiguration) {
    ca::ConfigFileParser config;
    FromJsonText(config, R"({"TSPTimeout":1,"OCSPTimeout":2,"CRLTimeout":0,"CheckOCSP":true,
        "UseOnlyCustomCDPs":true,"TSPUrl":"old","CheckSignCertExpired":false})");
    const std::wstring without = ca::BuildBaseInitString(config, {});
    const TemporaryDir directory;
    const auto build = [&](const char* file) {
        const ScopedVariable path("MOD_FOO_PKI_CONFIG", directory.Write("p.json", file).c_str());
        ca::PKIConfigFileParser pki;
        std::wstring error;
        pki.ReadConfig(config, error, /*silent=*/false);
        return ca::BuildBaseInitString(config, pki);
    };
    // What the file does not say is the service configuration's.
    EXPECT_EQ(build("{}"),
              L"INET_TIMEOUT=30000;TSP_INET_TIMEOUT=1;TSP_URL=old;OCSP_INET_TIMEOUT=2;"
              L"OCSP_CHECK=1;CRL_INET_TIMEOUT=0;CRL_FORCE_DOWNLOAD=0;"
              L"CRL_CUSTOM_ONLY=1;CRL_IGNORE_UNKNOWN=0;CERT_INCLUDE=2;"
              L"CERT_CHECK_EXPIRED=0;CERT_FULL_CHECK=0;OCSP_NONCE=1;"
              L"OCSP_CACHE_TIME=300;CRL_CHECK=1;CRL_CACHE_TIME=3600;"
              L"CRL_MAX_SIZE=67108864;");
    EXPECT_EQ(build(R"({"crl": {"enabled": false, "useCertificatePoints": true, "timeout": 7,
                                "maxSize": 9999, "cacheTime": 0, "sources": [
                                {"url": "http://c/1", "issuer": "CN=x"}, {"url": "http://c/2;"}]},
                        "ocsp": {"enabled": false, "nonce": false, "timeout": 8, "cacheTime": 5,
                                 "responders": [{"url": "http://o/", "issuer": "CN=x"}]},
                        "policies": {"signing": {"checkTime": true}},
                        "tsp": {"servers": [{"url": "http://t/", "timeout": 9, "policy": "1.2",
                                             "requestCertificate": false}, {"url": "http://u/"}]}})"),
              L"INET_TIMEOUT=30000;TSP_INET_TIMEOUT=9;TSP_URL=http://t/;OCSP_INET_TIMEOUT=8;"
              L"OCSP_CHECK=0;CRL_INET_TIMEOUT=7;CRL_FORCE_DOWNLOAD=0;CRL_CUSTOM_ONLY=0;"
              L"CRL_IGNORE_UNKNOWN=0;CERT_INCLUDE=2;CERT_CHECK_EXPIRED=1;CERT_FULL_CHECK=0;"
              L"OCSP_NONCE=0;OCSP_CACHE_TIME=5;CRL_CHECK=0;CRL_URL=\"http://c/2;\";"
              L"CRL_CACHE_TIME=0;CRL_MAX_SIZE=9999;TSP_POLICY=1.2;TSP_CERT_REQ=0;");
    EXPECT_EQ(build("{"), without);
}

}  // namespace
