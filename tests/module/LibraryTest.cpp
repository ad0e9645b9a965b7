// The library as its host sees it: lifecycle, framing, modes, gate, languages.

#include "tests/module/ModuleLibrary.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <new>

namespace {

struct ModeCase {
    int mode;
    const wchar_t* logText;  // null: nothing is logged
    bool isGated;
    unsigned code;  // of an answer to a request with nothing but the mode
};

constexpr unsigned kNoData = 16118;
constexpr unsigned kServiceMode = 16131;

// The interface's operations, as hosts know them.
// clang-format off
constexpr ModeCase kModes[] = {
    {11, nullptr, true, 0},                {12, L"> Encrypt", true, 0},
    {14, L"> Sign", true, 0},              {15, L"> Verify", false, kNoData},
    {21, L"> SetCert", false, kNoData},
    {22, L"> GetCertInfo", false, 0},
    {23, L"> GetCRL", false, kNoData},
    {24, nullptr, false, 0},               {25, L"> CertValidation", false, 0},
    {26, L"> Encrypt", true, 0},           {27, L"> Sign", true, 0},
    {28, L"> CoSign", true, 0},            {29, L"> GetSignInfo", false, kNoData},
    {30, L"> ShowSign", true, 0},          {31, L"> StreamEncode", true, 0},
    {32, L"> StreamEncode", true, 0},      {33, L"> StreamDecoding", true, 0},
    {34, L"> GetCertInfo2", false, 0},     {35, L"> GetCert", false, 0},
    {36, L"> SetCurStore", false, kNoData},
    {37, L"> EnumStore", false, 0},        {38, L"> EnumCerts", false, 0},
    {39, L"> ShowCert", true, kServiceMode},
    {40, L"> TranslateCRL2", false, 0},
    {41, L"> GetRecipientsList", false, kNoData},
    {42, nullptr, false, 0},               {44, L"> GetSignType", false, kNoData},
    {45, L"> SetCert2", false, kNoData},
    {47, L"> GetCurStore", false, 0},      {50, L"> CreateHash", false, 0},
    {51, L"> SignRaw", true, 0},           {52, L"> VerifyRaw", false, 0},
    {56, L"> SignHash", true, 0},          {57, L"> GetSignInfo2", false, kNoData},
    {58, L"> SignHashRaw", true, 0},       {61, L"> ReleaseClient", false, 0},
    {65, L"> ParseCert", false, 0},
};
// clang-format on

// A payload that is logged: three octets of four characters each, again and again.
constexpr std::size_t kRepeats = std::size_t{2} << 20;

// The sanitizer keeps an octet of its own for eight of the program's.
#ifdef __SANITIZE_ADDRESS__
constexpr double kMostOfAPayload = 7 * 9.0 / 8;
#else
constexpr double kMostOfAPayload = 7;
#endif

// The most resident memory since the object was made.
class PeakMemory {
  public:
    PeakMemory() {
        std::ofstream("/proc/self/clear_refs") << 5;  // the peak starts anew
        m_before = Field("VmRSS:");
        EXPECT_NEAR(m_before, Field("VmHWM:"), 0.05 * m_before);
    }
    double Grown() const { return Field("VmHWM:") - m_before; }  ///< octets

  private:
    static double Field(const std::string& name) {
        std::ifstream status("/proc/self/status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with(name)) {
                return std::stod(line.substr(name.size())) * 1024;
            }
        }
        return 0;
    }

    double m_before;
};

std::string ModeRequest(unsigned mode, const char* rest = "") {
    return "{\"mode\":" + std::to_string(mode) + rest + "}";
}

bool HasLine(const std::vector<LogLine>& lines, const std::wstring& text, bool isError = false) {
    return std::find(lines.begin(), lines.end(), LogLine{text, isError}) != lines.end();
}

std::size_t ErrorLines(const std::vector<LogLine>& lines) {
    return static_cast<std::size_t>(
        std::count_if(lines.begin(), lines.end(), [](const LogLine& l) { return l.isError; }));
}

}  // namespace

