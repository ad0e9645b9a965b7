#include "common/ConfigFileParser.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "tests/common/RecordJson.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

const std::string kName = "ZORNA/QetCryptoSvcConfig.ini";

class ConfigFileParserTest : public testing::Test {
  protected:
    ConfigFileParserTest() : m_home("HOME", m_directory.Path().c_str()) { SetZORNALng(L"en"); }
    ~ConfigFileParserTest() override { SetZORNALng(L"ru"); }

    // Parses a file of this content; the text goes to m_error.
    bool Parse(const std::string& content) {
        const std::string path = m_directory.Write("test.ini", content);
        return m_config.ParseConfigFile(ca::PathToWString(path), m_error, /*silent=*/false);
    }
    bool ParseSettings(const std::string& lines) { return Parse("[Service settings]\n" + lines); }

    TemporaryDir m_directory;
    ScopedVariable m_home;
    ScopedVariable m_override{"MOD_FOO_CONFIG", nullptr};
    ca::ConfigFileParser m_config;
    std::wstring m_error;
};

TEST_F(ConfigFileParserTest, ReadsNumbersOfTheirRangeOnly) {
    const struct {
        const char* text;
        int port;
    } cases[] = {
        {"0", 0},
        {"65535", 65535},
        {"65536", 8080},
        {"-1", 8080},
        {" \t+81x", 81},
        {"0x50", 0},
        {"", 8080},
        {"x1", 8080},
        {"1e3", 1},
        {"99999999999999999999", 8080},
        {"4294967376", 8080},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_TRUE(ParseSettings(std::string("HttpPort=") + c.text + "\nLogMode=3\n"));
        EXPECT_EQ(m_config.GetHttpPort(), c.port);
        EXPECT_EQ(m_config.GetLogMode(), 3);
        EXPECT_EQ(m_error, L"") << "a wrong value keeps its default silently";
    }
    EXPECT_TRUE(ParseSettings("ProxyPort=0\nCertInclude=3\nTSPTimeout=2147483647\nLogMode=4\n"));
    EXPECT_EQ(m_config.GetProxyPort(), 80);
    EXPECT_EQ(m_config.GetCertInclude(), 2);
    EXPECT_EQ(m_config.GetTSPTimeout(), 2147483647);
    EXPECT_EQ(m_error, L"");
}

