// The viewer's window itself: the structure beside its octets, what a screen reader hears, its
// size.

#include "common/Lng.h"
#include "module/viewer/CertInfoDlg.h"
#include "module/viewer/HexView.h"
#include "tests/common/SampleObjects.h"
#include "tests/common/TemporaryDir.h"
#include "tests/module/ViewerFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QToolButton>
#include <QTreeView>
#include <QtTest>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

class ViewerWindowTest : public ViewerTest {};

TEST_F(ViewerWindowTest, GivesALongTextABarAndNoOtherOne) {
    m_viewer->resize(700, 700);
    for (const int lines : {1, 8, 9, 8, 100}) {
        const QByteArray text = QByteArray("line\\n").repeated(lines - 1) + "line";
        ASSERT_TRUE(Fill("setRecordJson", "{\"Issuer\":\"" + text + "\"}"));
        QCoreApplication::processEvents();
        const auto* box = Find<QPlainTextEdit>("issuerText");
        EXPECT_EQ(box->verticalScrollBar()->isVisible(), lines > 8) << lines;
        EXPECT_EQ(box->verticalScrollBar()->maximum(), std::max(lines - 8, 0));
    }
}

TEST_F(ViewerWindowTest, MarksInTheOctetsWhatIsSelectedInTheTree) {
    ASSERT_TRUE(Fill("setCertificate", kSampleCertificate));
    GoTo(3);
    auto* tree = Find<QTreeView>("structureTree");
    auto* octets = Find<ca::CHexView>("octets");
    EXPECT_EQ(octets->MarkedEnd(), 0x23FU);
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_Down);  // the signed part
    EXPECT_EQ(octets->MarkedBegin(), 4U);
    QTest::keyClick(tree, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("308201e2a003"));

    const std::size_t place = 12;  // of the version's value: 30 82 .. 30 82 .. a0 03 02 01 02
    QTest::mouseClick(octets->viewport(), Qt::LeftButton, {}, octets->PlaceOf(place));
    EXPECT_EQ(tree->currentIndex().data().toString(), "INTEGER");
    EXPECT_EQ(octets->MarkedBegin(), 10U);
    QTest::keyClick(octets, Qt::Key_Right);  // the serial number's first octet
    EXPECT_EQ(octets->MarkedBegin(), 13U);
    QTest::keyClick(octets, Qt::Key_End);
    EXPECT_EQ(octets->MarkedEnd(), 0x23FU);
    EXPECT_EQ(tree->currentIndex().data().toString(), "INTEGER");  // inside the signature
}

