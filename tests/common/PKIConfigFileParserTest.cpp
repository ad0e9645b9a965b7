#include "common/ConfigFileParser.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/PKIConfigFileParser.h"
#include "tests/common/EnglishTest.h"
#include "tests/common/RecordJson.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class PKIConfigFileParserTest : public EnglishTest {
  protected:
    bool Parse(const std::string& content, bool silent = false) {
        m_path = ca::PathToWString(m_directory.Write("pki.json", content));
        return m_config.ParseConfigFile(m_path, m_error, silent);
    }
    const ca::PkiSettings& Settings() const { return m_config.Settings(); }

    TemporaryDir m_directory;
    std::wstring m_path;
    ca::PKIConfigFileParser m_config;
    std::wstring m_error;
    const std::string m_defaults = ToJsonText(ca::PKIConfigFileParser());
};

TEST_F(PKIConfigFileParserTest, HonoursWhatIsRightAndNamesWhatIsNot) {
    EXPECT_TRUE(
        Parse("\xEF\xBB\xBF"
              R"({
        "trust": {"stores": ["/a", "b", 5, "/c\n", "/d"], "maxPathLength": 65, "useSystemRoots": 0},
        "crl": {"maxSize": 1e99, "cacheTime": 0, "sources": {}},
        "ocsp": [],
        "tsp": {"servers": [
            {"url": "http://a/", "timeout": 600000, "policy": "1.2.3"},
            "http://b/",
            {"url": "https://c/", "timeout": 0, "digest": "2.16.840.1"},
            {"timeout": 5},
            {"url": "ftp://d/"}]},
        "algorithms": {"digests": [], "minRsaBits": 4096.5},
        "policies": {"signing": {"revocation": "Required", "keyUsage": ["cRLSign", "x"]},
                     "server": {"revocation": "none"}},
        "later": null})"));
    EXPECT_EQ(m_error,
              L"Wrong values, their defaults are used: trust.useSystemRoots, trust.stores[1], "
              L"trust.stores[2], trust.stores[3], trust.maxPathLength, crl.maxSize, crl.sources, "
              L"ocsp, tsp.servers[1], tsp.servers[2].timeout, tsp.servers[3].url, "
              L"tsp.servers[4].url, algorithms.minRsaBits, policies.signing.revocation, "
              L"policies.signing.keyUsage[1]");
    EXPECT_EQ(Settings().trust.stores, (std::vector<std::wstring>{L"/a", L"/d"}));
    EXPECT_TRUE(Settings().trust.useSystemRoots);
    EXPECT_EQ(Settings().trust.maxPathLength, 10);
    EXPECT_EQ(Settings().crl.cacheTime, 0);
    EXPECT_EQ(Settings().crl.maxSize, 67108864);
    ASSERT_EQ(Settings().tsp.servers.size(), 2U);
    EXPECT_EQ(Settings().tsp.servers[0].timeout, 600000);
    EXPECT_EQ(Settings().tsp.servers[0].policy, L"1.2.3");
    EXPECT_EQ(Settings().tsp.servers[1].timeout, 30000);
    EXPECT_TRUE(Settings().algorithms.digests.empty());
    EXPECT_EQ(Settings().algorithms.minRsaBits, 2048);
    EXPECT_EQ(Settings().policies.signing.revocation, ca::RevocationCheck::kIfKnown);
    EXPECT_EQ(Settings().policies.signing.keyUsage, std::vector<std::wstring>{L"cRLSign"});
    EXPECT_EQ(Settings().policies.server.revocation, ca::RevocationCheck::kNone);
    EXPECT_EQ(Settings().policies.timeStamping.revocation, ca::RevocationCheck::kRequired);
    EXPECT_EQ(Settings().policies.server.extendedKeyUsage,
              std::vector<std::wstring>{L"1.3.6.1.5.5.7.3.1"});
}

