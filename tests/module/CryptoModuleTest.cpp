#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/InitString.h"
#include "common/Lng.h"
#include "module/CallContext.h"
#include "module/CryptoModule.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// What the log callback sees and does; it has no argument of its own.
std::vector<std::wstring> lines;
ca::CryptPacket* running = nullptr;
std::wstring initParams;
unsigned initParamsCode = 0;

bool Record(const wchar_t* line, bool) {
    lines.emplace_back(line);
    return true;
}

// Asks the running call for its parameters.
bool AskForParameters(const wchar_t*, bool) {
    if (running != nullptr && running->context != nullptr) {
        try {
            initParamsCode = 0;
            initParams = running->context->InitParams();
        } catch (const ca::Exception& failure) {
            initParamsCode = failure.errorCode;
        }
    }
    return true;
}

class CryptoModuleTest : public testing::Test {
  protected:
    CryptoModuleTest()
        : m_variable(
              "MOD_FOO_CONFIG",
              m_directory.Write("c.ini", "[Service settings]\nLanguage=En\nTSPTimeout=1234\n")
                  .c_str()) {}
    ~CryptoModuleTest() override {
        std::vector<std::wstring> none;
        LogInit(nullptr, none);
        SetZORNALng(L"ru");
        lines.clear();
        running = nullptr;
    }
    CryptoModuleTest(const CryptoModuleTest&) = delete;
    CryptoModuleTest& operator=(const CryptoModuleTest&) = delete;

    void Run(ca::CryptPacket& packet, int mode, LogCallback log = &Record) {
        ASSERT_TRUE(m_module.Init(log));
        lines.clear();
        running = &packet;
        packet.request.mode = mode;
        m_module.ProcessClientRequest(packet, /*interactive=*/true);
    }

    TemporaryDir m_directory;
    ScopedVariable m_variable;
    CCryptoModule m_module{/*silent=*/true};
};

}  // namespace

TEST_F(CryptoModuleTest, ACancelledCallEndsWithoutTextAndClosingLine) {
    ca::CryptPacket packet;
    Run(packet, 38, [](const wchar_t* line, bool isError) {
        if (std::wstring_view(line) == L"> EnumCerts") {
            running->Cancel();
        }
        return Record(line, isError);
    });
    EXPECT_TRUE(packet.response.errorMessage.empty());
    EXPECT_EQ(lines, (std::vector<std::wstring>{L"clientId =  ", L"> EnumCerts"}));
    packet.Cancel();  // the call's token is gone; nothing happens
    EXPECT_EQ(packet.cancellation, nullptr);
    EXPECT_EQ(packet.context, nullptr);
}

TEST_F(CryptoModuleTest, ACallAsksForItsParametersWhenItNeedsThem) {
    ca::CryptPacket packet;
    packet.request.extInitParams = L"TSP_INET_TIMEOUT=5";
    Run(packet, 38, &AskForParameters);
    EXPECT_EQ(initParams, m_module.BaseInitParams() + L"TSP_INET_TIMEOUT=5;");
    EXPECT_NE(initParams.find(L"TSP_INET_TIMEOUT=1234;"), std::wstring::npos);

    ca::CryptPacket broken;
    broken.request.extInitParams = L";;=";
    Run(broken, 38, &AskForParameters);
    EXPECT_EQ(initParamsCode, ca::kErrParameters);
    EXPECT_EQ(broken.response.errorCode, ca::kErrParameters);
}

TEST_F(CryptoModuleTest, TheRequestWinsOverTheFiles) {
    m_directory.Write("QetCryptoSvcPKIConfig.json",
                      R"({"tsp":{"servers":[{"url":"http://tsp/","timeout":77}]}})");
    ca::CryptPacket packet;
    const std::string request = R"({"certInclude":1,"extInitParams":"TSP_URL=http://own/",)"
                                R"("config":{"TSPTimeout":5},)"
                                R"("PKIConfig":{"tsp":{"servers":[]},"ocsp":{"enabled":true}}})";
    packet.request.FromJson(request.data(), static_cast<unsigned>(request.size()));
    Run(packet, 38, &AskForParameters);
    const ca::InitString items(initParams);
    EXPECT_EQ(items.GetText(L"TSP_INET_TIMEOUT"), L"77");
    EXPECT_EQ(items.GetText(L"TSP_URL"), L"http://own/");
    EXPECT_EQ(items.GetText(L"CERT_INCLUDE"), L"1");
    // Its records are no settings of the module.
    EXPECT_EQ(items.GetText(L"OCSP_CHECK"), L"0");
    EXPECT_EQ(m_module.PkiConfig().Settings().tsp.servers.size(), 1U);
}

TEST_F(CryptoModuleTest, OnlyModesThatUseAClientAcquireOne) {
    for (const int mode : {11, 24, 42, 43}) {
        ca::CryptPacket packet;
        packet.request.clientId = L"x";
        Run(packet, mode);
        EXPECT_EQ(m_module.Clients().Count(), 0U) << mode;
    }
    ca::CryptPacket test;
    test.request.clientId = L"x";
    test.request.test = true;
    Run(test, 43);
    EXPECT_EQ(m_module.Clients().Count(), 1U);
    ca::CryptPacket unknown;
    unknown.request.clientId = L"y";
    Run(unknown, 13);
    EXPECT_EQ(m_module.Clients().Count(), 2U);
    m_module.CleanUp();
    EXPECT_EQ(m_module.Clients().Count(), 0U);
}