TEST_F(ViewerWindowTest, FindsAndHandsOutElementsOfTheStructure) {
    ASSERT_TRUE(Fill("setCertificate", kSampleCertificate));
    GoTo(3);
    auto* tree = Find<QTreeView>("structureTree");
    const auto found = [tree] { return tree->currentIndex().siblingAtColumn(1).data().toString(); };
    QTest::keyClick(m_viewer, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(Find<QLineEdit>("structureFind"), "KEY USAGE");
    EXPECT_TRUE(found().startsWith("2.5.29.15 "));
    QTest::keyClicks(Find<QLineEdit>("structureFind"), "\b\b");
    Find<QLineEdit>("structureFind")->setText("5 unused bits");  // inside an OCTET STRING
    const QList<QAction*> actions = Find<QToolButton>("elementButton")->menu()->actions();
    const char* const copies[] = {"06 (1 unused bits)", "03020106", "AwIBBg=="};
    Find<QLineEdit>("structureFind")->setText("06 (1");  // inside an OCTET STRING
    for (int i = 0; i < 3; ++i) {
        actions[i]->trigger();
        EXPECT_EQ(QGuiApplication::clipboard()->text(), copies[i]);
    }
    actions[3]->trigger();
    auto* dialog = m_viewer->findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    dialog->selectFile(QString::fromStdString(m_settings.File("bits.der")));
    static_cast<QDialog*>(dialog)->accept();
    EXPECT_EQ(TemporaryDir::Read(m_settings.File("bits.der")), "\x03\x02\x01\x06");

    Find<QLineEdit>("structureFind")->setText("not there");
    EXPECT_EQ(Find<QLabel>("structureFindResult")->text(), "Nothing found");
    m_viewer->setProperty("language", "ru");  // that of the window, not of the process
    for (const auto& [page, name] : {std::pair(1, "findText"), {3, "structureFind"}}) {
        GoTo(page);
        Find<QLineEdit>(name)->setText("no such text");
        EXPECT_EQ(Find<QLabel>((std::string(name) + "Result").c_str())->text(),
                  "Ничего не найдено");
    }
    m_viewer->setProperty("language", "en");
    Find<QLineEdit>("structureFind")->setText("OCTET STRING");
    const QModelIndex first = tree->currentIndex();
    QTest::keyClick(m_viewer, Qt::Key_F3);
    EXPECT_NE(tree->currentIndex(), first);
    QTest::keyClick(m_viewer, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(tree->currentIndex(), first);
}

TEST_F(ViewerWindowTest, TellsTheOctetsToScreenReaders) {
    ASSERT_TRUE(Fill("setCertificate", kSampleCertificate));
    GoTo(3);
    auto* octets = Find<ca::CHexView>("octets");
    QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(octets);
    ASSERT_NE(reader, nullptr);
    QAccessibleTextInterface* const text = reader->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->characterCount(), 3 * 0x23F);
    QTest::keyClick(octets, Qt::Key_Right);
    EXPECT_EQ(text->cursorPosition(), 3);
    EXPECT_EQ(reader->text(QAccessible::Value), "00000001: 82");
    int begin = 0;
    int end = 0;
    EXPECT_EQ(text->textAtOffset(4, QAccessible::WordBoundary, &begin, &end), "82 ");
    const QString line = text->textAtOffset(4, QAccessible::LineBoundary, &begin, &end);
    EXPECT_TRUE(line.startsWith("30 82 02 3b 30 82 01 e2 "));
    EXPECT_EQ(end, line.size());
    EXPECT_EQ(text->textBeforeOffset(0, QAccessible::LineBoundary, &begin, &end), "");
    text->setCursorPosition(3 * 10);  // the version
    text->selection(0, &begin, &end);
    EXPECT_EQ(text->text(begin, end), "02 01 02 ");
    EXPECT_TRUE(
        octets->rect().contains(octets->mapFromGlobal(text->characterRect(3 * 10).center())));
}

TEST_F(ViewerWindowTest, FitsTheScreenWithItsFrame) {
    ASSERT_TRUE(FillFile("showFile", kSampleMessage, "m.p7s"));
    for (const char* language : {"en", "ru"}) {
        m_viewer->setProperty("language", language);
        for (int page = 0; page < 4; ++page) {
            GoTo(page);
            EXPECT_LE(m_viewer->minimumSizeHint().width(), 600);
            EXPECT_LE(m_viewer->minimumSizeHint().height(), 430);
        }
    }
    m_viewer->resize(630, 440);
    GoTo(3);
    QCoreApplication::processEvents();
    EXPECT_GT(Find<QTreeView>("structureTree")->columnWidth(1), 90);
    m_viewer->close();
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    const std::unique_ptr<CCertInfoDlg> big(CCertInfoDlg::Create());
    big->setAttribute(Qt::WA_DeleteOnClose, false);
    big->resize(screen);
    big->show();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return QGuiApplication::primaryScreen()->availableGeometry().contains(big->frameGeometry());
    }));
}

TEST_F(ViewerWindowTest, TellsWhatEachPartIsCalled) {
    ASSERT_TRUE(Fill("setCertificate", kSampleCertificate));
    for (int page = 0; page < 4; ++page) {
        GoTo(page);
        for (const QWidget* widget : m_viewer->findChildren<QWidget*>()) {
            const bool isPart = qobject_cast<const QAbstractItemView*>(widget) != nullptr ||
                                qobject_cast<const QPlainTextEdit*>(widget) != nullptr ||
                                qobject_cast<const ca::CHexView*>(widget) != nullptr;
            if (isPart && widget->isVisible() && widget->focusPolicy() != Qt::NoFocus) {
                EXPECT_FALSE(widget->accessibleName().isEmpty())
                    << widget->objectName().toStdString();
            }
        }
    }
}

TEST_F(ViewerWindowTest, RemembersASizeThatFitsTheScreen) {
    const QSize first = m_viewer->size();
    const QSize size(730, 500);
    m_viewer->resize(size);
    m_viewer->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const std::unique_ptr<CCertInfoDlg> second(CCertInfoDlg::Create());
    EXPECT_EQ(second->size(), size);
    for (const QSize& absurd : {QSize(-5, 10), QSize(1, 1), QSize(2000000, 2000000)}) {
        QSettings(QSettings::IniFormat, QSettings::UserScope, "ZORNA", "CertificateViewer")
            .setValue("size", absurd);
        const std::unique_ptr<CCertInfoDlg> third(CCertInfoDlg::Create());
        EXPECT_EQ(third->size(), first);
    }
}

}  // namespace