TEST_F(PKIConfigFileParserTest, GivesDefaultsAndOneWarningForBrokenFiles) {
    const struct {
        std::string content;
        const wchar_t* offset;
    } cases[] = {
        {"", L"0"},
        {"[]", L"0"},
        {"{\"tsp\":{}", L"9"},
        {"{} x", L"3"},
        {std::string("{\"crl\":{\"enabled\":false}}\0x", 27), L"25"},
        {"\x7F\x45LF\xFF\xFE", L"0"},
        {std::string(1000000, '['), L"1000000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.content.substr(0, 30));
        EXPECT_FALSE(Parse(c.content));
        EXPECT_EQ(m_error, L"PKI configuration file is not a JSON object, position: " + m_path +
                               L":" + c.offset);
        EXPECT_EQ(ToJsonText(m_config), m_defaults);
    }
    EXPECT_FALSE(m_config.ParseConfigFile(L"/dev/zero", m_error, /*silent=*/false));
    EXPECT_EQ(m_error, L"Configuration file cannot be read: /dev/zero");
    EXPECT_FALSE(Parse(std::string((4U << 20) + 1, ' ')));
    EXPECT_TRUE(m_error.starts_with(L"Configuration file is too large: "));
}

// A typing error must not open what the list was to close.
TEST_F(PKIConfigFileParserTest, AllowsNoHostWhenSomethingIsWrongAboutIt) {
    const struct {
        const char* network;
        std::size_t fetch;
        std::size_t upload;
    } cases[] = {
        {R"({})", 1, 1},
        {R"({"fetch":["*","!@internal"],"maxFetchSize":5000})", 2, 1},
        {R"({"fetch":["*","!10.0.0/8"]})", 0, 0},
        {R"({"fetch":["*"],"upload":"example.org"})", 0, 0},
        {R"({"maxFetchSize":0})", 0, 0},
        {R"([])", 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.network);
        EXPECT_TRUE(Parse(std::string(R"({"crl":7,"network":)") + c.network + "}"));
        EXPECT_EQ(Settings().network.fetch.size(), c.fetch);
        EXPECT_EQ(Settings().network.upload.size(), c.upload);
        EXPECT_EQ(m_error.find(L"network") != std::wstring::npos, c.upload == 0);
    }
}

TEST_F(PKIConfigFileParserTest, SurvivesDeepAndEndlessValues) {
    const std::string open(200000, '[');
    EXPECT_TRUE(Parse("{\"tsp\":{\"servers\":" + open + std::string(200000, ']') + "}}"));
    EXPECT_EQ(m_error, L"Wrong values, their defaults are used: tsp.servers[0]");
    std::string many = "{\"trust\":{\"stores\":[0";
    for (int i = 1; i < 300; ++i) {
        many += ",0";
        if (i == 19) {
            EXPECT_TRUE(Parse(many + "]}}"));
            EXPECT_TRUE(m_error.ends_with(L"trust.stores[15], ..."));
        }
    }
    EXPECT_TRUE(Parse(many + "]}}"));
    EXPECT_EQ(m_error, L"Wrong values, their defaults are used: trust.stores");
    EXPECT_TRUE(Parse(many + "]}}", /*silent=*/true));
    EXPECT_EQ(m_error, L"");
}

TEST_F(PKIConfigFileParserTest, NeedsNoFile) {
    EXPECT_TRUE(m_config.ParseConfigFile(L"/none/pki.json", m_error, /*silent=*/false));
    EXPECT_EQ(m_error, L"");
    EXPECT_EQ(ToJsonText(m_config), m_defaults);
}

TEST_F(PKIConfigFileParserTest, RefusesARecordWholeAndNamesTheKey) {
    const struct {
        const char* json;
        unsigned code;
        const wchar_t* key;
    } cases[] = {
        {"[]", ca::kErrJsonParse, L"PKIConfig"},
        {R"({"crl":{"enabled":false},"tsp":7})", ca::kErrJsonParse, L"tsp"},
        {R"({"ocsp":{"nonce":"yes"}})", ca::kErrJsonParse, L"ocsp.nonce"},
        {R"({"tsp":{"servers":[{"url":"http://a"},{"url":"http://b","timeout":"5"}]}})",
         ca::kErrJsonParse, L"tsp.servers[1].timeout"},
        {R"({"tsp":{"servers":[{"url":"http://a","timeout":99999999999}]}})", ca::kErrParameters,
         L"tsp.servers[0].timeout"},
        {R"({"crl":{"sources":[{}]}})", ca::kErrParameters, L"crl.sources[0].url"},
        {R"({"policies":{"server":{"revocation":"\u0000none"}}})", ca::kErrParameters,
         L"policies.server.revocation"},
        {R"({"trust":{"stores":["/a\u0000b"]}})", ca::kErrParameters, L"trust.stores[0]"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        try {
            FromJsonText(m_config, c.json);
            ADD_FAILURE() << "taken";
        } catch (const ca::Exception& e) {
            EXPECT_EQ(e.errorCode, c.code);
            EXPECT_TRUE(e.message.ends_with(L": " + std::wstring(c.key))) << ca::u16u8(e.message);
        }
        EXPECT_EQ(ToJsonText(m_config), m_defaults);
    }
}

TEST_F(PKIConfigFileParserTest, JudgesObjectIdentifiers) {
    const struct {
        const char* text;
        bool right;
    } cases[] = {
        {"0.0", true},   {"1.39.0", true}, {"2.999.18446744073709551616", true},
        {"1.40", false}, {"3.1", false},   {"1", false},
        {"1.", false},   {".1.2", false},  {"1..2", false},
        {"1.02", false}, {"1.2.a", false}, {"00.1", false},
        {"", false},     {"1.2 ", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        ASSERT_TRUE(Parse(std::string(R"({"algorithms":{"digests":[")") + c.text + "\"]}}"));
        EXPECT_EQ(Settings().algorithms.digests.size(), c.right ? 1U : 0U);
    }
}

TEST_F(PKIConfigFileParserTest, ReadsBackWhatItWrites) {
    FromJsonText(m_config, R"({"trust":{"stores":["/корни"]},"policies":{"server":{
        "revocation":"none"}},"crl":{"sources":[{"url":"http://a/x.crl","issuer":"CN=\"Я\""}]}})");
    const std::string path = m_directory.File("out.json");
    ASSERT_TRUE(m_config.WriteConfigFile(ca::PathToWString(path), m_error));
    EXPECT_TRUE(TemporaryDir::Read(path).starts_with("{\n    \"trust\": {\n"));
    ca::PKIConfigFileParser read;
    EXPECT_TRUE(read.ParseConfigFile(ca::PathToWString(path), m_error, /*silent=*/false));
    EXPECT_EQ(m_error, L"");
    EXPECT_EQ(ToJsonText(read), ToJsonText(m_config));
    EXPECT_NE(ToJsonText(read), m_defaults);

    FromJsonText(read, R"({"crl":{"sources":[]}})");
    EXPECT_EQ(ToJsonText(read), m_defaults) << "absent keys give the defaults";
}

