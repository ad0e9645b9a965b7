// The host tool with providers that answer as they like.

#include "tests/host/HostProcess.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using testing::HasSubstr;
using testing::Not;

class ProviderTest : public HostProcessTest {
  protected:
    HostResult Call(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "call");
        arguments.insert(arguments.end(), {"--module", MOD_FOO_FAKE_MODULE});
        return Run(arguments);
    }
    // What arrives at a provider.
    std::string Received(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"-o", "received"});
        EXPECT_EQ(0, Call(arguments).exitCode);
        return TemporaryDir::Read(m_directory.File("received"));
    }
};

TEST_F(ProviderTest, ImproperAnswersAreTold) {
    const struct {
        const char* name;
        const char* mode;
        const char* fault;
    } cases[] = {
        {"none", "1", "gave no answer"},
        {"not JSON", "2", "not valid JSON"},
        {"no code", "3", "no \"errorCode\""},
        {"size of another buffer", "4", "announces 1073741824 octets in a buffer of"},
        {"octets not there", "5", "3 octets after its text"},
        {"code beyond 32 bits", "8", "no \"errorCode\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const HostResult result = Call({c.mode});
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.err, HasSubstr(c.fault));
        EXPECT_THAT(result.out, Not(HasSubstr("\x1B")));
    }
}

TEST_F(ProviderTest, DeepAnswerIsPrintedInProportionToItsSize) {
    const HostResult result = Call({"6"});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_GT(result.out.size(), 600000U);
    EXPECT_LT(result.out.size(), 2000000U);
}

TEST_F(ProviderTest, LogLinesCannotSteerTheTerminal) {
    const HostResult result = Call({"8", "--log"});
    EXPECT_THAT(result.err, HasSubstr("log ! one.line .[2J\n"));
    EXPECT_THAT(Call({"8"}).err, Not(HasSubstr("log")));
}

TEST_F(ProviderTest, AnswersCannotSteerTheTerminal) {
    const std::string text = R"("t\n\u202E": "\u009B\u007F\uDB40\uDC01Ж")";
    EXPECT_EQ("{\n  \"errorCode\": 0,\n  " + text + "\n}\n", Call({"9"}).out);
    EXPECT_THAT(Run({"run", "-", "--module", MOD_FOO_FAKE_MODULE}, "{\"mode\":9}\n").out,
                HasSubstr(R"("t\n\u202E":"\u009B\u007F\uDB40\uDC01Ж")"));
}

TEST_F(ProviderTest, ModuleThatTakesTheProcessDownIsNamedWithItsRequest) {
    m_directory.Write("fake\x1B.so", TemporaryDir::Read(MOD_FOO_FAKE_MODULE));
    m_directory.Write("a\rb", "crash");
    const std::string session = "printf '%s\\n' '{\"n\":\"mode\",\"mode\":38}' '' ";
    const struct {
        const char* name;
        std::string script;
        std::string err;
    } cases[] = {
        {"crash", "cmhost call 101", " crashed (SIGSEGV, Segmentation fault): mode 101\n"},
        {"stack overflow", "cmhost call 102", " crashed (SIGSEGV, Segmentation fault): mode 102\n"},
        {"abort", "cmhost call 103", " stopped the process (SIGABRT, Aborted): mode 103; a"},
        {"exit", "cmhost call 104", " ended the process: mode 104\n"},
        {"hang", "cmhost call --timeout 2 106", " did not answer within 2 s: mode 106\n"},
        {"file", "cmhost describe 'a\rb'", ": a.b, mode 22 (GetCertInfo)\n"},
        {"line", session + R"('{"x":{"mode" :1},"a\"\\":2,"mode":101}' | cmhost run -)",
         ": line 3 of the standard input, mode 101\n"},
        {"directive", session + R"('{"@mode":"101"}' | cmhost run -)", ", mode 101\n"},
        {"hang of one thread", session + "'{\"mode\":106}' | cmhost run --timeout 2 --threads 3 -",
         ", mode 106\n"},
        {"start", "FAKE_HANGS_AT_INIT=1 cmhost call --timeout 2 38", "2 s: CM_Init\n"},
        {"thread of its own", "FAKE_CRASHES_IN_A_THREAD=1 cmhost call 106",
         " in a thread of its own, beside: mode 106\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const HostResult result = RunScript(c.script + " --module 'fake\x1B.so'");
        EXPECT_EQ(5, result.exitCode);
        EXPECT_THAT(result.err, HasSubstr("cmhost: the module ./fake..so "));
        EXPECT_THAT(result.err, HasSubstr(c.err));
        // What was answered before is there.
        EXPECT_EQ(c.script.starts_with("printf"), !result.out.empty());
    }
}

