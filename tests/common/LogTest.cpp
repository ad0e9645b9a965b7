#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace {

using Lines = std::vector<std::pair<std::wstring, bool>>;

Lines lines;
bool answer = true;

bool Collect(const wchar_t* line, bool isError) {
    lines.emplace_back(line, isError);
    return answer;
}

class LogTest : public testing::Test {
  protected:
    LogTest() {
        lines.clear();
        answer = true;
        SetZORNALng(L"en");
        LogInit(Collect, m_noTexts);
    }
    ~LogTest() override {
        LogInit(nullptr, m_noTexts);
        SetZORNALng(L"ru");
    }

    std::vector<std::wstring> m_noTexts;
};

TEST_F(LogTest, DropsLinesWithoutACallback) {
    LogInit(nullptr, m_noTexts);
    EXPECT_FALSE(LogEvent(L"lost", /*isError=*/true));
    EXPECT_FALSE(ca::LogEventFmt(L"%d", /*isError=*/true, 1));
}

TEST_F(LogTest, PassesLineMarkAndAnswerThrough) {
    EXPECT_TRUE(LogEvent(L"one", /*isError=*/false));
    answer = false;
    EXPECT_FALSE(ca::LogEventFmt(L"%ls %d", /*isError=*/true, L"two", 2));
    EXPECT_EQ((Lines{{L"one", false}, {L"two 2", true}}), lines);
}

TEST_F(LogTest, KeepsTheCustomTexts) {
    std::vector<std::wstring> texts = {L"a", L"b"};
    EXPECT_TRUE(LogInit(Collect, texts));
    EXPECT_EQ(texts, ca::GlobalErrorMessageHelper().CustomTexts());
}

TEST_F(LogTest, ReportsAnErrorInTwoLines) {
    ca::LogError(L"open failed", L"config:42", 16301, /*throwIt=*/false);
    EXPECT_EQ(
        (Lines{{L"config:42: open failed", true}, {L"config:42: ERROR File not found.", true}}),
        lines);
    try {
        ca::LogError(nullptr, L"here:1", 16301, /*throwIt=*/true);
        FAIL() << "nothing was thrown";
    } catch (const ca::Exception& e) {
        EXPECT_EQ(16301U, e.errorCode);
        EXPECT_EQ(L"File not found.", e.message);
    }
    EXPECT_EQ(L"here:1: ", lines.at(2).first);
}

TEST_F(LogTest, LogsTheBareNumberOfACodeWithoutText) {
    ca::LogError(L"", L"here:1", ca::kErrPrivateKeyAccess, /*throwIt=*/false);
    EXPECT_EQ(L"here:1: 50", lines.at(1).first);
    ca::LogError(L"", L"here:1", 0x80093102, /*throwIt=*/false);
    EXPECT_EQ(L"here:1: 0x80093102", lines.at(3).first);
}

TEST_F(LogTest, TextsFromOutsideCannotBreakALine) {
    using namespace std::string_literals;
    const std::pair<std::wstring, std::wstring> cases[] = {
        {L"Имя ё \U0001F600 ~", L"Имя ё \U0001F600 ~"},
        {L"a\r\nb\tc\x7F"s + L'\0' + L"d", L"a??b?c??d"},
        {L"\u0080\u0085\u009F|\u00A0|\u2028\u2029", L"???|\u00A0|??"},
        {L"\u061C\u200E\u200F\u202A\u202E\u2066\u2069|\u200D|\u2030", L"???????|?|\u2030"},
        {{wchar_t(0xD800), wchar_t(0xDFFF), wchar_t(0x110000), wchar_t(-1)}, L"????"},
    };
    for (const auto& [text, printable] : cases) {
        lines.clear();
        EXPECT_TRUE(ca::LogLine(text, /*isError=*/false));
        ca::LogError(text.c_str(), L"here:1", ca::kErrRecipientsHidden, /*throwIt=*/false);
        EXPECT_EQ(printable, lines.at(0).first);
        // The table's own line break stays.
        EXPECT_NE(lines.at(2).first.find(L"hidden.\r\nNo"), std::wstring::npos);
    }
}

TEST_F(LogTest, KnowsWhereAnExceptionArose) {
    const long line = __LINE__ + 2;
    try {
        throw ca::Exception(ca::kErrBadData);
    } catch (const ca::Exception& e) {
        EXPECT_EQ(L"LogTest.cpp:" + std::to_wstring(line), ca::RaisedAt(e));
    }
    // One that another thread made is known by the place of the catch.
    std::optional<ca::Exception> other;
    std::thread([&] { other.emplace(ca::kErrStore); }).join();
    EXPECT_EQ(L"LogTest.cpp:" + std::to_wstring(__LINE__), ca::RaisedAt(*other));
    EXPECT_THROW(ca::LogError(L"", L"here:1", 16301, /*throwIt=*/true), ca::ReportedException);
}

TEST_F(LogTest, RefusesANullLocation) {
    EXPECT_THROW(ca::LogError(L"", nullptr, 16301, /*throwIt=*/false), std::logic_error);
    EXPECT_TRUE(lines.empty());
}

TEST_F(LogTest, FormatsLongCyrillicLinesInTheCLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C");
    const std::wstring text(9000, L'Я');
    EXPECT_TRUE(ca::LogEventFmt(L"Имя: %ls.", /*isError=*/false, text.c_str()));
    // No letter, and one that the locale cannot read: an empty line, but a line.
    EXPECT_TRUE(ca::LogEventFmt(L"%s", /*isError=*/false, "\xFF"));
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ((Lines{{L"Имя: " + text + L".", false}, {L"", false}}), lines);
}

// Beyond every guess at its length a line is measured. Deliberate: glibc keeps some memory of each
// stream opened for a character set, so leak checkers do not run this one.
TEST_F(LogTest, FormatsALineBeyondEveryGuess) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the C library keeps memory of the measuring stream";
#endif
    const std::wstring text((std::size_t{1} << 24) + 1, L'\u0416');
    EXPECT_TRUE(ca::LogEventFmt(L"<%ls>", /*isError=*/false, text.c_str()));
    ASSERT_EQ(1U, lines.size());
    EXPECT_EQ(L"<" + text + L">", lines[0].first);
}

TEST_F(LogTest, NamesASourcePosition) {
    EXPECT_EQ(L"CryptoModule.cpp:53", ca::GetLineString("CryptoModule.cpp", 53, "build"));
    EXPECT_EQ(0U, std::wstring(CA_HERE).find(L"LogTest.cpp:"));
}

}  // namespace
