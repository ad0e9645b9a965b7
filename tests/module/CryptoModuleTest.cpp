#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/InitString.h"
#include "common/Lng.h"
#include "module/CallContext.h"
#include "module/CryptoModule.h"
#include "records/StringArray.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <functional>
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

// Texts of four characters, which a stranger chooses so that the standard library's hash, whose
// steps can be run backwards, gives all the same value.
std::vector<std::wstring> Texts(bool colliding) {
    constexpr std::uint64_t kFactor = 0xC6A4A7935BD1E995;
    constexpr std::uint64_t kStart = 0xC70F6907 ^ 16 * kFactor;
    const auto mixed = [](std::uint64_t value) { return value ^ (value >> 47); };
    std::uint64_t inverse = kFactor;  // modulo 2^64; each step doubles the right bits
    for (int i = 0; i < 6; ++i) {
        inverse *= 2 - kFactor * inverse;
    }
    std::vector<std::wstring> texts;
    for (std::uint64_t i = 1; i <= 8000; ++i) {
        const std::uint64_t first = (i << 36) | i;
        const std::uint64_t after = (kStart ^ mixed(first * kFactor) * kFactor) * kFactor;
        const std::uint64_t second = mixed((after ^ 0x123456789ABCDEF) * inverse) * inverse;
        const std::uint64_t blocks[] = {first, colliding ? second : first + 1};
        std::wstring text(4, L'\0');
        std::memcpy(text.data(), blocks, sizeof(blocks));
        if (text.find(L'\0') == std::wstring::npos) {
            texts.push_back(text);
        }
    }
    return texts;
}

template <class Function>
double Seconds(const Function& function, const std::vector<std::wstring>& texts) {
    const auto start = std::chrono::steady_clock::now();
    function(texts);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
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

TEST_F(CryptoModuleTest, TextsThatCollideInAKnownHashCostNoMore) {
    const std::vector<std::wstring> ordinary = Texts(/*colliding=*/false);
    const std::vector<std::wstring> colliding = Texts(/*colliding=*/true);
    ASSERT_EQ(std::hash<std::wstring>()(colliding.front()),
              std::hash<std::wstring>()(colliding.back()));
    const auto asClients = [this](const std::vector<std::wstring>& texts) {
        for (const std::wstring& text : texts) {
            m_module.Clients().AcquireContext(text);
        }
        EXPECT_EQ(m_module.Clients().Count(), texts.size());
        m_module.CleanUp();
    };
    const auto asStores = [this](const std::vector<std::wstring>& texts) {
        ca::StoreAddresses stores;
        for (const std::wstring& text : texts) {
            stores.emplace_back(text.c_str(), /*machine=*/false);
        }
        m_module.Clients().ReplaceStores(L"", stores);
        ca::CryptPacket packet;
        Run(packet, 37);
        const auto* names =
            dynamic_cast<const ca::StringArray*>(packet.Response().GetObj(ca::kTypeStores));
        ASSERT_NE(names, nullptr);
        EXPECT_EQ(names->items.size(), texts.size() + 2);
    };
    for (const auto& use :
         std::vector<std::function<void(const std::vector<std::wstring>&)>>{asClients, asStores}) {
        const double wanted = Seconds(use, ordinary);
        EXPECT_LT(Seconds(use, colliding), 10 * wanted);
    }
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
