// The module inside a Qt application, on the platform without a screen.

#include "module/viewer/CertInfoDlg.h"
#include "module/MessageBox.h"
#include "records/CertInfo.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>
#include <gtest/gtest.h>

#include <memory>
#include <thread>

// What the platform plugin keeps until the process ends is not the module's.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\nleak:libQt5Gui.so\nleak:libQt5Core.so\n";
}

TEST(DialogTest, StaysOnTopTakesTheFocusAndDeletesItself) {
    QPointer<CCertInfoDlg> dialog = CCertInfoDlg::Create();
    ASSERT_FALSE(dialog.isNull());
    EXPECT_TRUE(dialog->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_TRUE(dialog->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(dialog->windowFlags().testFlag(Qt::Dialog));
    EXPECT_EQ(dialog->focusPolicy(), Qt::StrongFocus);
    dialog->show();
    dialog->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(dialog.isNull());
}

TEST(DialogTest, ShowsARecordAsPlainText) {
    ca::CertInfo2 info;
    info.description = L"<b>Subject</b>";
    info.issuer = L"Issuer";
    info.validFrom = L"01.02.2024 03:04:05";
    info.validTo = L"01.02.2034 03:04:05";
    const std::unique_ptr<CCertInfoDlg> dialog(CCertInfoDlg::Create());
    dialog->SetCertInfo(info);
    const auto* subject = dialog->findChild<QLabel*>("subjectText");
    EXPECT_EQ(subject->text(), "<b>Subject</b>");
    EXPECT_EQ(subject->textFormat(), Qt::PlainText);
    EXPECT_EQ(dialog->findChild<QLabel*>("issuerText")->text(), "Issuer");
    const QString validity = dialog->findChild<QLabel*>("validityText")->text();
    EXPECT_TRUE(validity.contains("01.02.2024 03:04:05") && validity.contains("01.02.2034"));
}

TEST(DialogTest, ShowsNothingOffTheGuiThread) {
    std::thread([] {
        EXPECT_EQ(CCertInfoDlg::Create(), nullptr);
        EXPECT_FALSE(ca::MessageBoxWarning(L"text", L"caption"));
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
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