TEST_F(PKIConfigFileParserTest, StandsBesideTheServiceConfiguration) {
    const std::string name = "QetCryptoSvcPKIConfig.json";
    const auto write = [this](const std::string& file, const char* maxPathLength) {
        m_directory.Write(file,
                          std::string(R"({"trust":{"maxPathLength":)") + maxPathLength + "}}");
    };
    write("read/" + name, "1");
    write("home/.config/ZORNA/" + name, "2");
    write("other.json", "3");
    const std::string serviceFile = m_directory.Write("read/QetCryptoSvcConfig.ini", "");
    const ScopedVariable home("HOME", m_directory.File("home").c_str());
    const ScopedVariable noOther("MOD_FOO_PKI_CONFIG", nullptr);
    const ScopedVariable noService("MOD_FOO_CONFIG", nullptr);
    ca::ConfigFileParser service;
    const auto found = [&] {
        EXPECT_TRUE(m_config.ReadConfig(service, m_error, /*silent=*/false));
        EXPECT_EQ(m_error, L"");
        return Settings().trust.maxPathLength;
    };
    EXPECT_EQ(found(), 2) << "no service configuration";
    service.ParseConfigFile(ca::PathToWString(serviceFile), m_error, /*silent=*/true);
    EXPECT_EQ(found(), 1);
    EXPECT_EQ(m_config.SourcePath(), ca::PathToWString(m_directory.File("read/" + name)));
    {
        const ScopedVariable other("MOD_FOO_PKI_CONFIG", m_directory.File("other.json").c_str());
        EXPECT_EQ(found(), 3);
    }
    std::filesystem::remove(m_directory.File("read/" + name));
    EXPECT_EQ(found(), 10) << "not the one of another configuration";
    EXPECT_EQ(m_config.SourcePath(), L"");
    const ScopedVariable missing("MOD_FOO_PKI_CONFIG", m_directory.File("none").c_str());
    EXPECT_FALSE(m_config.ReadConfig(service, m_error, /*silent=*/false));
    EXPECT_TRUE(m_error.starts_with(L"No configuration file: ")) << ca::u16u8(m_error);
}

}  // namespace
