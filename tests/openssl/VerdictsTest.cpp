// The window shows what a provider that verifies finds of signatures.

#include "tests/module/ViewerFixture.h"

#include <QApplication>
#include <QLabel>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

// What the platform plugin keeps until the process ends is not the module's.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\nleak:libQt5Gui.so\nleak:libQt5Core.so\n";
}

namespace {

constexpr const char* kSign =
    " && openssl cms -sign -binary -nodetach -md sha256 -outform DER -in /dev/null -signer ";

double Brightness(const QColor& colour) {
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
           0.0722 * part(colour.blueF());
}

class VerdictsTest : public ViewerTest {
  protected:
    void SetUp() override {
        m_files.Write("config.ini", "[Service settings]\nLanguage=ru\n");
        m_files.Write("QetCryptoSvcPKIConfig.json",
                      R"({"trust":{"useSystemRoots":false,"stores":[")" + m_files.File("root.crt") +
                          R"("]},"stores":{"user":")" + m_files.File("stores") + "\"}}");
        ::setenv("MOD_FOO_CONFIG", m_files.File("config.ini").c_str(), 1);
        ASSERT_EQ(0, std::system((MOD_FOO_MAKE_PKI " " + m_files.Path()).c_str()));
        ViewerTest::SetUp();
    }
    void TearDown() override {
        ViewerTest::TearDown();
        ::unsetenv("MOD_FOO_CONFIG");
    }

    std::string SignedBy(const std::string& name) {
        const std::string command = "cd " + m_files.Path() + kSign + name + ".crt -inkey " + name +
                                    ".key -certfile ca.crt -out " + name + ".p7m";
        EXPECT_EQ(0, std::system(command.c_str()));
        return TemporaryDir::Read(m_files.File(name + ".p7m"));
    }
    void Show(const std::string& message) {
        ASSERT_TRUE(FillFile("showFile", QByteArray::fromStdString(message), "letter.p7m"));
    }
    /// The verdict's letters against the window.
    double Contrast() {
        const QPalette colours = Find<QLabel>("verdictText")->palette();
        const double letters = Brightness(colours.color(QPalette::WindowText));
        const double window = Brightness(colours.color(QPalette::Window));
        return (std::max(letters, window) + 0.05) / (std::min(letters, window) + 0.05);
    }

    TemporaryDir m_files;
};

}  // namespace

TEST_F(VerdictsTest, AreShownInWordsAndColour) {
    const std::string good = SignedBy("bob");
    std::string forged = good;
    forged.back() = static_cast<char>(forged.back() ^ 1);  // of the signature's value
    struct Case {
        std::string message;
        const char* verdict;
        const char* english;
    };
    const Case cases[] = {
        {good, "Действительна", "Valid"},
        {forged, "Недействительна", "Not valid"},
        {SignedBy("expired"), "Не изменена, но сертификат недействителен или ему нет доверия",
         "Unchanged, but its certificate is not valid or not trusted"},
    };
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::Window, QColor(42, 46, 50));
    dark.setColor(QPalette::Base, QColor(30, 32, 35));
    dark.setColor(QPalette::WindowText, Qt::white);
    for (const Case& c : cases) {
        m_viewer->setProperty("language", "ru");
        Show(c.message);
        EXPECT_EQ(Find<QLabel>("verdictText")->text(), c.verdict);
        m_viewer->setProperty("language", "en");
        EXPECT_EQ(Find<QLabel>("verdictText")->text(), c.english);
        EXPECT_TRUE(Text("checkedText").contains("CN=ca,O=Test; valid from"));
        EXPECT_GE(Contrast(), 4.5);
        QApplication::setPalette(dark);
        EXPECT_GE(Contrast(), 4.5);
        QApplication::setPalette(light);
    }
    EXPECT_EQ(GetZORNALng(), En::LangID) << "the process's language is the host's";
}

TEST_F(VerdictsTest, AreNotMadeUp) {
    std::filesystem::remove(m_files.File("root.crt"));
    ASSERT_EQ(0, std::system(("cd " + m_files.Path() + kSign +
                              "bob.crt -inkey bob.key -nocerts -out bare.p7m")
                                 .c_str()));
    Show(TemporaryDir::Read(m_files.File("bare.p7m")));
    EXPECT_FALSE(Find<QLabel>("verdictText")->isVisible());
    EXPECT_TRUE(Text("statusText").startsWith("Signature was not verified: the signer's"));
}

int main(int argc, char** argv) {
    if (std::getenv("MOD_FOO_TEST_SCREEN") == nullptr) {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