TEST_F(ProviderTest, ExceptionIsAnImproperAnswer) {
    const HostResult result =
        Run({"run", "-", "--module", MOD_FOO_FAKE_MODULE}, "{\"mode\":105}\n{\"mode\":38}\n");
    EXPECT_EQ(1, result.exitCode);
    EXPECT_THAT(result.out,
                HasSubstr(R"({"hostError":"the module threw an exception: out of\nluck")"));
    EXPECT_THAT(result.out, HasSubstr("\"fileDataSize\":11"));
}

TEST_F(ProviderTest, LibraryThatIsNoModuleIsRefused) {
    for (const char* library : {MOD_FOO_FAKE_WITHOUT_FREE, MOD_FOO_FAKE_GIVES_NO_MODULE}) {
        const HostResult result = Run({"call", "38", "--module", library});
        EXPECT_EQ(3, result.exitCode);
        EXPECT_THAT(result.err, HasSubstr("module"));
    }
}

TEST_F(ProviderTest, RequestsArriveAsTheyWereAsked) {
    m_directory.Write("data", std::string("a\0b\xFF", 4));
    m_directory.Write("request.json",
                      R"({"fileData":"old", "x":1.50, "mode":1, "y":{"mode":[1,{"z":null}]}})");
    const std::string framed("{\"fileDataSize\":4,\"mode\":38}\0a\0b\xFF", 33);
    const struct {
        const char* name;
        std::vector<std::string> arguments;
        std::string expected;
    } cases[] = {
        {"plain", {"38"}, R"({"mode":38})"},
        {"client", {"38", "--client", "Анна \"A\""}, R"({"mode":38,"clientId":"Анна \"A\""})"},
        {"announced Base64",
         {"38", "--file", "data"},
         R"({"fileDataEncodedSize":8,"fileData":"YQBi/w==","mode":38})"},
        {"raw", {"38", "--file", "data", "--binary"}, framed},
        {"values",
         {"38", "--set", "a=[1, 2]", "--set", "b=text", "--set", "c=\"42\"", "--set", "d=", "--set",
          "e=x=y", "--set", "a=7.10"},
         R"({"mode":38,"a":7.10,"b":"text","c":"42","d":"","e":"x=y"})"},
        {"over JSON",
         {"38", "--json", "request.json", "--file", "data"},
         R"({"fileDataEncodedSize":8,"fileData":"YQBi/w==","x":1.50,"mode":38,)"
         R"("y":{"mode":[1,{"z":null}]}})"},
        {"JSON with its own payload",
         {"38", "--json", "request.json", "--set", "y=0"},
         R"({"fileData":"old","x":1.50,"mode":38,"y":0})"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.expected, Received(c.arguments));
    }
    EXPECT_THAT(Call({"7"}).out, HasSubstr("\"interactive\": false"));
    EXPECT_THAT(Call({"7", "--interactive"}).out, HasSubstr("\"interactive\": true"));
}

TEST_F(ProviderTest, SessionAnswersInTheOrderOfItsLines) {
    std::ostringstream session;
    constexpr int kLines = 3000;
    for (int i = 0; i < kLines; ++i) {
        session << "{\"mode\":38,\"n\":\"" << std::string(static_cast<std::size_t>(i), 'x')
                << "\"}\n";
    }
    for (const char* threads : {"1", "5"}) {
        const HostResult result =
            Run({"run", "-", "--threads", threads, "--module", MOD_FOO_FAKE_MODULE}, session.str());
        EXPECT_EQ(0, result.exitCode);
        std::istringstream lines(result.out);
        std::string line;
        for (int i = 0; i < kLines; ++i) {
            ASSERT_TRUE(std::getline(lines, line));
            // The provider tells the length of the request: 18 octets round the "x".
            ASSERT_EQ("{\"errorCode\":0,\"fileDataSize\":" + std::to_string(i + 18) + "}", line);
        }
        EXPECT_FALSE(std::getline(lines, line));
    }
}

TEST_F(ProviderTest, SessionGoesOnAfterImproperAnswers) {
    const HostResult result = Run({"run", "-", "--module", MOD_FOO_FAKE_MODULE},
                                  "{\"mode\":1}\n{\"mode\":2}\n{\"mode\":6}\n{\"mode\":7}\n");
    EXPECT_EQ(1, result.exitCode);
    std::istringstream lines(result.out);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(R"({"hostError":"the module gave no answer","answer":""})", line);
    std::getline(lines, line);
    EXPECT_THAT(line, HasSubstr("not valid JSON"));
    EXPECT_THAT(line, HasSubstr("\\u001B[31m"));
    std::getline(lines, line);
    EXPECT_EQ(600000U + std::string_view(R"({"errorCode":0,"deep":})").size(), line.size());
    std::getline(lines, line);
    EXPECT_EQ(R"({"errorCode":0,"interactive":false})", line);
}

}  // namespace
