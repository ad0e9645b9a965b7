// What the log tells an operator of requests that failed.

#include "tests/common/SampleObjects.h"
#include "tests/module/ModuleLibrary.h"

#include <gmock/gmock.h>

#include <optional>
#include <regex>

namespace {

using testing::HasSubstr;

constexpr const char* kCrl = kSampleCrl;
constexpr const char* kCertificate = kSampleCertificate;
constexpr const char* kShort = "\x30\x05\x02\x01\x01";  // an octet is missing

struct FailingCase {
    std::string members;             ///< of the request
    std::optional<std::string> raw;  ///< its file data
    unsigned code;
    const wchar_t* file;    ///< where it failed
    const wchar_t* detail;  ///< part of the words in the log
};

std::string Mode(int mode, const std::string& rest = {}) {
    return "\"mode\":" + std::to_string(mode) + rest;
}

// An enveloped message with something in the place of its recipients.
std::string Envelope(std::string recipients) {
    const auto tlv = [](char tag, const std::string& content) {
        return std::string{tag, static_cast<char>(content.size())} + content;
    };
    const std::string type = "\x06\x09\x2A\x86\x48\x86\xF7\x0D\x01\x07\x03";
    return tlv(0x30, type + tlv('\xA0', tlv(0x30, "\x02\x01\x02" + std::move(recipients))));
}

class TracesTest : public LibraryTest {
  protected:
    // The error lines of one request.
    std::vector<LogLine> Errors(const FailingCase& c) {
        LogRecorder::Take();
        const Answer answer = c.raw ? CallRaw(c.members, *c.raw) : Call("{" + c.members + "}");
        EXPECT_EQ(answer.Code(), c.code);
        std::vector<LogLine> lines = LogRecorder::Take();
        std::erase_if(lines, [](const LogLine& line) { return !line.isError; });
        return lines;
    }
};

// Two lines of one position: the words, then the code's text.
void ExpectReport(const std::vector<LogLine>& lines, const FailingCase& c) {
    ASSERT_EQ(lines.size(), 2U);
    std::wsmatch match;
    ASSERT_TRUE(std::regex_match(lines[0].text, match, std::wregex(L"(\\w+\\.cpp:\\d+: )(.*)")))
        << testing::PrintToString(lines[0].text);
    EXPECT_EQ(match[1].str().find(c.file), 0U) << testing::PrintToString(lines[0].text);
    EXPECT_THAT(match[2].str(), HasSubstr(c.detail));
    EXPECT_EQ(lines[1].text.find(match[1].str()), 0U) << testing::PrintToString(lines[1].text);
    EXPECT_GT(lines[1].text.size(), match[1].str().size());
}

}  // namespace

TEST_F(TracesTest, EveryFailureOfAnOperationIsReportedOnce) {
    std::vector<FailingCase> cases;
    for (const int mode : {15, 21, 23, 29, 41, 44, 45, 57}) {
        cases.push_back({Mode(mode), {}, 16118, L"RequestPayload.cpp:", L"No file data"});
    }
    for (const int mode : {15, 21, 22, 23, 29, 41, 44, 45, 57}) {
        cases.push_back({Mode(mode), "\n", 16118, L"RequestPayload.cpp:", L"octets: 1"});
    }
    for (const int mode : {21, 22, 45}) {
        const wchar_t* const file = L"CertificateDescriptions.cpp:";
        cases.push_back({Mode(mode), kCrl, 16113, file,
                         L"Object 1 \"X509 CRL\": TBSCertificate.validity: unexpected element, "
                         L"tag 17, offset "});
        cases.push_back({Mode(mode), "-----BEGIN A-----\n?\n-----END A-----\n" + std::string(kCrl),
                         16113, file, L"Object 1 \"A\": not Base64; Object 2 \"X509 CRL\": "});
        cases.push_back({Mode(mode), kShort, 16113, file,
                         L"Object 1: Certificate: element longer than its container, offset 0"});
    }
    cases.push_back({Mode(23), kCertificate, 16306, L"RevocationLists.cpp:",
                     L"Object 1 \"CERTIFICATE\": TBSCertList"});
    cases.push_back(
        {Mode(41), kSampleMessage, 16306, L"Recipients.cpp:", L"Object 1 \"CMS\": Content: "});
    cases.push_back({Mode(41), Envelope({0x02, 0x01, 0x00}), 16306, L"RecipientsFill.cpp:",
                     L"EnvelopedData.recipientInfos: unexpected element, tag 02, offset 5"});
    cases.push_back({Mode(41), Envelope({0x31, 0x05, 0x00}), 16306, L"RecipientsFill.cpp:",
                     L"EnvelopedData.recipientInfos: element longer than its container, offset 5"});
    cases.push_back({Mode(41), Envelope({0x31, 0x00}), 16253, L"RecipientsFill.cpp:",
                     L"Recipients that are not named: 0"});
    for (const int mode : {15, 29, 44, 57}) {
        const wchar_t* const file = L"SignatureDescriptions.cpp:";
        cases.push_back({Mode(mode), kSampleEnvelope, 16308, file, L"1 \"CMS\": Content: "});
        cases.push_back({Mode(mode), kShort, 16308, file,
                         L"1: ContentInfo: element longer than its container, offset 0"});
    }
    for (const int mode : {14, 27, 56}) {
        cases.push_back({Mode(mode), "-----BEGIN CMS-----?", 16118, L"Base64.cpp:", L"not Base64"});
    }
    cases.push_back({Mode(22, R"(,"senderCertId":"x\ny")"),
                     {},
                     16102,
                     L"ProviderCertificate.cpp:",
                     L"No certificate with the identifier \"x?y\""});
    cases.push_back({Mode(57, R"(,"signatures":["AAAA","AAAA"])"),
                     {},
                     16308,
                     L"SignatureDescriptions.cpp:",
                     L"; Object 2: ContentInfo: "});
    cases.push_back({Mode(36), {}, 16118, L"Stores.cpp:", L"No store address"});
    cases.push_back({Mode(36, R"(,"storeAddresses":[{"location":"sscu","name":"MY"},)"
                              R"({"location":"attic","name":"a\u202eb\u0085"}])"),
                     {},
                     16252,
                     L"Stores.cpp:",
                     L": #2 \"a?b?\""});
    cases.push_back({Mode(39), {}, 16131, L"ShowCertificate.cpp:", L"without windows"});
    cases.push_back({Mode(23, R"(,"extInitParams":"CRL_COUNT=x")"), kCrl, 16268, L"InitString.cpp:",
                     L"Wrong initialisation parameter: CRL_COUNT"});
    cases.push_back({Mode(23, R"(,"extInitParams":"A=1;B")"), kCrl, 16268, L"InitString.cpp:",
                     L"Wrong initialisation parameter: #2"});
    for (const FailingCase& c : cases) {
        SCOPED_TRACE(c.members + "  " + c.raw.value_or("-"));
        ExpectReport(Errors(c), c);
    }
}

