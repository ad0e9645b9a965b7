// `cmhost view` as its users run it, without a screen.

#include "tests/common/SampleObjects.h"
#include "tests/host/HostProcess.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class ViewCommandTest : public HostProcessTest {
  protected:
    static constexpr const char* kSettings = ".config/ZORNA/CertificateViewer.ini";

    // Shows a file until the window is there, then has the process ended by a signal. It listens to
    // signals before it shows its window, and answers them when the window is up.
    HostResult ViewUntil(const std::string& signal, const std::string& arguments) const {
        return RunScript("cmhost view " + arguments + R"( &
            for try in $(seq 1000); do
                case $(sed -n 's/^SigCgt:.*\(....\)$/\1/p' /proc/$!/status) in
                    [4-7c-f]???) break ;;
                esac
                sleep 0.02
            done
            kill -)" + signal +
                         " $!\nwait $!");
    }

  private:
    ScopedVariable m_platform{"QT_QPA_PLATFORM", "offscreen"};
    ScopedVariable m_folder{"XDG_CONFIG_HOME", nullptr};
    // What Qt and its plugins keep to the end cannot be told from leaks of the tool's own.
    ScopedVariable m_leaks{"ASAN_OPTIONS", "detect_leaks=0"};
};

TEST_F(ViewCommandTest, ShowsEachKindOfFileUntilASignalClosesIt) {
    m_directory.Write("c.pem", kSampleCertificate);
    m_directory.Write("l.crl", kSampleCrl);
    m_directory.Write("answer.json", Run({"call", "GetCertInfo2"}).out);
    m_directory.Write("record.json", R"({"Description":"CN=Ivan"})");
    for (const char* arguments :
         {"c.pem", "c.pem --page asn1 --language ru", "c.pem --structure", "l.crl --page entries",
          "answer.json", "record.json --page details", "- <c.pem", "c.pem l.crl record.json"}) {
        SCOPED_TRACE(arguments);
        for (const char* signal : {"TERM", "HUP"}) {
            const HostResult result = ViewUntil(signal, arguments);
            EXPECT_EQ(0, result.exitCode) << result.err;
            // The window was there and was closed, not cut off: it has stored its size.
            EXPECT_TRUE(std::filesystem::remove(m_directory.File(kSettings)));
        }
    }
    // Of several files those that can be read are shown.
    const HostResult some = ViewUntil("TERM", "none.pem c.pem");
    EXPECT_EQ(2, some.exitCode);
    EXPECT_NE(some.err.find("none.pem"), std::string::npos);
    EXPECT_TRUE(std::filesystem::remove(m_directory.File(kSettings)));
}

TEST_F(ViewCommandTest, SurvivesWhateverIsStoredAsItsSize) {
    m_directory.Write("c.pem", kSampleCertificate);
    for (const std::string& size :
         {std::string("@Size(2147483647 2147483647)"), std::string("@Size(-1 x"),
          std::string("@Variant(\\0\\0\\0\\x46\\xff\\xff\\xff\\xff)"), std::string("@Invalid()"),
          std::string(1000000, '\\'), std::string("=[\0]%%\n[", 8)}) {
        m_directory.Write(kSettings, "[General]\nsize=" + size + "\n");
        EXPECT_EQ(0, ViewUntil("TERM", "c.pem").exitCode) << size.substr(0, 40);
        EXPECT_THAT(TemporaryDir::Read(m_directory.File(kSettings)), HasSubstr("size=@Size(7"));
    }
}

TEST_F(ViewCommandTest, SaysWhyItOpensNoWindow) {
    m_directory.Write("c.pem", kSampleCertificate);
    m_directory.Write("letter.txt", "Dear Ivan,\n");
    m_directory.Write("empty", "");
    m_directory.Write("other.json", R"({"errorCode":0})");
    m_directory.Write("deep.json", std::string(100000, '{'));
    const struct {
        std::string arguments;
        int exitCode;
        std::string err;
    } cases[] = {
        {"letter.txt", 1, "letter.txt: 16306 Bad data"},
        {"empty", 1, "16118 No data"},
        {"other.json", 1, "16113 Certificate error"},
        {"deep.json", 1, "16300 Error parsing JSON"},
        {"letter.txt --language ru", 1, "16306 Плохие данные"},
        {"letter.txt empty", 1, "none of the files can be shown"},
        {"c.pem c.pem --structure", 2, "--structure takes one file"},
        {"none", 2, "none: No such file"},
        {"c.pem --page last", 2, "--page"},
        {"", 2, "files is required"},
        {"c.pem --module none.so", 3, "does not load"},
        {std::string("c.pem --module ") + MOD_FOO_FAKE_MODULE, 3, "has no certificate viewer"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const bool isTold = c.arguments.find("--language") != std::string::npos;
        const HostResult result =
            RunScript("cmhost view " + c.arguments + (isTold ? "" : " --language en"));
        EXPECT_EQ(c.exitCode, result.exitCode);
        EXPECT_THAT(result.err, HasSubstr(c.err));
    }
}

TEST_F(ViewCommandTest, SaysThatThereIsNoDisplay) {
    m_directory.Write("c.pem", kSampleCertificate);
    const struct {
        const char* environment;
        const char* err;
    } cases[] = {
        {"unset QT_QPA_PLATFORM DISPLAY WAYLAND_DISPLAY", "neither DISPLAY nor"},
        {"unset QT_QPA_PLATFORM WAYLAND_DISPLAY; export DISPLAY=:4099", "to display :4099"},
        {"export QT_QPA_PLATFORM=xcb DISPLAY=", "to display"},
        {"export QT_QPA_PLATFORM=nonsense", "\"nonsense\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.environment);
        const HostResult result = RunScript(std::string(c.environment) + "\ncmhost view c.pem");
        EXPECT_EQ(4, result.exitCode);
        EXPECT_THAT(result.err, HasSubstr("cmhost: no window can be opened: "));
        EXPECT_THAT(result.err, HasSubstr(c.err));
        EXPECT_EQ(1, std::count(result.err.begin(), result.err.end(), '\n'));
    }
}

}  // namespace