TEST_F(ConfigFileParserTest, ReadsFlagsAsNumbers) {
    const struct {
        const char* text;
        bool tray;  // true by default
        bool auth;  // false by default
    } cases[] = {
        {"0", false, false},
        {"5", true, true},
        {"-1", true, false},
        {"true", true, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_TRUE(
            ParseSettings(std::string("showtrayicon=") + c.text + "\nEnableAuth=" + c.text));
        EXPECT_EQ(m_config.GetShowTrayIcon(), c.tray);
        EXPECT_EQ(m_config.GetEnableAuth(), c.auth);
    }
}

TEST_F(ConfigFileParserTest, ReadsTextsAndListsAsUtf8) {
    EXPECT_TRUE(
        Parse("\xEF\xBB\xBF[Service settings]\r\nLogFile= журнал.log \r\nTSPUrl=http://a/?b=c\r\n"
              "[Custom error handlers]\r\nкод=5\r\n\r\n#note\r\nи\xFF\r\n"
              "[Dll extensions]\r\n/a.so\r\n"));
    EXPECT_EQ(m_error, L"");
    EXPECT_EQ(m_config.GetLogFile(), L" журнал.log ");
    EXPECT_EQ(m_config.GetTSPUrl(), L"http://a/?b=c");
    EXPECT_EQ(m_config.GetCustomErrorHandlers(), (std::vector<std::wstring>{L"код=5", L"и\xFFFD"}));
    EXPECT_EQ(m_config.GetDllExtensions(), std::vector<std::wstring>{L"/a.so"});
    EXPECT_TRUE(m_config.GetCustomCDPs().empty());
}

TEST_F(ConfigFileParserTest, ForgetsTheFormerFile) {
    ASSERT_TRUE(ParseSettings("LogMode=2\nAuthUsername=u\n[Custom CDP list]\nx\n"));
    ASSERT_TRUE(ParseSettings("HttpPort=1\n"));
    EXPECT_EQ(m_config.GetLogMode(), 0);
    EXPECT_EQ(m_config.GetAuthUsername(), L"");
    EXPECT_TRUE(m_config.GetCustomCDPs().empty());
}

TEST_F(ConfigFileParserTest, SurvivesAnyContent) {
    std::string binary;
    for (int i = 0; i < 100000; ++i) {
        binary += static_cast<char>(i * 7919 >> 5);
    }
    const std::string defaults = ToJsonText(ca::ConfigFileParser());
    for (const std::string& content :
         {std::string(), std::string("\0\0\0", 3), binary, "[" + std::string(100000, '['),
          std::string(100000, '='), std::string("\xEF\xBB"), std::string("[Other]\nLogMode=3\n")}) {
        EXPECT_TRUE(Parse(content));
        EXPECT_EQ(ToJsonText(m_config), defaults);
        EXPECT_EQ(m_error, L"") << content.size();
    }
    EXPECT_TRUE(ParseSettings(binary + "\nLogMode=3\n" + std::string("TSPUrl=a\0b\n", 11)));
    EXPECT_EQ(m_config.GetLogMode(), 3);
    EXPECT_EQ(m_config.GetTSPUrl(),
              L"a\xFFFD"
              L"b");
}

TEST_F(ConfigFileParserTest, RefusesFilesWithoutAnEnd) {
    EXPECT_FALSE(ParseSettings("LogMode=3\n" + std::string((4U << 20) + 1, '#')));
    EXPECT_TRUE(m_error.starts_with(L"Configuration file is too large: "));
    EXPECT_EQ(m_config.GetLogMode(), 0);
    EXPECT_FALSE(m_config.ParseConfigFile(L"/dev/zero", m_error, /*silent=*/false));
    EXPECT_EQ(m_error, L"Configuration file cannot be read: /dev/zero");
    EXPECT_EQ(m_config.SourcePath(), L"");
}

TEST_F(ConfigFileParserTest, FindsTheUsersFileAndSelectsItsLanguage) {
    const std::string path =
        m_directory.Write(".config/" + kName, "[Service settings]\nLanguage=En\nLogMode=9\n");
    EXPECT_EQ(ca::ConfigFileParser::GetConfigPath(ca::kConfigUser), ca::PathToWString(path));
    EXPECT_EQ(ca::ConfigFileParser::GetConfigPath(ca::kConfigSystem),
              L"/etc/ZORNA/QetCryptoSvcConfig.ini");

    SetZORNALng(L"ru");
    EXPECT_TRUE(m_config.ReadConfig(m_error, /*silent=*/false));
    EXPECT_FALSE(IsRussian());
    EXPECT_EQ(m_error, L"");
    EXPECT_EQ(m_config.SourcePath(), ca::PathToWString(path));
}

TEST_F(ConfigFileParserTest, ReadsTheFileOfTheEnvironmentInstead) {
    m_directory.Write(".config/" + kName, "[Service settings]\nLogMode=1\n");
    const std::string path = m_directory.Write("own.ini", "[Service settings]\nLogMode=2\n");
    {
        const ScopedVariable given("MOD_FOO_CONFIG", path.c_str());
        EXPECT_TRUE(m_config.ReadConfig(m_error, /*silent=*/false));
        EXPECT_EQ(m_config.GetLogMode(), 2);
        EXPECT_TRUE(IsRussian());  // the default language
    }
    const ScopedVariable given("MOD_FOO_CONFIG", m_directory.File("none.ini").c_str());
    EXPECT_FALSE(m_config.ReadConfig(m_error, /*silent=*/true));
    EXPECT_EQ(m_config.GetLogMode(), 0);
    EXPECT_EQ(m_error,
              L"Файл настроек не найден: " + ca::PathToWString(m_directory.File("none.ini")));
}

TEST_F(ConfigFileParserTest, DoesNotPassOverAnUnreadableFile) {
    std::filesystem::create_directories(m_directory.File(".config/" + kName));
    EXPECT_FALSE(m_config.ReadConfig(m_error, /*silent=*/false));
    EXPECT_TRUE(m_error.starts_with(L"Файл настроек не читается: ")) << ca::u16u8(m_error);
}

TEST_F(ConfigFileParserTest, WritesWhatItReadsBack) {
    FromJsonText(m_config,
                 R"({"LogMode":3,"LogFile":" журнал 📜 ","EnableAuth":true,"AuthPassword":"a=b;#",
        "Custom CDP list":["http://a/?x=1","#c=d","[x]y"],"Dll extensions":["/b.so"]})");
    const std::wstring path = ca::PathToWString(m_directory.File("out.ini"));
    ASSERT_TRUE(m_config.WriteConfigFile(path, m_error));

    const std::string text = TemporaryDir::Read(m_directory.File("out.ini"));
    EXPECT_TRUE(
        text.starts_with("###QetCryptoSvc automatically generated config file###\r\n"
                         "[Service settings]\nAllowRemotePrivateKeyAccess=0\n"));
    EXPECT_TRUE(
        text.ends_with("\nUseOnlyCustomCDPs=0\n[Dll extensions]\n/b.so\n[Custom CDP list]\n"
                       "http://a/?x=1\n#c=d\n[x]y\n[Custom error handlers]\n"));
    ca::ConfigFileParser read;
    EXPECT_TRUE(read.ParseConfigFile(path, m_error, /*silent=*/false));
    EXPECT_EQ(m_error, L"");
    EXPECT_EQ(ToJsonText(read), ToJsonText(m_config));
}