// Such a failure keeps its own position, whose text is empty; the words stand in a line before it.
TEST_F(TracesTest, AFailureOfTheRequestItselfSaysItsKey) {
    const struct {
        const char* members;
        unsigned code;
        const wchar_t* file;
        const wchar_t* detail;
    } cases[] = {
        {R"("storeAddress":{"location":"sscu","name":5})", 16300, L"JsonFields.cpp:",
         L": \"storeAddress\", \"name\": wrong JSON type"},
        {R"("storeAddresses":[{"location":"sscu","name":"MY"},7])", 16300, L"JsonFields.cpp:",
         L": \"storeAddresses\": wrong JSON type"},
        {R"("config":{"LogMode":"x"})", 16300, L"ConfigFileParser.cpp:",
         L": \"config\", \"LogMode\": wrong JSON type"},
        {R"("PKIConfig":{"crl":7})", 16300, L"PKIConfigFileParser.cpp:", L", wrong JSON type: crl"},
        {R"("fileData":7)", 16300, L"Blob.cpp:", L": \"fileData\": wrong JSON type"},
        {R"("params":"-")", 16118, L"Base64.cpp:", L": \"params\": not Base64"},
        {R"("fileDataSize":3)", 16118, L"CryptPacket.cpp:",
         L": \"fileDataSize\": the request ends before so many octets: 3"},
        {R"("fileDataUrl":"ftp://a/")", 16268, L"HttpUrl.cpp:",
         L": \"fileDataUrl\": no http or https address"},
        {R"("fileDataUrl":"http://a/","extInitParams":"INET_TIMEOUT=x")", 16268, L"InitString.cpp:",
         L"Wrong initialisation parameter: INET_TIMEOUT"},
        // No libcurl stands beside this program.
        {R"("fileDataUrl":"http://127.0.0.1/")", 16302, L"CurlLibrary.cpp:", L"Qlocurl.so: cannot"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.members);
        std::vector<LogLine> lines = Errors({c.members, {}, c.code, c.file, c.detail});
        std::erase(lines, LogLine{L"Sending data is not possible", true});
        ASSERT_EQ(lines.size(), 3U);
        EXPECT_EQ(lines[0].text.find(c.file), 0U) << testing::PrintToString(lines[0].text);
        EXPECT_THAT(lines[0].text, HasSubstr(c.detail));
        EXPECT_EQ(lines[1].text, L"CryptoModule.cpp:53: ");
        EXPECT_EQ(lines[2].text.find(L"CryptoModule.cpp:53: ERROR "), 0U);
    }
}

TEST_F(TracesTest, AnIdCannotStartALineOfItsOwn) {
    Call(R"({"mode":51,"clientId":"a\r\nERROR\u0000\u2028b","senderCertId":"c\u202e\u009bd"})");
    const std::vector<LogLine> lines = LogRecorder::Take();
    ASSERT_GE(lines.size(), 4U);
    EXPECT_EQ(lines[1].text, L"clientId =  a??ERROR??b");
    EXPECT_EQ(lines[3].text, L"Received cert id \"c??d\"");
}

TEST_F(TracesTest, TheProvidersCertificateIsNotCalledVerified) {
    for (const char* language : {"En", "Ru"}) {
        SetConfig(std::string("Language=") + language + "\n");
        Init();
        for (const int mode : {22, 34}) {
            const Answer answer = Call("{" + Mode(mode) + "}");
            const auto& record = answer.json["certInfo"];
            EXPECT_EQ(record["ValidityNumber"].GetUint(), 16199U);
            EXPECT_EQ(record["Validity"].GetString(),
                      *language == 'E' ? std::string("Certificate was not verified")
                                       : "Сертификат не проверялся");
        }
    }
}
