#include "common/StdStr.h"

#include <gtest/gtest.h>

namespace {

TEST(StdStrTest, TakesNullAsTheEmptyText) {
    const wchar_t* const none = nullptr;
    EXPECT_EQ(L"", CStdStr<wchar_t>(none));
}

TEST(StdStrTest, FormatsIntoItself) {
    CStdStr<wchar_t> text(L"MY");
    text.Fmt(L"%ls-%d", text.c_str(), 42);
    EXPECT_EQ(L"MY-42", text);
    text.Fmt(nullptr);
    EXPECT_EQ(L"", text);
}

TEST(StdStrTest, CutsAtAKiloCharacterBeyondTheFormat) {
    const std::wstring argument(5000, L'x');
    CStdStr<wchar_t> text;
    text.Fmt(L"<%ls>", argument.c_str());
    // The limit of 5 + 1023 counts the NUL.
    EXPECT_EQ(L"<" + argument.substr(0, 1026), text);
    text.Fmt(L"%ls", argument.substr(0, 1025).c_str());
    EXPECT_EQ(argument.substr(0, 1025), text);
}

}  // namespace
