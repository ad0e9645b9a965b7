#include "common/CurlLibrary.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Http.h"
#include "common/Lng.h"
#include "common/Log.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace {

std::vector<std::wstring> logLines;

bool KeepLine(const wchar_t* line, bool) {
    logLines.emplace_back(line);
    return true;
}

std::uint32_t FetchCode() {
    try {
        ca::BytePtr body;
        unsigned length = 0;
        ca::Http::GetBlob(L"http://127.0.0.1:1/", {}, body, length);
        return 0;
    } catch (const ca::Exception& e) {
        return e.errorCode;
    }
}

std::uint32_t SendCode() {
    try {
        ca::Http::Upload(L"http://127.0.0.1:1/", {}, {}, 1000);
        return 0;
    } catch (const ca::Exception& e) {
        return e.errorCode;
    }
}

class HttpMissingLibraryTest : public testing::Test {
  protected:
    void SetUp() override {
        std::vector<std::wstring> customTexts;
        LogInit(KeepLine, customTexts);
        SetZORNALng(L"en");
        std::filesystem::remove(m_library);
    }
    void TearDown() override {
        std::filesystem::remove(m_library);
        std::vector<std::wstring> customTexts;
        LogInit(nullptr, customTexts);
        SetZORNALng(L"ru");
    }

    const std::filesystem::path m_library = ca::CurlLibraryPath();
};

// One case: a library once loaded stays for the process.
TEST_F(HttpMissingLibraryTest, FailsUntilTheLibraryIsThere) {
    EXPECT_EQ(ca::kErrCurlInit, FetchCode());
    EXPECT_EQ(ca::kErrCurlInit, SendCode());
    EXPECT_THAT(logLines, testing::Each(L"Sending data is not possible"));

    std::ofstream(m_library) << "not a library";
    EXPECT_EQ(ca::kErrCurlInit, FetchCode());
    std::filesystem::remove(m_library);

    // A library without the functions that are needed.
    std::filesystem::create_symlink(MOD_FOO_OTHER_LIBRARY, m_library);
    EXPECT_EQ(ca::kErrCurlInit, FetchCode());
    std::filesystem::remove(m_library);

    std::filesystem::create_symlink(MOD_FOO_LIBCURL, m_library);
    EXPECT_EQ(ca::kErrConnection, FetchCode());
    std::filesystem::remove(m_library);
    EXPECT_EQ(ca::kErrConnection, FetchCode());
}

}  // namespace
