#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/CryptoModule.h"
#include "records/FileData.h"
#include "records/Payload.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/SampleObjects.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

const Octets kAlgorithm = Algorithm("1.2.840.10045.4.3.2");
const Octets kEmptyName = Tlv(0x30, Octets());
const Octets kSignature = Tlv(0x03, {0x00, 0x01});

Octets RevocationList() {
    const Octets date = Tlv(0x17, Text("240101000000Z"));
    const Octets entries =
        Tlv(0x30, {Tlv(0x30, {{0x02, 0x01, 0x11}, date}), Tlv(0x30, {{0x02, 0x01, 0x22}, date}),
                   Tlv(0x30, {{0x02, 0x01, 0x33}, date})});
    return Tlv(0x30, {Tlv(0x30, {kAlgorithm, kEmptyName, date, entries}), kAlgorithm, kSignature});
}

Octets AttributeCertificate() {
    const Octets names = Tlv(0x30, Tlv(0x82, Text("a.example")));
    const Octets info = Tlv(0x30, {Tlv(0xA1, names), names, kAlgorithm, {0x02, 0x01, 0x07}});
    return Tlv(0x30, {info, kAlgorithm, kSignature});
}

// The DER of the sample in a PEM block.
Octets Sample(const char* pem) {
    Octets text = Text(pem);
    const std::vector<ca::PayloadItem> items = ca::DecodePayload(text);
    return {items.front().octets.begin(), items.front().octets.end()};
}

// A message that carries a list, and certificates or not, and nothing else (RFC 5652, 5.1).
Octets Message(const Octets& list, const Octets& certificates = {}) {
    const Octets content = Tlv(0x30, Oid("1.2.840.113549.1.7.1"));
    const Octets signedData = Tlv(0x30, {{0x02, 0x01, 0x01},
                                         Tlv(0x31, Octets()),
                                         content,
                                         certificates,
                                         Tlv(0xA1, list),
                                         {0x31, 0x00}});
    return Tlv(0x30, {Oid("1.2.840.113549.1.7.2"), Tlv(0xA0, signedData)});
}

Octets Pem(const char* label, const Octets& der) {
    std::string base64;
    ca::Base64Encode(der.data(), static_cast<unsigned>(der.size()), base64);
    return Text(std::string("text around\n-----BEGIN ") + label + "-----\n" + base64 +
                "\n-----END " + label + "-----\n");
}

class DescribeOperationsTest : public testing::Test {
  protected:
    DescribeOperationsTest()
        : m_variable("MOD_FOO_CONFIG",
                     m_directory.Write("c.ini", "[Service settings]\nLanguage=En\n").c_str()) {}
    ~DescribeOperationsTest() override {
        std::vector<std::wstring> none;
        LogInit(nullptr, none);
        SetZORNALng(L"ru");
    }
    DescribeOperationsTest(const DescribeOperationsTest&) = delete;
    DescribeOperationsTest& operator=(const DescribeOperationsTest&) = delete;

    // The answer's text; `code` is the error code that it must have.
    std::string Answer(int mode, const Octets& payload, std::uint32_t code,
                       const wchar_t* parameters = L"") {
        ca::CryptPacket packet;
        EXPECT_TRUE(m_module.Init([](const wchar_t*, bool) { return true; }));
        packet.request.mode = mode;
        packet.request.extInitParams = parameters;
        auto data = std::make_unique<ca::FileData>();
        data->Assign(payload.data(), static_cast<std::uint32_t>(payload.size()));
        packet.Request().SetObject(data.release(), /*clear=*/true);
        m_module.ProcessClientRequest(packet, /*interactive=*/true);
        EXPECT_EQ(code, packet.response.errorCode);
        ca::JsonBuffer text;
        packet.response.ToJson(text);
        return {text.GetString(), text.GetSize()};
    }

    TemporaryDir m_directory;
    ScopedVariable m_variable;
    CCryptoModule m_module{/*silent=*/true};
};

constexpr int kGetCertInfo = 22;
constexpr int kGetCrl = 23;
constexpr int kGetSignInfo = 29;
constexpr int kGetRecipients = 41;

