// The module inside a Qt application: on the platform without a screen, or on the X server that
// MOD_FOO_TEST_SCREEN asks for.

#include "module/MessageBox.h"
#include "module/viewer/CertInfoDlg.h"
#include "tests/common/TemporaryDir.h"

#include <QApplication>
#include <QImage>
#include <QMessageBox>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTimer>
#include <QtTest>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

// What the platform plugin keeps until the process ends is not the module's.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\nleak:libQt5Gui.so\nleak:libQt5Core.so\n";
}

TEST(DialogTest, ShowsNothingWhileTheGuiThreadIsBusy) {
    std::thread([] {
        EXPECT_EQ(CCertInfoDlg::Create(), nullptr);
        EXPECT_FALSE(ca::MessageBoxWarning(L"text", L"caption", std::chrono::milliseconds(20)));
    }).join();
}

TEST(DialogTest, WarnsInABoxUntilItIsClosed) {
    QString text;
    QString caption;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        text = box->text();
        caption = box->windowTitle();
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        box->accept();
    });
    EXPECT_TRUE(ca::MessageBoxWarning(L"one\r\n\r\ntwo", L"caption"));
    EXPECT_EQ(text, "one\r\n\r\ntwo");
    EXPECT_EQ(caption, "caption");
}

// What a user of the host tool sees, and not what its process believes it shows.
TEST(DialogTest, HostToolOpensAWindowOnTheScreen) {
    if (!qEnvironmentVariableIsSet("MOD_FOO_TEST_SCREEN")) {
        GTEST_SKIP() << "no screen";
    }
    const auto grabScreen = [] {
        return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    };
    const QImage before = grabScreen();
    const TemporaryDir settings;
    const ScopedVariable folder("XDG_CONFIG_HOME", settings.Path().c_str());
    QProcess host;
    host.setProcessChannelMode(QProcess::ForwardedChannels);
    host.start(MOD_FOO_CMHOST, {"view", MOD_FOO_TEST_DATA "/rich.pem"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return grabScreen() != before; }, 30000));
    host.terminate();
    EXPECT_TRUE(host.waitForFinished());
    EXPECT_EQ(host.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(host.exitCode(), 0);
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("MOD_FOO_TEST_SCREEN")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
