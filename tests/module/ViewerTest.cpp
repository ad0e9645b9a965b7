// The certificate viewer as a host and its user meet it: filled by name, driven by keys and mouse.

#include "common/ErrorCodes.h"
#include "common/Lng.h"
#include "tests/common/SampleObjects.h"
#include "tests/common/TemporaryDir.h"
#include "tests/module/ViewerFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>
#include <QUrl>
#include <QtTest>
#include <gtest/gtest.h>

namespace {

constexpr char kMarkup[] = "<img src=x><b>Ivan</b>\xE2\x80\xAE";  // and a right-to-left override

// A record as an answer holds it, its issuer nested.
QByteArray RecordJson() {
    return QByteArray(R"({"Description":"CN=)") + kMarkup + R"(","SubjectTags":"CN=)" + kMarkup +
           R"(;","Issuer":"CN=Issuer","Validity":"checked","ValidityNumber":16200,)"
           R"("ValidFromUTC":"01.01.2020 00:00:00","ValidToUTC":"01.01.2021 00:00:00",)"
           R"("Extensions":[{"OidFriendlyName":"First","OidValue":"1.2.3","FormattedData":)"
           R"("line one\nneedle below","RawData":"BQA=","Critical":true}],)"
           R"("IssuerCert":{"Description":"CN=Issuer","SubjectTags":"CN=Issuer;"}})";
}