// Of what a payload holds beside what was asked for nothing goes away unsaid.
TEST_F(DescribeOperationsTest, SaysWhatElseThereIs) {
    const Octets list = RevocationList();
    const Octets holder = AttributeCertificate();
    const Octets certificate = Sample(kSampleCertificate);
    const Octets damaged = Text("\n-----BEGIN X509 CRL-----\n?\n-----END X509 CRL-----\n");
    const struct {
        int mode;
        Octets payload;
        std::string others;
    } cases[] = {
        {kGetCrl, Join({list, {0x0A}}),
         "Object 1, offset " + std::to_string(list.size()) + ": 1 octet"},
        {kGetCrl, Join({Pem("X", holder), Pem("X509 CRL", list), Pem("X509 CRL", list)}),
         "Object 1 \\\"X\\\": attribute certificate\\n"
         "Not described: Object 3 \\\"X509 CRL\\\": certificate revocation list"},
        {kGetCrl, Join({Pem("X509 CRL", list), damaged}), "Object 2 \\\"X509 CRL\\\": not Base64"},
        {kGetCertInfo, Join({certificate, list, {0x04, 0x80}}),
         "Object 1, offset " + std::to_string(certificate.size()) +
             ": certificate revocation list\\nNot described: Object 1, offset " +
             std::to_string(certificate.size() + list.size()) + ": 2 octets"},
        {kGetCertInfo, Message(list, Tlv(0xA0, Join({Tlv(0xA2, Text("x")), {0xFF}, certificate}))),
         "Object 1, offset 45: attribute certificate\\nNot described: Object 1, offset 48: 1 octet"
         "\\nNot described: Object 1, offset " +
             std::to_string(51 + certificate.size()) + ": certificate revocation list"},
        {kGetSignInfo, Join({Sample(kSampleMessage), holder}),
         "Object 1, offset " + std::to_string(Sample(kSampleMessage).size()) +
             ": attribute certificate"},
        {kGetRecipients, Join({Pem("A", Sample(kSampleEnvelope)), Pem("B", holder)}),
         "Object 2 \\\"B\\\": attribute certificate"},
        {kGetCertInfo, Join({holder, list}),
         "Object 1, offset " + std::to_string(holder.size()) + ": certificate revocation list"},
    };
    for (const auto& c : cases) {
        const std::string answer = Answer(c.mode, c.payload, 0);
        EXPECT_NE(std::string::npos, answer.find("Not described: " + c.others + "\""))
            << c.others << "\n"
            << answer;
    }
}

TEST_F(DescribeOperationsTest, GetCrlFindsTheListInEveryForm) {
    const Octets list = RevocationList();
    const Octets junk = Tlv(0x30, Octets());
    for (const Octets& payload :
         {list, Pem("X509 CRL", list), Message(list), Pem("PKCS7", Message(list)),
          Join({Pem("CERTIFICATE", junk), Pem("X509 CRL", list)})}) {
        const std::string answer = Answer(kGetCrl, payload, 0);
        EXPECT_NE(std::string::npos, answer.find(R"("crlInfo":{"Version":"V1")")) << answer;
        EXPECT_NE(std::string::npos, answer.find(R"("RevokedCount":3)")) << answer;
    }
    const std::string page = Answer(kGetCrl, list, 0, L"CRL_FIRST=1;CRL_COUNT=1;");
    EXPECT_NE(std::string::npos, page.find(R"("Revoked":[{"Serial":"22")")) << page;
    Answer(kGetCrl, AttributeCertificate(), ca::kErrBadData);
    Answer(kGetCrl, Text("no list"), ca::kErrBadData);
    Answer(kGetCrl, {}, ca::kErrNoArgumentData);
}

TEST_F(DescribeOperationsTest, GetCertInfoDescribesAnAttributeCertificate) {
    const Octets certificate = AttributeCertificate();
    for (const Octets& payload : {certificate, Pem("ATTRIBUTE CERTIFICATE", certificate)}) {
        const std::string answer = Answer(kGetCertInfo, payload, 0);
        EXPECT_NE(std::string::npos, answer.find(R"("attrCertInfo":{)")) << answer;
        EXPECT_NE(std::string::npos, answer.find(R"("HolderIssuer":"DNS: a.example")")) << answer;
    }
}

}  // namespace