TEST_F(LibraryTest, LogsItsStartAndTakesNullArguments) {
    Init();
    EXPECT_EQ(LogRecorder::Take(), (std::vector<LogLine>{{L"Module initialized", false}}));

    const ModuleLibrary& library = ModuleLibrary::Get();
    CMPacket packet{};
    library.process(nullptr, &packet);
    EXPECT_EQ(packet.response, nullptr);
    library.process(m_module, nullptr);
    library.free(nullptr);
    Init(1, nullptr);
    EXPECT_EQ(Call(ModeRequest(38)).Code(), 0U);
}

TEST_F(LibraryTest, WarnsOnceOfAConfigurationUnlessSilent) {
    RemoveConfig();
    for (const int silent : {1, 0xFF, 0x101}) {
        Init(silent);
        EXPECT_EQ(LogRecorder::Take().size(), 1U) << silent;
    }
    for (const int loud : {0, 0x100}) {  // only the low octet counts
        SCOPED_TRACE(loud);
        LogRecorder::Take();
        Init(loud);
        const std::vector<LogLine> lines = LogRecorder::Take();
        ASSERT_EQ(lines.size(), 2U);
        EXPECT_TRUE(lines[0].isError);
        EXPECT_EQ(lines[0].text.find(L"Не удалось прочитать файл настроек."), 0U);
        EXPECT_EQ(lines[0].text.find_first_of(L"\r\n"), std::wstring::npos);
        EXPECT_EQ(lines[1], (LogLine{L"Модуль инициализирован", false}));
        EXPECT_EQ(Call(ModeRequest(38)).Code(), 0U);
    }
}

TEST_F(LibraryTest, HonoursTheGoodPartOfABrokenConfiguration) {
    SetConfig("Language=En\nAllowServicePrivateKeyAccess=1\nHttpPort=oops\nLogMode=7\n");
    Init(0);
    const std::vector<LogLine> lines = LogRecorder::Take();
    EXPECT_EQ(lines, (std::vector<LogLine>{{L"Module initialized", false}})) << "no warning";
    EXPECT_EQ(Call(ModeRequest(51), /*interactive=*/false).Code(), 0U);
}

