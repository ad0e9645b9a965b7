#include "common/AutoPtr.h"
#include "records/CertInfo.h"
#include "records/CertInfoExtension.h"
#include "records/FileData.h"
#include "records/SerializableContainer.h"
#include "records/SignInfo.h"
#include "records/StoreAddress.h"
#include "records/StringArray.h"
#include "tests/records/RecordTesting.h"

#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace {

// Counts its living instances under a type of choice.
class CountedRecord : public ca::ISerializable {
  public:
    CountedRecord(int type, int& living) : m_type(type), m_living(living) { ++m_living; }
    CountedRecord(const CountedRecord&) = delete;
    CountedRecord& operator=(const CountedRecord&) = delete;
    ~CountedRecord() override { --m_living; }
    void FromJson([[maybe_unused]] const ca::JsonValue& value) override {}
    void ToJson(ca::JsonWriter& writer) const override { writer.Int(m_type); }
    int GetType() const override { return m_type; }

  private:
    int m_type;
    int& m_living;
};

std::string Written(const ca::SerializableContainer& container, const ca::ContainerForm& form) {
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    writer.StartObject();
    container.WriteTo(writer, form);
    writer.EndObject();
    return buffer.GetString();
}

TEST(SerializableContainerTest, OwnsOneRecordOfEachType) {
    int living = 0;
    {
        ca::SerializableContainer container;
        EXPECT_EQ(nullptr, container.GetObj(7));
        EXPECT_TRUE(container.IsEmpty());
        auto first = std::make_unique<CountedRecord>(7, living);
        const ca::ISerializable* stored = first.get();
        container.SetObject(first.release(), /*clear=*/false);
        EXPECT_EQ(stored, container.GetObj(7));
        EXPECT_FALSE(container.IsEmpty());

        container.SetObject(std::make_unique<CountedRecord>(7, living).release(), /*clear=*/false);
        EXPECT_EQ(1, living);
        container.SetObject(std::make_unique<CountedRecord>(8, living).release(), /*clear=*/false);
        container.SetObject(std::make_unique<CountedRecord>(-1, living).release(), /*clear=*/false);
        EXPECT_EQ(3, living);
        container.SetObject(nullptr, /*clear=*/false);
        EXPECT_EQ(3, living);
        container.SetObject(std::make_unique<CountedRecord>(2, living).release(), /*clear=*/true);
        EXPECT_EQ(1, living);
        EXPECT_EQ(nullptr, container.GetObj(7));
        EXPECT_NE(nullptr, container.GetObj(2));
    }
    EXPECT_EQ(0, living);
}

TEST(SerializableContainerTest, WritesRecordsByTypeUnderTheirKeys) {
    int living = 0;
    ca::SerializableContainer container;
    for (const int type : {19, 18, 17, 10, 9, 5, 3, 1, -1}) {
        container.SetObject(std::make_unique<CountedRecord>(type, living).release(),
                            /*clear=*/false);
    }
    container.GetObj(ca::kTypeConfig);  // an empty entry is not written
    container.SetObject(std::make_unique<ca::SignInfos>().release(), /*clear=*/false);
    auto data = std::make_unique<ca::FileData>();
    data->Assign("abc", 3);
    container.SetObject(data.release(), /*clear=*/false);
    EXPECT_EQ(R"({"fileData":"YWJj","stores":1,"crl":3,"signInfo":[],"isAttached":true,)"
              R"("signInfoArray":5,"storeAddresses":9,"crlInfo":10,"attrCertInfo":17})",
              Written(container, {.isAttached = true, .rawFileData = false}));
    EXPECT_EQ(R"({"fileDataSize":3,"stores":1,"crl":3,"signInfo":[],"isAttached":false,)"
              R"("signInfoArray":5,"storeAddresses":9,"crlInfo":10,"attrCertInfo":17})",
              Written(container, {.isAttached = false, .rawFileData = true}));
}

