// The module inside a Qt application: on the platform without a screen, or on the X server that
// MOD_FOO_TEST_SCREEN asks for.

#include "module/MessageBox.h"
#include "module/viewer/CertInfoDlg.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
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

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("MOD_FOO_TEST_SCREEN")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