TEST_F(ViewerTest, StaysOnTopTakesTheFocusAndDeletesItself) {
    EXPECT_TRUE(m_viewer->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_TRUE(m_viewer->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(m_viewer->windowFlags().testFlag(Qt::Dialog));
    EXPECT_EQ(m_viewer->focusPolicy(), Qt::StrongFocus);
    QTest::keyClick(m_viewer, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(m_viewer.isNull());
}

TEST_F(ViewerTest, ShowsACertificateByItsOctets) {
    ASSERT_TRUE(Fill("setCertificate", kSampleCertificate));
    EXPECT_TRUE(m_viewer->windowTitle().contains("Иванов Иван"));
    EXPECT_EQ(Text("subject.CNText"), "Иванов Иван");
    EXPECT_EQ(Text("subject.OText"), "Ромашка, ООО");
    EXPECT_TRUE(Text("alternativeNamesText").contains("DNS: a.example"));
    EXPECT_TRUE(Text("validFromText").contains(" UTC"));
    EXPECT_TRUE(Text("validToText").contains("days left: "));
    EXPECT_EQ(Text("sha1Text").size(), 40);
    EXPECT_EQ(Text("sha256Text").size(), 64);
    EXPECT_EQ(Text("usageText"), "Certificate signing, CRL signing");
    EXPECT_EQ(Text("serialText"), "80a1b2c3");
    EXPECT_EQ(Text("statusText"), "Certificate was not verified");
    EXPECT_EQ(m_viewer->property("certificateCount"), 1);
}

TEST_F(ViewerTest, TakesNothingInARecordForMarkup) {
    ASSERT_TRUE(Fill("setRecordJson", RecordJson()));
    EXPECT_EQ(Text("subject.CNText"), "<img src=x><b>Ivan</b>\\u202e");
    EXPECT_TRUE(Find<QLabel>("subject.CNMark")->text().contains("do not show"));
    EXPECT_TRUE(Find<QWidget>("subject.CNText")->accessibleDescription().contains("do not show"));
    EXPECT_EQ(Text("statusText"), "checked");
    for (int page = 0; page < 4; ++page) {
        GoTo(page);
        for (const QLabel* label : m_viewer->findChildren<QLabel*>()) {
            EXPECT_TRUE(!label->text().contains("<b>") || label->textFormat() == Qt::PlainText);
        }
        for (const QWidget* widget : m_viewer->findChildren<QWidget*>()) {
            EXPECT_FALSE(widget->toolTip().contains("<b>"));
        }
    }
}

TEST_F(ViewerTest, SaysWhatACertificateMayBeUsedForAsFarAsThatIsKnown) {
    const struct {
        const char* members;
        const char* usage;
    } cases[] = {
        {R"("RawData":"MAA=")", "not limited"},
        {R"("RawData":"MAA=","Error":"damaged")", "\u2014"},
        {R"("Serial":"01")", "\u2014"},
        {R"("RawData":"MAA=","Extensions":[{"OidValue":"2.5.29.15"}])", "\u2014"},
        {R"("RawData":"MAA=","Extensions":[{"OidValue":"2.5.29.37","FormattedData":"a\nb"}])",
         "a\nb"},
        {R"("KeyUsageStr":"k","Extensions":[{"OidValue":"2.5.29.37","FormattedData":"a\nb"}])",
         "k\na\nb"},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(Fill("setRecordJson", QByteArray("{\"Issuer\":\"CN=I\",") + c.members + "}"));
        EXPECT_EQ(Text("usageText"), c.usage) << c.members;
        EXPECT_EQ(Text("titleText"), "\u2014");
        EXPECT_EQ(m_viewer->windowTitle(), "Certificate");
    }
}

TEST_F(ViewerTest, ShowsABeginningOfHugeTextsAndCopiesThemWhole) {
    const QByteArray marks = QByteArray("\xCC\x81").repeated(65000);
    const QByteArray letters = QByteArray("subject ").repeated(1 << 18);
    for (const QByteArray& text : {marks, letters}) {
        ASSERT_TRUE(
            Fill("setRecordJson", "{\"Description\":\"" + text + "\",\"Issuer\":\"CN=I\"}"));
        EXPECT_LT(m_viewer->windowTitle().size(), 400);
        for (int page = 0; page < 3; ++page) {
            GoTo(page);
            m_viewer->grab();
            for (const auto* box : m_viewer->findChildren<QPlainTextEdit*>()) {
                EXPECT_LT(box->toPlainText().size(), 17000) << box->objectName().toStdString();
            }
        }
        GoTo(0);
        auto* subject = Find<QPlainTextEdit>("subjectText");
        EXPECT_TRUE(subject->toPlainText().contains(" more"));
        subject->selectAll();
        subject->copy();
        EXPECT_EQ(QGuiApplication::clipboard()->text().toUtf8(), text);
    }
}

TEST_F(ViewerTest, KeepsWhatItShowsWhenItIsHandedSomethingElse) {
    const struct {
        const char* operation;
        QByteArray octets;
        uint code;
    } cases[] = {
        {"setCertificate", "", ca::kErrNoArgumentData},
        {"setCertificate", "no certificate", ca::kErrCertificate},
        {"setCertificate", kSampleCrl, ca::kErrCertificate},
        {"setRecordJson", "{", ca::kErrJsonParse},
        {"setRecordJson", "[]", ca::kErrJsonParse},
        {"setRecordJson", R"({"KeyUsage":"text"})", ca::kErrJsonParse},
        {"setRecordJson", QByteArray(100000, '['), ca::kErrJsonParse},
        {"setRecordJson", R"({"certInfo":[]})", ca::kErrJsonParse},
        {"setRecordJson", R"({"certInfo":{},"Description":"outside"})", ca::kErrCertificate},
        {"setStructure", "", ca::kErrNoArgumentData},
        {"setStructure", "a letter", ca::kErrBadData},
    };
    ASSERT_TRUE(Fill("setCertificate", kSampleCertificate));
    for (const auto& c : cases) {
        SCOPED_TRACE(c.octets.left(20).constData());
        EXPECT_FALSE(Fill(c.operation, c.octets));
        EXPECT_EQ(ErrorCode(), c.code);
        EXPECT_FALSE(m_viewer->property("lastError").toString().isEmpty());
        EXPECT_EQ(Text("subject.CNText"), "Иванов Иван");
    }
    EXPECT_TRUE(Fill("setStructure", QByteArray::fromHex("30820500020101")));  // and no more
    EXPECT_TRUE(Fill("setStructure", QByteArray::fromHex("020101")));
    EXPECT_TRUE(Fill("setStructure", kSampleCrl));
    EXPECT_EQ(ErrorCode(), 0U);
    EXPECT_EQ(m_viewer->property("page"), 3);
    EXPECT_EQ(m_viewer->property("certificateCount"), 0);
    EXPECT_FALSE(Export(m_settings.File("none.pem"), "pem"));  // nobody knows the label
    EXPECT_TRUE(Export(m_settings.File("any.der"), "der"));
}

TEST_F(ViewerTest, SearchesAndCopiesByKeys) {
    ASSERT_TRUE(Fill("setRecordJson", RecordJson()));
    QTest::keyClick(m_viewer, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(m_viewer->property("page"), 1);
    auto* find = Find<QLineEdit>("findText");
    auto* tree = Find<QTreeView>("fieldTree");
    const int all = tree->model()->rowCount();
    QTest::keyClicks(find, "NEEDLE");
    EXPECT_LT(tree->model()->rowCount(), all);
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(tree->currentIndex().data().toString(), "First (critical)");
    EXPECT_EQ(Text("fieldText"), "line one\nneedle below");
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "line one\nneedle below");

    find->setText("CN=Issuer");  // a value of its own: F3 goes round to it
    QTest::keyClick(m_viewer, Qt::Key_F3);
    EXPECT_EQ(tree->currentIndex().data().toString(), "Issuer");
    QTest::mouseClick(Find<QPushButton>("copyButton"), Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "CN=Issuer");

    find->setText("not there");
    EXPECT_EQ(tree->model()->rowCount(), 0);
    EXPECT_EQ(Find<QLabel>("findTextResult")->text(), "Nothing found");
    QTest::keyClick(m_viewer, Qt::Key_F3);
    find->clear();
    EXPECT_EQ(tree->model()->rowCount(), all);
}

TEST_F(ViewerTest, WritesTheCertificateWholeOrSaysWhyNot) {
    ASSERT_TRUE(Fill("setCertificate", kSampleCertificate));
    const std::string der = m_settings.File("a.der");
    ASSERT_TRUE(Export(der, "der"));
    ASSERT_TRUE(Export(m_settings.File("a.pem"), ""));
    EXPECT_EQ(TemporaryDir::Read(m_settings.File("a.pem")), kSampleCertificate);
    ASSERT_TRUE(Export(m_settings.File("a.txt"), "Text"));
    EXPECT_NE(TemporaryDir::Read(m_settings.File("a.txt")).find("Serial number: 80a1b2c3\n"),
              std::string::npos);
    EXPECT_FALSE(Export(m_settings.File("no/such/folder"), "der"));
    EXPECT_EQ(ErrorCode(), ca::kErrCertificateFile);
    EXPECT_FALSE(Export(der, "exe"));
    EXPECT_EQ(ErrorCode(), ca::kErrParameters);

    const QByteArray octets = QByteArray::fromStdString(TemporaryDir::Read(der));
    ASSERT_TRUE(Fill("setCertificate", octets));
    EXPECT_EQ(Text("subject.CNText"), "Иванов Иван");
    ASSERT_TRUE(Fill("setRecordJson", RecordJson()));
    EXPECT_FALSE(Export(der, "pem"));  // its octets are not known
    EXPECT_EQ(ErrorCode(), ca::kErrNoArgumentData);
    EXPECT_EQ(QByteArray::fromStdString(TemporaryDir::Read(der)), octets);
}

TEST_F(ViewerTest, SavesWhereTheUserSays) {
    ASSERT_TRUE(Fill("setCertificate", kSampleCertificate));
    QTest::mouseClick(Find<QToolButton>("saveButton"), Qt::LeftButton);
    auto* dialog = m_viewer->findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    const QString path = QString::fromStdString(m_settings.File("saved.der"));
    dialog->selectFile(path);
    static_cast<QDialog*>(dialog)->accept();
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(Find<QLabel>("messageText")->text(), "Saved: " + path);
}

TEST_F(ViewerTest, SpeaksTheLanguageItIsToldOrTheProcess) {
    ASSERT_TRUE(Fill("setCertificate", kSampleCertificate));
    auto* pages = Find<QTabWidget>("pages");
    m_viewer->setProperty("language", "ru");
    EXPECT_EQ(pages->tabText(0), "&Общие");
    EXPECT_EQ(Text("usageText"), "Подписывание сертификатов, Подписывание списков отзыва");
    EXPECT_EQ(GetZORNALng(), En::LangID);
    EXPECT_FALSE(Fill("setCertificate", "x"));
    EXPECT_EQ(m_viewer->property("lastError"), "Ошибка в структуре сертификата");
    GoTo(3);
    EXPECT_EQ(Find<QTreeView>("structureTree")->model()->headerData(1, Qt::Horizontal), "Значение");
    m_viewer->setProperty("language", "");
    EXPECT_EQ(pages->tabText(0), "&General");
    SetZORNALng(L"ru");
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(m_viewer, &change);
    EXPECT_EQ(pages->tabText(0), "&Общие");
    EXPECT_EQ(m_viewer->property("language"), "");
}

TEST_F(ViewerTest, GoesToAnIssuerByClickAndByKey) {
    ASSERT_TRUE(Fill("setRecordJson", RecordJson()));
    EXPECT_EQ(m_viewer->property("certificateCount"), 2);
    GoTo(2);
    auto* tree = Find<QTreeView>("pathTree");
    const QModelIndex issuer = tree->model()->index(0, 0);
    EXPECT_EQ(issuer.data().toString(), "Issuer");
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(issuer).center());
    QCoreApplication::processEvents();
    EXPECT_EQ(m_viewer->property("currentCertificate"), 1);
    EXPECT_EQ(m_viewer->property("page"), 0);
    EXPECT_EQ(Text("subject.CNText"), "Issuer");
    GoTo(2);
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_Down);
    QTest::keyClick(tree, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_viewer->property("currentCertificate"), 0);
    m_viewer->setProperty("currentCertificate", 7);
    EXPECT_EQ(m_viewer->property("currentCertificate"), 0);
}

TEST_F(ViewerTest, ShowsWhatIsChosenInTheListAndNothingElse) {
    ASSERT_TRUE(FillFile("showFile", kSampleMessage, "m.p7s"));
    auto* list = Find<QTreeView>("itemTree");
    EXPECT_TRUE(list->isVisible());
    EXPECT_EQ(m_viewer->property("headline"), "Signed message, 1 signature, content enclosed");
    EXPECT_EQ(list->currentIndex().data().toString(), "Signature: Анна Петрова");
    EXPECT_EQ(Text("signer.CNText"), "Анна Петрова");
    EXPECT_EQ(m_viewer->property("currentCertificate"), -1);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);  // the countersignature, whose certificate is not there
    EXPECT_TRUE(m_viewer->windowTitle().contains("Борис Орлов"));
    EXPECT_EQ(Text("faultsText"), "Certificate is not in the message");
    EXPECT_EQ(m_viewer->property("certificateCount"), 0);
    GoTo(2);
    EXPECT_TRUE(Find<QLabel>("pathEndText")->text().contains("not in the message"));
    QTest::keyClick(list, Qt::Key_Up);
    m_viewer->setProperty("currentCertificate", 0);  // the list goes with it
    EXPECT_EQ(list->currentIndex().data().toString(), "Анна Петрова");
    QTest::keyClick(list, Qt::Key_Home);
    GoTo(2);  // a message has no path
    EXPECT_EQ(m_viewer->property("page"), 0);

    ASSERT_TRUE(FillFile("addFile", kSampleCrl, "l.crl"));
    EXPECT_EQ(m_viewer->property("itemCount"), 7);
    m_viewer->setProperty("currentItem", 6);
    EXPECT_TRUE(m_viewer->property("headline").toString().contains("l.crl: Revocation list"));
    GoTo(4);
    auto* table = Find<QTableView>("entryTable");
    EXPECT_EQ(table->model()->rowCount(), 1);
    QTest::keyClick(m_viewer, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(Find<QLineEdit>("serialFind"), "0B");
    EXPECT_EQ(Find<QLabel>("serialFindResult")->text(), "Nothing found");
    EXPECT_FALSE(FillFile("showFile", "Dear Ivan", "letter.txt"));
    EXPECT_EQ(m_viewer->property("itemCount"), 7);
}

TEST_F(ViewerTest, OpensTheFilesThatAreDroppedOnIt) {
    QMimeData files;
    QList<QUrl> urls;
    for (const auto& [name, content] : {std::pair("a.pem", kSampleCertificate),
                                        {"b.txt", "Dear Ivan"},
                                        {"c.p7s", kSampleMessage}}) {
        urls += QUrl::fromLocalFile(QString::fromStdString(m_settings.Write(name, content)));
    }
    files.setUrls(urls + QList<QUrl>{QUrl::fromLocalFile(m_settings.Path().c_str())});
    QDragEnterEvent enter({}, Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_viewer, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({}, Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_viewer, &drop);
    EXPECT_EQ(m_viewer->property("itemCount"), 7);
    EXPECT_TRUE(Find<QLabel>("messageText")->text().startsWith("b.txt: Bad data; "));
}

TEST_F(ViewerTest, CopiesAndSavesInEveryForm) {
    ASSERT_TRUE(FillFile("showFile", kSampleCertificate, "a.pem"));
    const QList<QAction*> copies = Find<QToolButton>("copyMenuButton")->menu()->actions();
    const char* const expected[] = {"Serial number: 80a1b2c3\n", "-----BEGIN CERTIFICATE-----\n",
                                    "\"Serial\": \"80a1b2c3\"", "Иванов Иван\n"};
    for (int i = 0; i < copies.size(); ++i) {
        copies[i]->trigger();
        EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(expected[i])) << i;
        EXPECT_EQ(Find<QLabel>("messageText")->text(), "Copied");
    }
    ASSERT_TRUE(Export(m_settings.File("a.json"), ""));
    ASSERT_TRUE(Fill("setRecordJson",
                     QByteArray::fromStdString(TemporaryDir::Read(m_settings.File("a.json")))));
    EXPECT_EQ(Text("subject.CNText"), "Иванов Иван");
    QTest::keyClick(m_viewer, Qt::Key_S, Qt::ControlModifier);
    EXPECT_NE(m_viewer->findChild<QFileDialog*>(), nullptr);
    QTest::mouseClick(Find<QToolButton>("languageButton"), Qt::LeftButton);
    EXPECT_EQ(m_viewer->property("language"), "ru");
}

}  // namespace