TEST(SerializableContainerTest, KeepsNestedTypesOutOfTheKeyTable) {
    EXPECT_STREQ("attrCertInfo", ca::RecordKey(ca::kTypeAttrCertInfo));
    const int outside[] = {-1, ca::CertInfoExtensionCollection().GetType(),
                           ca::CertInfoAttributeCollection().GetType(),
                           std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    for (const int type : outside) {
        EXPECT_EQ(nullptr, ca::RecordKey(type)) << type;
    }
}

// A buffer of exactly the given octets, so that a sanitizer sees every step past them.
class PreParseTest : public testing::Test {
  protected:
    bool PreParse(const std::string& request) {
        m_container.SetObject(std::make_unique<ca::StoreAddress>().release(), /*clear=*/true);
        m_buffer = std::make_unique<char[]>(request.size());
        m_length = request.size();
        std::memcpy(m_buffer.get(), request.data(), m_length);
        return m_container.PreParseFileData(m_buffer.get(), m_length);
    }

    std::string Buffer() const { return {m_buffer.get(), m_length}; }

    // The payload taken out; none when the container still holds what it held before.
    std::optional<std::string> Payload() {
        const auto* data = dynamic_cast<ca::FileData*>(m_container.GetObj(ca::kTypeFileData));
        const bool isUntouched = m_container.GetObj(ca::kTypeStoreAddress) != nullptr;
        EXPECT_EQ(isUntouched, data == nullptr);
        if (data == nullptr) {
            return std::nullopt;
        }
        return std::string(data->data(), data->data() + data->size());
    }

  private:
    ca::SerializableContainer m_container;
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_length = 0;
};

using namespace std::string_literals;

TEST_F(PreParseTest, TakesThePayloadOutOfTheText) {
    struct TakeCase {
        const char* name;
        std::string request;
        std::string text;
        std::string payload;
    };
    const TakeCase cases[] = {
        {"plain", R"({"mode":14,"fileDataEncodedSize":8,"fileData":"YWJjZA=="})",
         R"({"mode":14,"fileDataEncodedSize":8,"fileData":""})", "abcd"},
        {"octets behind the NUL",
         R"({"fileDataEncodedSize":4,"fileData":"YWJj"})"
         "\0raw\0\xff"s,
         R"({"fileDataEncodedSize":4,"fileData":""})", "abc"},
        {"members between and behind",
         R"({"fileDataEncodedSize": +4 ,"test":false,"fileData":"YWJj","mode":1})",
         R"({"fileDataEncodedSize": +4 ,"test":false,"fileData":"","mode":1})", "abc"},
        {"number with other text behind it", R"({"fileDataEncodedSize":4e1,"fileData":"YWJj"})",
         R"({"fileDataEncodedSize":4e1,"fileData":""})", "abc"},
        {"padding in the middle ends the octets",
         R"({"fileDataEncodedSize":9,"fileData":"YQ==YWJj*"})",
         R"({"fileDataEncodedSize":9,"fileData":""})", "a"},
    };
    for (const TakeCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_TRUE(PreParse(c.request));
        const std::string untouched = c.request.substr(c.text.size() + 1);
        EXPECT_EQ(c.text + '\0' + untouched, Buffer());
        EXPECT_EQ(c.payload, Payload());
    }
}

TEST_F(PreParseTest, LeavesEverythingElseUntouched) {
    const std::string requests[] = {
        "",
        "fileData",
        R"({"fileData":"YWJj"})",
        R"({"fileDataSize":4,"fileDataEncodedSize":4,"fileData":"YWJj"})",
        R"({"clientId":"fileData","fileDataEncodedSize":4,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":4})",
        R"({"fileDataEncodedSize":4,"fileData":7})",
        R"({"fileDataEncodedSize" :4,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":"4","fileData":"YWJj"})",
        R"({"fileDataEncodedSize":0,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":-4,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":+-4,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":3,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":6,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":2147483648,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":18446744073709551620,"fileData":"YWJj"})",
        R"({"fileDataEncodedSize":4,"fileData":"****"})",
        R"({"fileDataEncodedSize":1,"fileData":"Y"})",
        R"({"fileDataEncodedSize":11,"fileData":"YWJj","a":"b"})",
        R"({"fileDataEncodedSize":6,"fileData":"YW\"Jj"})",
        R"({"fileDataEncodedSize":6,"fileData":"YWJ\/j"})",
        R"({"fileDataEncodedSize":8,"fileData":"YQ=="})"
        "\"\"\"}",
        R"({"fileDataEncodedSize":4,"fileData":"YWJj")",
        R"({"fileDataEncodedSize":5,"fileData":"YQ=)"
        "\0=\"}"s,
        R"({"fileDataEncodedSize":4)"
        "\0"
        R"(,"fileData":"YWJj"})"s,
    };
    for (const std::string& request : requests) {
        SCOPED_TRACE(request);
        EXPECT_FALSE(PreParse(request));
        EXPECT_EQ(request, Buffer());
        EXPECT_EQ(std::nullopt, Payload());
    }
    EXPECT_FALSE(ca::SerializableContainer().PreParseFileData(nullptr, 100));
}

TEST_F(PreParseTest, StaysInsideATextCutAnywhere) {
    const std::string whole =
        R"({"fileDataEncodedSize":12,"test":false,"fileData":"YWJjZGVmZ2hp","mode":1})";
    const std::size_t payloadEnd = whole.find("\",\"mode");
    for (std::size_t length = 0; length < payloadEnd + 2; ++length) {
        const std::string cut = whole.substr(0, length);
        SCOPED_TRACE(cut);
        EXPECT_FALSE(PreParse(cut));
        EXPECT_EQ(cut, Buffer());
        EXPECT_EQ(std::nullopt, Payload());
    }
    EXPECT_TRUE(PreParse(whole.substr(0, payloadEnd + 2)));
    EXPECT_EQ("abcdefghi", Payload());
}

TEST_F(PreParseTest, TakesALargePayloadAtOnce) {
    const std::size_t groups = 1 << 18;
    std::string payload;
    for (std::size_t i = 0; i < groups; ++i) {
        payload += "YWJj";
    }
    const std::string head =
        R"({"fileDataEncodedSize":)" + std::to_string(payload.size()) + R"(,"fileData":")";
    ASSERT_TRUE(PreParse(head + payload + R"(","mode":14})"));
    EXPECT_EQ(head + R"(","mode":14})", std::string(Buffer().c_str()));
    const std::string octets = Payload().value_or("");
    ASSERT_EQ(3 * groups, octets.size());
    EXPECT_EQ("abcabc", octets.substr(octets.size() - 6));
}

// The owner of records that handlers hold on to.
TEST(CAutoPtrTest, DestroysGivesAwayAndMovesItsRecord) {
    int living = 0;
    CAutoPtr<CountedRecord> owner(std::make_unique<CountedRecord>(1, living).release());
    owner.Free();
    EXPECT_EQ(0, living);
    EXPECT_EQ(nullptr, owner.Get());
    owner.Free();
    owner = CAutoPtr<CountedRecord>(std::make_unique<CountedRecord>(2, living).release());
    CAutoPtr<CountedRecord> other(std::move(owner));
    EXPECT_EQ(1, living);
    const std::unique_ptr<CountedRecord> detached(other.Detach());
    EXPECT_FALSE(other);
    EXPECT_EQ(1, living);
}

}  // namespace