TEST_F(LibraryTest, WarnsOnceOfAPkiConfigurationUnlessSilent) {
    const struct {
        const char* file;
        const wchar_t* warning;  // null: none
    } cases[] = {
        {"{}", nullptr},
        {R"({"tsp":{"servers":[{"url":"http://tsp/","timeout":0}]},"crl":7})",
         L"Failed to read config file. Error message: Wrong values, their defaults are used: crl, "
         L"tsp.servers[0].timeout"},
        {"[1",
         L"Failed to read config file. Error message: PKI configuration file is not a JSON "
         L"object, position: "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        SetPkiConfig(c.file);
        for (const int silent : {1, 0}) {
            LogRecorder::Take();
            Init(silent);
            const std::vector<LogLine> lines = LogRecorder::Take();
            EXPECT_EQ(ErrorLines(lines), silent == 0 && c.warning != nullptr ? 1U : 0U);
            EXPECT_TRUE(ErrorLines(lines) == 0 || lines[0].text.starts_with(c.warning));
            EXPECT_EQ(lines.back(), (LogLine{L"Module initialized", false}));
            EXPECT_EQ(Call(ModeRequest(38)).Code(), 0U);
        }
    }
}

TEST_F(LibraryTest, MakesNoDialogWithoutAGuiApplication) {
    EXPECT_EQ(ModuleLibrary::Get().createDialog(), nullptr);
}

// The gate comes first, then the flag of a test. Parameters that break their grammar are a fault of
// every operation that would run, and of no other.
TEST_F(LibraryTest, RunsEveryModeThroughGateAndTestFlag) {
    for (unsigned flags = 0; flags < 16; ++flags) {
        const bool isPermitted = (flags & 1) != 0;
        const bool interactive = (flags & 2) != 0;
        const bool isTest = (flags & 4) != 0;
        const bool isMalformed = (flags & 8) != 0;
        SetConfig(isPermitted ? "Language=En\nAllowServicePrivateKeyAccess=1\n" : "Language=En\n");
        Init();
        const std::string rest = std::string(isTest ? ",\"test\":true" : "") +
                                 (isMalformed ? R"(,"extInitParams":"A=1;B")" : "");
        for (const ModeCase& c : kModes) {
            SCOPED_TRACE(testing::Message() << c.mode << " flags " << flags);
            LogRecorder::Take();
            const Answer answer =
                Call(ModeRequest(static_cast<unsigned>(c.mode), rest.c_str()), interactive);
            const std::vector<LogLine> lines = LogRecorder::Take();
            const bool isRefused = c.isGated && !isPermitted && !interactive;
            const bool runs = c.logText != nullptr && !isRefused && !isTest;
            EXPECT_EQ(answer.Code(), isRefused             ? 50U
                                     : isTest              ? 0U
                                     : runs && isMalformed ? 16268U
                                                           : c.code);
            ASSERT_FALSE(lines.empty());
            EXPECT_EQ(lines.front(), (LogLine{L"clientId =  ", false}));
            EXPECT_EQ(c.logText != nullptr && HasLine(lines, c.logText), runs && !isMalformed);
            EXPECT_TRUE(isMalformed || HasLine(lines, L"<") == !isTest);
        }
    }
}

TEST_F(LibraryTest, RefusesModesWithoutAnOperation) {
    std::vector<unsigned> unknown = {66, 255, 0x7FFFFFFF, 0x80000026, 0xFFFFFFFF};
    for (unsigned mode = 0; mode < 66; ++mode) {
        if (std::none_of(std::begin(kModes), std::end(kModes), [mode](const ModeCase& c) {
                return static_cast<unsigned>(c.mode) == mode;
            })) {
            unknown.push_back(mode);
        }
    }
    EXPECT_EQ(unknown.size(), 66 - std::size(kModes) + 5);
    for (const unsigned mode : unknown) {
        for (const char* rest : {"", ",\"test\":true", R"(,"extInitParams":"A=1;B")"}) {
            const Answer answer = Call(ModeRequest(mode, rest));
            EXPECT_EQ(answer.text,
                      R"({"errorCode":16303,"errorMessage":"ERROR Method not supported."})")
                << mode;
        }
    }
}

TEST_F(LibraryTest, AnswersInTheConfiguredLanguage) {
    SetConfig("Language=RU\n");
    Init();
    EXPECT_TRUE(HasLine(LogRecorder::Take(), L"Модуль инициализирован"));
    EXPECT_EQ(Call(ModeRequest(13)).Message(), "ERROR Метод не поддерживается.");
    EXPECT_EQ(Call(ModeRequest(11), /*interactive=*/false).text,
              R"({"errorCode":50,"errorMessage":""})");
}

TEST_F(LibraryTest, FramesTextAndRawData) {
    const Answer text = Call(R"({"mode":38,"clientId":"alice"})");
    EXPECT_EQ(text.text, R"({"errorCode":0,"errorMessage":"DONE","certificates":["FooCertId"]})");

    const Answer raw = CallRaw("\"mode\":14", std::string("\0\xFF payload", 10));
    EXPECT_EQ(raw.text, R"({"errorCode":0,"errorMessage":"DONE","fileDataSize":64})");
    EXPECT_EQ(raw.raw.size(), 64U);
    const Answer none = CallRaw("\"mode\":35", "");
    EXPECT_EQ(none.text, R"({"errorCode":0,"errorMessage":"DONE","fileDataSize":0})");

    const Answer base64 = Call(R"({"mode":14,"fileData":"SGVsbG8="})");
    EXPECT_EQ(base64.json["fileData"].GetStringLength(), 88U);
    EXPECT_TRUE(base64.raw.empty());
}

TEST_F(LibraryTest, CountsTheTerminatorOnlyBeforeRawData) {
    Init();
    std::string request = ModeRequest(35);
    CMPacket packet = Process(request.data(), request.size());
    EXPECT_EQ(packet.responseSize, std::string_view(packet.response).size());
    std::free(packet.response);

    request = std::string(R"({"mode":35,"fileDataSize":0})") + '\0';
    packet.hostData[0] = packet.hostData[1] = 0x0123456789ABCDEF;
    packet.request = request.data();
    packet.requestLength = static_cast<std::uint32_t>(request.size());
    ModuleLibrary::Get().process(m_module, &packet);
    EXPECT_EQ(packet.responseSize, std::string_view(packet.response).size() + 1);
    std::free(packet.response);
    EXPECT_EQ(packet.hostData[0], 0x0123456789ABCDEFU);
    EXPECT_EQ(packet.hostData[1], 0x0123456789ABCDEFU);
}

TEST_F(LibraryTest, FillsThePlaceholderResults) {
    EXPECT_EQ(Call(R"({"mode":52})").text,
              R"({"errorCode":0,"errorMessage":"DONE","verifyResult":{)"
              R"("SignatureVerifyResult":16199,)"
              R"("SignatureVerifyResultString":"Signature was not verified",)"
              R"("CertificateVerifyResult":16199,)"
              R"("CertificateVerifyResultString":"Certificate was not verified"}})");
    const Answer info = Call(R"({"mode":34})");
    EXPECT_STREQ(info.json["certInfo"]["Id"].GetString(), "FooCertId");
    EXPECT_STREQ(info.json["certInfo"]["Description"].GetString(), "Foo Subject");
    EXPECT_STREQ(info.json["certInfo"]["Issuer"].GetString(), "Foo Issuer");

    LogRecorder::Take();
    EXPECT_EQ(Call(R"({"mode":51,"senderCertId":"id \"1\""})").text,
              R"({"errorCode":0,"errorMessage":"DONE","fileData":""})");
    EXPECT_TRUE(HasLine(LogRecorder::Take(), L"Received cert id \"id \"1\"\""));
    EXPECT_EQ(Call(R"({"mode":27,"fileData":"SGVsbG8="})").Code(), 0U);
    EXPECT_TRUE(HasLine(LogRecorder::Take(), L"Signature message written to packet"));
}

