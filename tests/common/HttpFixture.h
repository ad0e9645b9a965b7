#pragma once

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Http.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "tests/common/HttpTestServer.h"
#include "tests/common/TemporaryDir.h"

#include <gmock/gmock.h>

#include <mutex>
#include <string>
#include <vector>

inline std::mutex logMutex;
inline std::vector<std::wstring> logLines;

inline bool KeepLine(const wchar_t* line, bool) {
    const std::lock_guard lock(logMutex);
    logLines.emplace_back(line);
    return true;
}

inline std::wstring AllLines() {
    const std::lock_guard lock(logMutex);
    std::wstring all;
    for (const std::wstring& line : logLines) {
        all += line + L'\n';
    }
    return all;
}

inline const std::string kOk = ca_test::Ok("hello");

/// Transfers with a log of their own, in English.
class HttpTest : public testing::Test {
  protected:
    void SetUp() override {
        std::vector<std::wstring> customTexts;
        LogInit(KeepLine, customTexts);
        logLines.clear();
        SetZORNALng(L"en");
        m_settings.totalTimeoutMs = 10000;
    }
    void TearDown() override {
        std::vector<std::wstring> customTexts;
        LogInit(nullptr, customTexts);
        SetZORNALng(L"ru");
    }

    /// The body, or "error <code>".
    std::string Fetch(const std::wstring& url) {
        ca::BytePtr body;
        unsigned length = 77;
        try {
            ca::Http::GetBlob(url, m_settings, body, length);
        } catch (const ca::Exception& e) {
            EXPECT_FALSE(body) << "a failure leaves the result as it was";
            EXPECT_EQ(77U, length);
            return "error " + std::to_string(e.errorCode);
        }
        EXPECT_TRUE(body);
        return std::string(body.Get(), body.Get() + length);
    }

    /// Empty after success, otherwise the exception's message; its code must be 16305.
    std::wstring Send(const std::wstring& url, std::string_view text) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
        try {
            ca::Http::Upload(url, {bytes, text.size()}, m_settings, m_settings.totalTimeoutMs);
        } catch (const ca::Exception& e) {
            EXPECT_EQ(ca::kErrUpload, e.errorCode);
            return e.message;
        }
        return {};
    }

    ca::HttpSettings m_settings;
};

/// The same with a throw-away root that is trusted.
class HttpsTest : public HttpTest {
  protected:
    void SetUp() override {
        HttpTest::SetUp();
        m_settings.caFile = ca::PathToWString(m_directory.Write("ca.pem", m_root.Pem()));
    }

    const ca_test::Identity m_root = ca_test::MakeRoot();
    const ca_test::Identity m_server = ca_test::MakeServer(m_root, "IP:127.0.0.1,DNS:host.invalid");
    const TemporaryDir m_directory;
};
