// What the viewer's trees are made of, also when strangers wrote it.

#include "module/viewer/Asn1TreeModel.h"
#include "module/viewer/FieldModel.h"
#include "module/viewer/ItemDescribers.h"
#include "module/viewer/NameMarks.h"
#include "module/viewer/ViewerText.h"
#include "module/viewer/ZonedTime.h"
#include "records/text/VisibleText.h"
#include "tests/common/EnglishTest.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

using ViewerModelTest = EnglishTest;

TEST_F(ViewerModelTest, TellsWhereEachBlockStandsAndWhatItEncloses) {
    // SEQUENCE { OCTET STRING { INTEGER 5 }, indefinite SET { NULL }, OCTET STRING "no BER" }
    const Bytes octets = {0x30, 0x11, 0x04, 0x03, 0x02, 0x01, 0x05, 0x31, 0x80, 0x05,
                          0x00, 0x00, 0x00, 0x04, 0x04, 0xFF, 0xFF, 0x41, 0x42};
    ca::CAsn1TreeModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.SetOctets(octets);
    const QModelIndex root = model.index(0, 0);
    ASSERT_EQ(model.rowCount(root), 3);
    const struct {
        std::size_t offset;
        const char* element;
        std::size_t begin, content, end;
    } cases[] = {
        {0, "SEQUENCE", 0, 2, 19},        {3, "OCTET STRING", 2, 4, 7},
        {6, "INTEGER", 4, 6, 7},          {8, "SET", 7, 9, 13},
        {10, "NULL", 9, 11, 11},          {12, "SET", 7, 9, 13},
        {18, "OCTET STRING", 13, 15, 19},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.offset);
        const QModelIndex at = model.InnermostAt(c.offset);
        EXPECT_EQ(at.data().toString().toStdString(), c.element);
        const ca::CAsn1TreeModel::Range range = model.RangeOf(at);
        EXPECT_EQ(range.begin, c.begin);
        EXPECT_EQ(range.content, c.content);
        EXPECT_EQ(range.end, c.end);
        EXPECT_EQ(model.index(at.row(), 0, at.parent()), at);
    }
    EXPECT_EQ(model.InnermostAt(4).siblingAtColumn(1).data().toString(), "5");
    EXPECT_FALSE(model.InnermostAt(octets.size()).isValid());
    EXPECT_EQ(model.rowCount(model.index(2, 0, root)), 0);
}

TEST_F(ViewerModelTest, BoundsLevelsAndRowsOfHostileStructures) {
    constexpr std::size_t kBlocks = 500000;
    Bytes deep;
    for (std::size_t i = 0; i < kBlocks; ++i) {
        deep.insert(deep.end(), {0x30, 0x80});
    }
    ca::CAsn1TreeModel model;
    model.SetOctets(deep);
    QModelIndex at = model.InnermostAt(deep.size() - 1);
    EXPECT_TRUE(at.isValid());
    int levels = 0;
    QString last;
    for (QModelIndex down = model.index(0, 0); down.isValid(); down = model.index(0, 0, down)) {
        ++levels;
        last = down.data().toString();
    }
    EXPECT_EQ(levels, ca::CAsn1TreeModel::kMaxDepth + 2);
    EXPECT_EQ(last, "nested too deeply to be shown");

    Bytes wide = {0x30, 0x80};
    wide.resize(wide.size() + 2 * kBlocks, 0x05);
    for (std::size_t i = 0; i < kBlocks; ++i) {
        wide[2 * i + 3] = 0x00;
    }
    model.SetOctets(wide);  // the end of contents is missing too
    const QModelIndex root = model.index(0, 0);
    ASSERT_EQ(model.rowCount(root), ca::CAsn1TreeModel::kMaxRows + 1);
    const QModelIndex note = model.index(ca::CAsn1TreeModel::kMaxRows, 0, root);
    EXPECT_EQ(
        note.data().toString(),
        QString::fromWCharArray(L"\u2026 and %1 more").arg(kBlocks - ca::CAsn1TreeModel::kMaxRows));
    EXPECT_EQ(note.parent(), root);
    EXPECT_EQ(model.RangeOf(note).end, 0U);
    EXPECT_EQ(model.InnermostAt(wide.size() - 1), root);
}

TEST_F(ViewerModelTest, ShowsDamagedOctetsOfEveryLength) {
    const Bytes whole = {0x30, 0x0A, 0x04, 0x03, 0x02, 0x01, 0x05, 0x84,
                         0x84, 0x00, 0x00, 0x01, 0x05, 0x00, 0x30};
    ca::CAsn1TreeModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        SCOPED_TRACE(size);
        model.SetOctets(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        for (std::size_t offset = 0; offset < size; ++offset) {
            EXPECT_LE(model.RangeOf(model.InnermostAt(offset)).end, size);
        }
    }
}