TEST_F(LibraryTest, KeepsTheStoresOfEachClient) {
    const auto stores = [this](const std::string& client) {
        const Answer answer = Call("{\"mode\":47,\"clientId\":\"" + client + "\"}");
        EXPECT_EQ(answer.Code(), 0U);
        const std::size_t start = answer.text.find("\"storeAddresses\":");
        return answer.text.substr(start + 17, answer.text.size() - start - 18);
    };
    EXPECT_EQ(stores("a"), "[]");
    EXPECT_EQ(Call(R"({"mode":36,"clientId":"a","storeAddresses":[)"
                   R"({"location":"SSLM","address":"srv","name":"Root"},)"
                   R"({"location":"sscu","name":"my"}]})")
                  .Code(),
              0U);
    const std::string both = R"([{"location":"sslm","address":"\\\\srv","name":"Root"},)"
                             R"({"location":"sscu","address":"","name":"my"}])";
    EXPECT_EQ(stores("a"), both);
    EXPECT_EQ(stores("A"), "[]");
    EXPECT_EQ(Call(R"({"mode":37,"clientId":"a"})").text,
              R"({"errorCode":0,"errorMessage":"DONE","stores":["MY","ZORNATempStore","Root"]})");

    // A refusal keeps what was there.
    for (const char* refused : {R"("storeAddresses":[{"location":"sscu","name":"ok"},{}])",
                                R"("storeAddress":{"location":"nowhere","name":"x"})",
                                R"("currentStores":[{"name":"x"}])"}) {
        EXPECT_EQ(Call("{\"mode\":36,\"clientId\":\"a\"," + std::string(refused) + "}").Code(),
                  16252U);
    }
    for (const char* absent : {"", R"(,"storeAddresses":{})", R"(,"currentStores":7)"}) {
        EXPECT_EQ(Call("{\"mode\":36,\"clientId\":\"a\"" + std::string(absent) + "}").Code(),
                  kNoData);
    }
    EXPECT_EQ(stores("a"), both);

    EXPECT_EQ(Call(R"({"mode":36,"clientId":"a","storeAddress":{"name":"zornatempstore"}})").Code(),
              0U);
    EXPECT_EQ(stores("a"), R"([{"location":"","address":"","name":"zornatempstore"}])");
    EXPECT_EQ(Call(R"({"mode":36,"clientId":"a","currentStores":[]})").Code(), 0U);
    EXPECT_EQ(stores("a"), "[]");

    EXPECT_EQ(Call(R"({"mode":36,"clientId":"a","storeAddress":{"location":"sscu"}})").Code(), 0U);
    EXPECT_EQ(Call(R"({"mode":61,"clientId":"a"})").text,
              R"({"errorCode":0,"errorMessage":"DONE"})");
    EXPECT_EQ(stores("a"), "[]");
}

