// The host tool with the module it belongs to.

#include "tests/common/SampleObjects.h"
#include "tests/host/HostProcess.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using testing::HasSubstr;
using testing::Not;

class CmhostTest : public HostProcessTest {};

struct CommandCase {
    const char* name;
    std::vector<std::string> arguments;
    int exitCode;
    std::vector<std::string> out;
    std::vector<std::string> err;
};

TEST_F(CmhostTest, AnswersEachCommandLine) {
    m_directory.Write("data", "some octets");
    m_directory.Write("request.json", R"({"mode":1,"clientId":"ann","test":true})");
    m_directory.Write("broken.json", R"({"mode":)");
    m_directory.Write("list.json", "[]");
    m_directory.Write("open.ini", "[Service settings]\nAllowServicePrivateKeyAccess=1");
    m_directory.Write("other/open.ini", "");
    m_directory.Write("other/QetCryptoSvcPKIConfig.json", "[]");
    const CommandCase cases[] = {
        {"table", {"modes"}, 0, {"38    EnumCerts          -", "51    SignRaw            yes"}, {}},
        {"names", {"modes", "--names"}, 0, {"\nEnumCerts\n"}, {}},
        {"by name", {"call", "enumcerts"}, 0, {"  \"errorCode\": 0,", "\"FooCertId\""}, {}},
        {"by number", {"call", "38"}, 0, {"\"FooCertId\""}, {}},
        {"unknown number", {"call", "13"}, 1, {"\"errorCode\": 16303", "Method"}, {}},
        {"Russian", {"call", "13", "--language", "ru"}, 1, {"Метод"}, {}},
        {"closed gate", {"call", "Sign"}, 1, {"\"errorCode\": 50,"}, {}},
        {"interactive", {"call", "Sign", "--interactive", "--file", "data"}, 0, {"fileData"}, {}},
        {"configured", {"call", "Sign", "--config", "open.ini"}, 0, {"fileData"}, {}},
        {"configured, in a language",
         {"call", "11", "--config", "open.ini", "--language", "en"},
         0,
         {"\"DONE\""},
         {}},
        {"PKI configuration",
         {"call", "38", "--log", "--config", "open.ini", "--pki-config", "broken.json"},
         0,
         {},
         {"broken.json:"}},
        {"PKI configuration beside the configuration",
         {"call", "38", "--log", "--config", "other/open.ini", "--language", "en"},
         0,
         {},
         {"/other/QetCryptoSvcPKIConfig.json:0 Using default"}},
        {"raw result",
         {"call", "Sign", "--binary", "--file", "data", "--interactive"},
         0,
         {"\"fileDataSize\": 64\n"},
         {"64 octets: ", "-o FILE"}},
        {"log",
         {"call", "EnumCerts", "--log", "--language", "en", "--client", "ann"},
         0,
         {},
         {"log   Module initialized\n", "log   clientId =  ann\n", "log   > EnumCerts\n"}},
        {"not silent", {"call", "38", "--log", "--lang", "ru"}, 0, {}, {"log ! "}},
        {"not silent of what it cannot say", {"call", "38", "--log"}, 0, {}, {"no configuration"}},
        {"from JSON", {"call", "38", "--json", "request.json", "--log"}, 0, {}, {"ann"}},
        {"no command", {}, 2, {}, {"Usage: cmhost"}},
        {"unknown command", {"frobnicate"}, 2, {}, {"\"frobnicate\"\n`cmhost --help`"}},
        {"mistyped command", {"descirbe", "x", "-z"}, 2, {}, {"did you mean describe?\n"}},
        {"operation as command", {"enumcerts"}, 2, {}, {"did you mean cmhost call enumcerts?"}},
        {"file as command", {"data"}, 2, {}, {"did you mean cmhost describe data?"}},
        {"mistyped option", {"view", "--Lanuage=en"}, 2, {}, {"did you mean --language?"}},
        {"option before the command",
         {"--provider", "foo", "describe"},
         2,
         {},
         {"--provider belongs after describe\n"}},
        {"unknown option", {"view", "--zzzz\x1B"}, 2, {}, {"view has no option --zzzz.\n"}},
        {"second file", {"modes", "open.ini"}, 2, {}, {"no further argument \"open.ini\""}},
        {"unknown operation", {"call", "Frobnicate"}, 2, {}, {"`cmhost modes`"}},
        {"mistyped operation", {"call", "EnumCrets"}, 2, {}, {"did you mean EnumCerts?"}},
        {"two inputs", {"call", "14", "--json", "-", "--file", "-"}, 2, {}, {"standard input"}},
        {"two outputs", {"asn1", "--json", "--raw", "-", "data"}, 2, {}, {"standard output"}},
        {"two framings", {"call", "14", "--base64", "--binary"}, 2, {}, {"excludes"}},
        {"framing of nothing", {"call", "14", "--binary"}, 2, {}, {"--file"}},
        {"member without value", {"call", "14", "--set", "comment"}, 2, {}, {"KEY=VALUE"}},
        {"missing file", {"call", "14", "--file", "none"}, 2, {}, {"none: No such file"}},
        {"folder as file", {"call", "14", "--file", "."}, 2, {}, {"Is a directory"}},
        {"broken JSON", {"call", "38", "--json", "broken.json"}, 2, {}, {"is not a request"}},
        {"JSON list", {"call", "38", "--json", "list.json"}, 2, {}, {"not a JSON object"}},
        {"unknown language", {"call", "38", "--language", "de"}, 2, {}, {"--language"}},
        {"missing session", {"run", "none"}, 2, {}, {"none"}},
        {"missing module", {"call", "38", "--module", "none.so"}, 3, {}, {"does not load"}},
        {"no library", {"call", "38", "--module", "data"}, 3, {}, {"does not load"}},
        {"help", {"call", "--help"}, 0, {"Examples:", "--interactive"}, {}},
        {"version", {"--version"}, 0, {"cmhost "}, {}},
    };
    for (const CommandCase& c : cases) {
        SCOPED_TRACE(c.name);
        const HostResult result = Run(c.arguments);
        EXPECT_EQ(c.exitCode, result.exitCode) << result.err;
        for (const std::string& fragment : c.out) {
            EXPECT_THAT(result.out, HasSubstr(fragment));
        }
        for (const std::string& fragment : c.err) {
            EXPECT_THAT(result.err, HasSubstr(fragment));
        }
    }
}