TEST_F(ViewerModelTest, HoldsEveryFieldAndBoundsWhatARecordMayClaim) {
    ca::CertInfo record;
    record.serial = L"0102";
    record.description.readable = std::wstring(2 * ca::kMaxValueText, L'x');
    for (std::size_t i = 0; i <= ca::kMaxListed; ++i) {
        auto extension = std::make_unique<ca::CertInfoExtension>();
        extension->oidValue = L"1.2." + std::to_wstring(i);
        extension->formattedData = L"value\r\nsecond\tline";
        extension->critical = true;
        record.extensions.items.emplace_back(std::move(extension));
    }
    ca::CFieldModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.SetFields(ca::CRecordFields(ca::BareJson(record)));
    ca::CFieldFilter filter;
    filter.setSourceModel(&model);
    filter.SetWanted("1.2.77");  // its own, and those that begin alike
    ASSERT_EQ(filter.rowCount(), 1);
    const QModelIndex list = filter.index(0, 0);
    EXPECT_EQ(filter.rowCount(list), 11);
    const QModelIndex first = filter.index(0, 0, list);
    EXPECT_EQ(first.data().toString(), "1.2.77 (critical)");
    EXPECT_EQ(first.siblingAtColumn(1).data().toString(), "value\u2026");
    EXPECT_EQ(first.data(ca::CFieldModel::kFullText).toString(), "value\nsecond\\u0009line");

    filter.SetWanted("and 1 more");
    EXPECT_EQ(filter.rowCount(), 1);
    filter.SetWanted("xxx");
    EXPECT_EQ(filter.index(0, 0).data(ca::CFieldModel::kFullText).toString().size(),
              static_cast<int>(record.description.readable.size()));
    EXPECT_LE(filter.index(0, 1).data().toString().size(), ca::kMaxLineText + 30);
}

TEST_F(ViewerModelTest, LaysOutABoundedPartOfEveryTextAndSaysHowMuchMoreThereIs) {
    const QString accent(QChar(0x301));
    const QString pair = QString::fromUtf8("\xF0\x9D\x85\xA5");  // U+1D165, a mark of two units
    const struct {
        QString text;
        QString shown;
    } cases[] = {
        {"", ""},
        {"ten letter", "ten letter"},
        {"ten letters", "ten letter\u2026 and 1 more"},
        {"e" + accent.repeated(32) + "!", "e" + accent.repeated(32) + "\u2026 and 1 more"},
        {"e" + accent.repeated(65000), "e" + accent.repeated(32) + "\u2026 and 64968 more"},
        {"e" + accent + pair.repeated(30), "e" + accent + pair.repeated(15) + "\u2026 and 30 more"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ca::LaidOut(c.text, 10), c.shown);
    }
}

TEST_F(ViewerModelTest, SaysHowLongACertificateHolds) {
    const QDateTime now(QDate(2026, 6, 15), QTime(12, 0), Qt::UTC);
    const struct {
        const wchar_t* from;
        const wchar_t* to;
        const char* text;
    } cases[] = {
        {L"01.01.2026 00:00:00", L"17.06.2026 11:59:59", "days left: 1"},
        {L"01.01.2026 00:00:00", L"16.06.2026 11:00:00", "hours left: 23"},
        {L"01.01.2026 00:00:00", L"15.06.2026 12:00:00", "hours left: 0"},
        {L"01.01.2026 00:00:00", L"13.06.2026 11:00:00", "days since the end: 2"},
        {L"15.06.2026 13:00:00", L"01.01.2030 00:00:00", "days until the start: 1"},
        {L"01.01.2026 00:00:00", L"31.12.9999 23:59:59", ""},
        {L"01.01.2030 00:00:00", L"01.01.2026 00:00:00", ""},
        {L"", L"nonsense", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ca::RemainingText(ca::ReadUtc(c.from), ca::ReadUtc(c.to), now), c.text);
    }
}

TEST_F(ViewerModelTest, SaysInWhichZoneATimeIs) {
    EXPECT_EQ(ca::ZonedTime({L"01.07.2026 03:00:00", L"30.06.2026 23:30:00"}),
              "01.07.2026 03:00:00 UTC+03:30");
    EXPECT_EQ(ca::ZonedTime({L"30.06.2026 19:00:00", L"01.07.2026 00:00:00"}),
              "30.06.2026 19:00:00 UTC-05:00");
    EXPECT_EQ(ca::ZonedTime({L"01.07.2026 03:00:00", L"01.07.2026 03:00:00"}),
              "01.07.2026 03:00:00 UTC");
    EXPECT_EQ(ca::ZonedTime({L"soon", L""}), "soon");
}

TEST_F(ViewerModelTest, TellsWhatToBewareOfInNames) {
    const struct {
        const char* name;
        const char* mark;
    } cases[] = {
        {"Иванов Ivan, ООО-Soft 2", ""},
        {"Р\xD0\xB0ypal", "Letters of several alphabets in one word: \"Раypal\" (Latin, Cyrillic)"},
        {"ΑBC, x", "Letters of several alphabets in one word: \"ΑBC\" (Latin, Greek)"},
        {"a\\u202eb", "Holds characters that do not show; they are written as \\u and a number."},
        {"a\\\\u202eb", ""},  // a backslash of its own
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ca::NameMarks(c.name), c.mark) << c.name;
    }
}

}  // namespace