TEST_F(LibraryTest, KeepsTheStoresWhenNewOnesNeedTooMuchMemory) {
    SetPkiConfig(R"({"clients":{"maxMemory":65536}})");
    Init();
    const std::string set = R"({"mode":36,"storeAddresses":[{"location":"sscu","name":"old"})";
    EXPECT_EQ(Call(set + "]}").Code(), 0U);
    std::string many = set;
    for (int i = 0; i < 1000; ++i) {
        many += R"(,{"location":"sscu"})";
    }
    LogRecorder::Take();
    const Answer refused = Call(many + "]}");
    EXPECT_EQ(refused.Code(), 16268U);
    const std::string reason = "The stores need more memory than all clients may take";
    EXPECT_EQ(refused.Message(), "ERROR Incorrect parameters. " + reason);
    EXPECT_EQ(ErrorLines(LogRecorder::Take()), 2U);
    EXPECT_EQ(Call(ModeRequest(47)).json["storeAddresses"].Size(), 1U);
}

TEST_F(LibraryTest, LogsAPayloadOnlyInItsLogMode) {
    const std::wstring line = L"Request filedata : SGVsbG8=";
    for (const int mode : {2, 3}) {
        SetConfig("Language=En\nLogMode=" + std::to_string(mode) + "\n");
        Init();
        Call(R"({"mode":38,"fileData":"SGVsbG8="})");
        EXPECT_EQ(HasLine(LogRecorder::Take(), line), mode == 3);
    }
}

TEST_F(LibraryTest, LogsALargePayloadInLittleMemory) {
    SetConfig("LogMode=3\n");
    static std::size_t rightLines;
    rightLines = 0;
    Init(1, [](const wchar_t* line, bool) {  // keeps no copy
        std::wstring_view rest = line;
        const std::wstring_view prefix = L"Request filedata : ";
        if (rest.starts_with(prefix) && rest.ends_with(L"SA==")) {
            rest.remove_prefix(prefix.size());
            std::size_t at = 0;
            while (rest.substr(at, 4) == L"SGVs") {
                at += 4;
            }
            rightLines += at + 4 == rest.size() && rest.size() == kRepeats * 4 + 4 ? 1 : 0;
        }
        return true;
    });
    std::string request = R"({"mode":38,"fileDataSize":)" + std::to_string(kRepeats * 3 + 1) + "}";
    request += '\0';
    request.reserve(request.size() + kRepeats * 3 + 1);
    for (std::size_t i = 0; i < kRepeats; ++i) {
        request += "Hel";
    }
    request += 'H';
    const PeakMemory peak;
    std::free(Process(request.data(), request.size()).response);
    EXPECT_EQ(rightLines, 1U);
    EXPECT_LT(peak.Grown(), kMostOfAPayload * static_cast<double>(request.size()));
}

TEST_F(LibraryTest, ReportsAFailureOfTheRequestOnce) {
    Init();
    LogRecorder::Take();
    Call("{");
    EXPECT_EQ(LogRecorder::Take(),
              (std::vector<LogLine>{{L"CryptoModule.cpp:53: ", true},
                                    {L"CryptoModule.cpp:53: ERROR Error parsing JSON.", true}}));
    Call(ModeRequest(13));  // the dispatch's own refusals are answers only
    Call(ModeRequest(14), /*interactive=*/false);
    EXPECT_EQ(ErrorLines(LogRecorder::Take()), 0U);
    Call(ModeRequest(36));
    EXPECT_EQ(ErrorLines(LogRecorder::Take()), 2U);
}

TEST_F(LibraryTest, AnswersAnyExceptionAtTheBarrier) {
    Init(1, [](const wchar_t* line, bool) -> bool {
        if (std::wstring_view(line) == L"> EnumCerts") {
            throw std::bad_alloc();
        }
        return true;
    });
    EXPECT_EQ(Call(ModeRequest(38)).text,
              R"({"errorCode":16197,"errorMessage":"ERROR Execution error"})");
    EXPECT_EQ(Call(ModeRequest(37)).Code(), 0U);
}