TEST_F(CmhostTest, SilentModuleSaysNothingOfItsConfiguration) {
    for (const char* language : {"ru", "en"}) {
        EXPECT_THAT(Run({"call", "38", "--log", "--silent", "--language", language}).err,
                    Not(testing::ContainsRegex("log ! |configuration")));
    }
}

// The option, else the configuration, else the locale.
TEST_F(CmhostTest, EveryCommandSpeaksOneLanguage) {
    m_directory.Write("c.pem", kSampleCertificate);
    m_directory.Write("oid", "\x06\x03\x55\x04\x03");
    m_directory.Write("en.ini", "[service SETTINGS]\nlanguage=ru\nLanguage = En\n");
    m_directory.Write("ru.ini", "[Service settings]\nLanguage=rU\n");
    m_directory.Write("none.ini", "[Service settings]\nLanguage=\nLogMode=0\n");
    const std::pair<const char*, const char*> texts[] = {
        {"Метод", "Method"},
        {"pem: сертификат", "pem: certificate"},
        {"не провер", "not verified"},
        {"Общее имя", "Common name"},
        {"39    ShowCert           да     показать", "39    ShowCert           yes    show"}};
    const struct {
        const char* locale;
        const char* config;
        const char* option;
        bool russian;
    } cases[] = {
        {"C", "none.ini", "", false},         {"ru_RU.UTF-8", "none.ini", "", true},
        {"ru_RU.UTF-8", "en.ini", "", false}, {"C", "ru.ini", "", true},
        {"C", "en.ini", "--lang RU", true},   {"ru_RU.UTF-8", "ru.ini", "--language en", false},
        {"ru_RU.UTF-8", "missing", "", true}, {"C", "missing", "", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.locale) + " " + c.config + " " + c.option);
        const HostResult result = RunScript(
            std::string("export LC_ALL=") + c.locale + " MOD_FOO_CONFIG=" + c.config +
            "\nfor command in 'call 13' 'describe c.pem' 'asn1 oid' modes\ndo cmhost $command " +
            c.option + "\ndone");
        for (const auto& [russian, english] : texts) {
            EXPECT_THAT(result.out, HasSubstr(c.russian ? russian : english));
        }
    }
    EXPECT_THAT(RunScript("export LC_ALL=ru_RU\ncmhost call 13 --config en.ini").out,
                HasSubstr("Method"));
}