TEST_F(ConfigFileParserTest, ReportsAFileThatCannotBeWritten) {
    EXPECT_FALSE(
        m_config.WriteConfigFile(ca::PathToWString(m_directory.File("no/x.ini")), m_error));
    EXPECT_EQ(m_error, L"Failed to open(create) configuration file");
}

TEST_F(ConfigFileParserTest, TakesJsonButLeavesTheLanguage) {
    FromJsonText(m_config, R"({"Language":"Ru","LogMode":2,"TSPUrl":"http://a","unknown":[{}]})");
    EXPECT_FALSE(IsRussian());
    FromJsonText(m_config,
                 R"({"HttpPort":65536,"HttpsPort":-1,"ProxyPort":1e99,"CertInclude":1.5,)"
                 R"("TSPTimeout":2147483648,"TSPUrl":"a\nLogMode=3",)"
                 R"("Custom CDP list":["", " a", "[b] ", "#c", "d\re", "g\u0000", "f"]})");
    EXPECT_EQ(m_config.GetLogMode(), 0) << "an absent key gives the default";
    EXPECT_EQ(m_config.GetHttpPort(), 8080);
    EXPECT_EQ(m_config.GetHttpsPort(), 8081);
    EXPECT_EQ(m_config.GetProxyPort(), 80);
    EXPECT_EQ(m_config.GetCertInclude(), 2);
    EXPECT_EQ(m_config.GetTSPTimeout(), 30000);
    EXPECT_EQ(m_config.GetTSPUrl(), L"");
    EXPECT_EQ(m_config.GetCustomCDPs(), std::vector<std::wstring>{L"f"});
}

TEST_F(ConfigFileParserTest, RefusesWrongJsonTypesWhole) {
    const std::string before = ToJsonText(m_config);
    for (const char* const json :
         {"[]", "null", "5", R"({"LogMode":"1"})", R"({"LogMode":true})", R"({"EnableHttp":1})",
          R"({"LogMode":2,"Language":null})", R"({"LogMode":2,"Dll extensions":"a"})",
          R"({"LogMode":2,"Dll extensions":["a",1]})"}) {
        SCOPED_TRACE(json);
        try {
            FromJsonText(m_config, json);
            ADD_FAILURE() << "taken";
        } catch (const ca::Exception& e) {
            EXPECT_EQ(e.errorCode, ca::kErrJsonParse);
        }
        EXPECT_EQ(ToJsonText(m_config), before);
    }
}

TEST_F(ConfigFileParserTest, SortsOutWrongExtensionPaths) {
    EXPECT_FALSE(m_config.AnyExtensionPathIsWrong());
    const std::string first = m_directory.Write("lib.so", "");
    const std::string second = m_directory.Write("lib.so.1", "");
    const std::string other = m_directory.Write("lib.sox", "");
    std::filesystem::create_directory(m_directory.File("dir.so"));
    ASSERT_TRUE(ParseSettings("[Dll extensions]\n" + other + "\n" + second + "\nlib.so\n" +
                              m_directory.File("dir.so") + "\n/\n" + first + "\n"));
    EXPECT_TRUE(m_config.AnyExtensionPathIsWrong());
    EXPECT_EQ(m_config.FixExtensionPaths(),
              (std::vector<std::wstring>{ca::PathToWString(other), L"lib.so",
                                         ca::PathToWString(m_directory.File("dir.so")), L"/"}));
    EXPECT_FALSE(m_config.AnyExtensionPathIsWrong());
    EXPECT_EQ(m_config.GetDllExtensions(),
              (std::vector<std::wstring>{ca::PathToWString(second), ca::PathToWString(first)}));
}

}  // namespace
