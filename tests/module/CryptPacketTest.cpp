#include "common/ConfigFileParser.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "module/CryptPacket.h"
#include "module/RecordTypes.h"
#include "records/CertInfo.h"
#include "records/SignInfo.h"
#include "records/StringArray.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

// A request text in a buffer that may be written to.
ca::CryptRequest Read(std::string text) {
    ca::CryptRequest request;
    request.FromJson(text.data(), static_cast<unsigned>(text.size()));
    return request;
}

std::string Octets(const ca::Blob& blob) {
    return {reinterpret_cast<const char*>(blob.data()), blob.size()};
}

std::string Payload(ca::CryptRequest& request) {
    const ca::FileData* data = ca::FindFileData(request.objects);
    return data != nullptr ? Octets(*data) : "(none)";
}

std::string Write(const ca::CryptResponse& response) {
    ca::JsonBuffer text;
    response.ToJson(text);
    return {text.GetString(), text.GetSize()};
}

}  // namespace

TEST(CryptRequestTest, ReadsEveryKeyIntoItsMember) {
    const ca::CryptRequest empty = Read("{}");
    EXPECT_EQ(empty.mode, 0);
    EXPECT_EQ(empty.present, 0U);
    EXPECT_TRUE(empty.objects.IsEmpty());
    EXPECT_FALSE(empty.currentStores.has_value());

    const ca::CryptRequest request = Read(
        R"({"redirected":true,"uploadUrl":"http://u","uri":"r","comment":"c","recipientCertId":"2",)"
        R"("senderCertId":"1","streamId":7,"signerIndex":6,"certInclude":5,)"
        R"("streamFinalChunk":true,"addSigner":true,"needExtraction":true,"isAttached":true,)"
        R"("test":true,"clientId":"\u043a\u0000b","extInitParams":"A=1;","mode":38,)"
        R"("currentStores":[{"name":"s"}],"signatures":["QUJD","QQ=="],"sendSignData":"Qg=="})");
    EXPECT_EQ(request.mode, 38);
    EXPECT_EQ(request.extInitParams, L"A=1;");
    EXPECT_EQ(request.clientId, std::wstring(L"\x43A\0b", 3));
    EXPECT_TRUE(request.test && request.isAttached && request.needExtraction && request.addSigner &&
                request.streamFinalChunk && request.redirected);
    EXPECT_EQ(request.certInclude, 5U);
    EXPECT_EQ(request.signerIndex, 6U);
    EXPECT_EQ(request.streamId, 7U);
    EXPECT_EQ(request.senderCertId, L"1");
    EXPECT_EQ(request.recipientCertId, L"2");
    EXPECT_EQ(request.comment, L"c");
    EXPECT_EQ(request.uri, L"r");
    EXPECT_EQ(request.uploadUrl, L"http://u");
    EXPECT_EQ(request.present, 255U);
    ASSERT_EQ(request.signatures.size(), 2U);
    EXPECT_EQ(Octets(request.signatures[0]) + Octets(request.signatures[1]), "ABCA");
    EXPECT_EQ(Octets(request.sendSignData), "B");
    ASSERT_TRUE(request.currentStores.has_value());
    EXPECT_EQ(request.currentStores->at(0).name, L"s");
}

TEST(CryptRequestTest, TellsAnAbsentFlagFromAFalseOne) {
    const struct {
        const char* text;
        std::uint32_t bit;
    } cases[] = {
        {R"({"test":false})", ca::kPresentTest},
        {R"({"isAttached":false})", ca::kPresentIsAttached},
        {R"({"needExtraction":false})", ca::kPresentNeedExtraction},
        {R"({"addSigner":false})", ca::kPresentAddSigner},
        {R"({"streamFinalChunk":false})", ca::kPresentStreamFinalChunk},
        {R"({"certInclude":0})", ca::kPresentCertInclude},
        {R"({"signerIndex":0})", ca::kPresentSignerIndex},
        {R"({"streamId":0})", ca::kPresentStreamId},
    };
    std::uint32_t next = 1;
    for (const auto& c : cases) {
        EXPECT_EQ(Read(c.text).present, c.bit) << c.text;
        EXPECT_EQ(c.bit, next);
        next *= 2;
    }
}

TEST(CryptRequestTest, PrefersTheHashAlgorithmToParams) {
    const ca::CryptRequest both = Read(R"({"params":"QUJD","hashAlg":"\u043a1"})");
    EXPECT_EQ(Octets(both.params), std::string("\x3A\x04\0\0\x31\0\0\0", 8));
    EXPECT_EQ(Octets(Read(R"({"params":"QUJD"})").params), "ABC");
}