TEST_F(CmhostTest, WritesTheResultToAFileOrTheStandardOutput) {
    m_directory.Write("data", "some octets");
    const std::vector<std::string> base = {"call", "Sign", "--file", "data", "--interactive", "-o"};
    for (const bool isBinary : {false, true}) {
        SCOPED_TRACE(isBinary);
        std::vector<std::string> arguments = base;
        arguments.emplace_back("signature");
        arguments.emplace_back(isBinary ? "--binary" : "--base64");
        EXPECT_EQ(0, Run(arguments).exitCode);
        EXPECT_EQ(64U, TemporaryDir::Read(m_directory.File("signature")).size());

        arguments[base.size()] = "-";
        const HostResult result = Run(arguments);
        EXPECT_EQ(64U, result.out.size());
        EXPECT_THAT(result.err, HasSubstr("\"errorCode\": 0"));
    }
    EXPECT_EQ(
        2, Run({"call", "Sign", "--file", "data", "--interactive", "-o", "/none/at/all"}).exitCode);
}

TEST_F(CmhostTest, SessionKeepsWhatItsRequestsSet) {
    m_directory.Write("data", "some octets");
    const std::string session =
        R"({"@mode":"SetCurStore","clientId":"a","storeAddress":{"location":"sscu","name":"MY"}})"
        "\r\n\n"
        R"({"mode":47,"clientId":"a"})"
        "\n"
        R"({"@mode":"Sign","@file":"data","@form":"binary","@interactive":true,"@output":"sig"})"
        "\n"
        R"({"@mode":"Sign","@file":"none"})"
        "\n"
        R"({"@mode":"Frobnicate"})"
        "\n"
        R"({"@mode":38,"@file":1})"
        "\n"
        R"({"@other":1})"
        "\n"
        R"({"mode":)"
        "\n"
        R"({"mode":38,"comment":"\"@mode"})";  // no line feed at the end
    const HostResult result = Run({"run", "-", "--language", "en"}, session);
    EXPECT_EQ(2, result.exitCode);
    EXPECT_THAT(result.err,
                HasSubstr("cmhost: line 5 of the standard input: cannot open none: No "));
    std::istringstream lines(result.out);
    for (const char* fragment :
         {"\"errorCode\":0,", "\"storeAddresses\":[{\"location\":\"sscu\",\"address\":\"\"",
          "\"fileDataSize\":64}", "{\"hostError\":\"cannot open none", "no operation",
          "@mode takes a string", "unknown directive @other", "\"errorCode\":16300", "FooCertId"}) {
        std::string line;
        ASSERT_TRUE(std::getline(lines, line)) << fragment;
        EXPECT_THAT(line, HasSubstr(fragment));
    }
    EXPECT_EQ(std::istringstream::traits_type::eof(), lines.peek());
    EXPECT_EQ(64U, TemporaryDir::Read(m_directory.File("sig")).size());
    EXPECT_EQ(0, Run({"run", "-"}, "{\"mode\":38}\n").exitCode);
}

TEST_F(CmhostTest, RequestThatStopsTheModuleIsExplained) {
#ifdef MOD_FOO_REPORT_JSON_TYPES
    EXPECT_EQ(1, Run({"call", "38", "--set", "clientId=5"}).exitCode);
#else
    const HostResult result = Run({"call", "38", "--set", "clientId=5", "--log"});
    EXPECT_EQ(5, result.exitCode);
    EXPECT_THAT(result.err, HasSubstr("clientId"));
    EXPECT_THAT(result.err,
                HasSubstr("libmod_foo.so.1 stopped the process (SIGABRT, Aborted): mode "
                          "38 (EnumCerts)"));
#endif
}

}  // namespace