TEST(CryptRequestTest, TakesTheFirstSourceOfFileData) {
    const std::string nul(1, '\0');
    const struct {
        std::string text;
        const char* payload;
        bool isBinary;
    } cases[] = {
        {R"({"fileData":"QUJD"})", "ABC", false},
        {R"({"fileData":""})", "", false},
        {R"({"fileDataSize":2,"fileData":"QUJD"})" + nul + "xyz", "xy", true},
        {R"({"fileDataEncodedSize":4,"fileData":"QUJD"})", "ABC", false},
        {R"({"fileDataEncodedSize":4,"fileData":"QUJD"})" + nul + "behind", "ABC", false},
        {R"({"fileDataEncodedSize":4,"fileDataSize":2,"fileData":"QUJD"})" + nul + "xyz", "xy",
         true},
        {R"({"fileDataSize":0})" + nul, "", true},
        {R"({"mode":1})", "(none)", false},
    };
    for (const auto& c : cases) {
        ca::CryptRequest request = Read(c.text);
        EXPECT_EQ(Payload(request), c.payload) << c.text;
        EXPECT_EQ(request.attachBinary, c.isBinary) << c.text;
    }
    EXPECT_THROW(Read(R"({"fileDataUrl":"gopher://x","fileDataSize":9})"), ca::Exception);
}

TEST(CryptRequestTest, PutsRecordsIntoTheContainer) {
    ca::CryptRequest request =
        Read(R"({"fileData":"QQ==","storeAddress":{"location":"sscu"},"storeAddresses":[{}],)"
             R"("config":{"HttpPort":99},"PKIConfig":{}})");
    EXPECT_EQ(Payload(request), "A");
    EXPECT_NE(request.objects.GetObj(ca::kTypeStoreAddress), nullptr);
    EXPECT_NE(request.objects.GetObj(ca::kTypeStoreAddresses), nullptr);
    EXPECT_NE(request.objects.GetObj(ca::kTypePkiConfig), nullptr);
    const auto* config =
        dynamic_cast<const ca::ConfigFileParser*>(request.objects.GetObj(ca::kTypeConfig));
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->GetHttpPort(), 99);
}

TEST(CryptResponseTest, WritesItsMembersInOrderAndReadsThemBack) {
    ca::CryptResponse response;
    EXPECT_EQ(Write(response), R"({"errorCode":0,"errorMessage":""})");
    response.errorCode = 4294967295U;
    response.errorMessage = L"\x43A\"\n";
    response.needCertId = L"need";
    response.streamId = 9;
    response.sendSignData.Assign("ABC", 3);
    response.isAttached = true;
    auto ids = std::make_unique<ca::StringArray>(ca::kTypeCertificates);
    ids->items = {L"1", L"2"};
    response.objects.SetObject(ids.release(), /*clear=*/false);
    response.objects.SetObject(std::make_unique<ca::SignInfos>().release(), /*clear=*/false);
    auto data = std::make_unique<ca::FileData>();
    data->Assign("xyz", 3);
    response.objects.SetObject(data.release(), /*clear=*/false);
    const std::string head =
        "{\"errorCode\":4294967295,\"errorMessage\":\"\xD0\xBA\\\"\\n\","
        "\"needCertId\":\"need\",\"streamId\":9,\"sendSignData\":\"QUJD\",";
    const std::string tail = R"("certificates":["1","2"],"signInfo":[],"isAttached":true})";
    const std::string text = Write(response);
    EXPECT_EQ(text, head + R"("fileData":"eHl6",)" + tail);

    ca::CryptResponse again;
    again.FromJson(text.data(), static_cast<unsigned>(text.size()));
    EXPECT_EQ(Write(again), text);

    response.attachBinary = true;
    std::string raw = Write(response);
    EXPECT_EQ(raw, head + R"("fileDataSize":3,)" + tail);
    raw += std::string("\0xyz", 4);
    ca::CryptResponse fromRaw;
    fromRaw.FromJson(raw.data(), static_cast<unsigned>(raw.size()));
    EXPECT_EQ(Octets(*fromRaw.RawFileData()), "xyz");
    EXPECT_THROW(ca::CryptResponse().FromJson(raw.data(), static_cast<unsigned>(raw.size() - 1)),
                 ca::Exception);
    EXPECT_THROW(ca::CryptResponse().FromJson(nullptr, 5), ca::Exception);
}

TEST(RecordTypesTest, MakesTheRecordOfEachTypeThatHasOne) {
    for (int type = -1; type < 20; ++type) {
        const std::unique_ptr<ca::ISerializable> record = ca::MakeRecord(type);
        const bool isReserved =
            type == ca::kTypeCrl || type == ca::kTypeCmsInfo || type == ca::kTypeOrvexChainStatus;
        ASSERT_EQ(record != nullptr, ca::RecordKey(type) != nullptr && !isReserved) << type;
        EXPECT_TRUE(record == nullptr || record->GetType() == type);
    }
}
