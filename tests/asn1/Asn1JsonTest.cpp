#include "asn1/Asn1Primitives.h"
#include "common/Encode.h"
#include "common/Json.h"
#include "tests/asn1/Asn1Testing.h"

#include <memory>
#include <stdexcept>

namespace {

class JsonDumpTest : public Asn1Test {
  protected:
    static std::string Dump(Bytes& data) {
        CCryptAsn1Parser parser;
        std::size_t length = 0;
        const ca::BytePtr text =
            parser.GetAsn1Structure(data.data(), static_cast<unsigned>(data.size()), &length);
        std::string dumped(reinterpret_cast<const char*>(text.Get()));
        EXPECT_EQ(dumped.size(), length);
        return dumped;
    }
    static std::string Dump(std::string_view hex) {
        Bytes data = Hex(hex);
        return Dump(data);
    }
};

TEST_F(JsonDumpTest, WritesEveryMember) {
    EXPECT_EQ(Dump("30 80 02 01 05 A0 03 80 01 41 00 00"),
              R"j({"structure":{"tag":48,"tagString":"30(CONSTRUCTED)","length":12,"offset":0,)j"
              R"j("isUnknownLength":true,"corrupted":false,"innerBlocks":[{"structure":{"tag":2,)j"
              R"j("tagString":"02 INTEGER(PRIMITIVE)","formattedStringValue":"5","length":3,)j"
              R"j("offset":2,"isUnknownLength":false,"corrupted":false,"innerBlocks":[]}},)j"
              R"j({"structure":{"tag":160,"tagString":"A0(CONSTRUCTED, CONTEXT)","length":5,)j"
              R"j("offset":5,"isUnknownLength":false,"corrupted":false,"innerBlocks":[)j"
              R"j({"structure":{"tag":128,"tagString":"80 (PRIMITIVE, CONTEXT)",)j"
              R"j("formattedStringValue":"","length":3,"offset":7,"isUnknownLength":false,)j"
              R"j("corrupted":false,"innerBlocks":[]}}]}}]},"data":"MIACAQWgA4ABQQAA"})j");
}

TEST_F(JsonDumpTest, NamesObjectIdentifiersInTheChosenLanguage) {
    constexpr char kCommonName[] = "06 03 55 04 03";
    constexpr char kWithoutNumber[] =
        "06 0A 04 00 7F 00 07 01 01 04 01 01";  // no message has its name
    const struct {
        const wchar_t* language;
        const char* der;
        const char* text;
    } cases[] = {{L"en", kCommonName, "\"description\":\"Common name\""},
                 {L"ru", kCommonName, "\"description\":\"Общее имя\""},
                 {L"en", kWithoutNumber, "\"description\":\"ECDSA (plain) with SHA-1\""},
                 {L"ru", kWithoutNumber, "\"description\":\"ECDSA (простой формат) с SHA-1\""}};
    for (const auto& [language, der, text] : cases) {
        SetZORNALng(language);
        EXPECT_NE(Dump(der).find(text), std::string::npos);
        const std::string unknown = ca::u16u8(SetZORNAMessage(kMsgUnknownOid));
        EXPECT_NE(Dump("06 02 2A 99").find("\"description\":\"" + unknown), std::string::npos);
    }
}

TEST_F(JsonDumpTest, ShowsDamage) {
    EXPECT_EQ(Dump("30 84 01"),
              R"j({"structure":{"tag":48,"tagString":"30(CONSTRUCTED)","length":0,"offset":0,)j"
              R"j("isUnknownLength":false,"corrupted":true,"innerBlocks":[]}})j");
    const std::string below = Dump("30 09 04 81 01 AA 04 05");
    EXPECT_NE(below.find(R"j("formattedStringValue":"aa","length":4)j"), std::string::npos);
    EXPECT_EQ(below.find("\"data\""), std::string::npos);

    Bytes data = Hex("30 05 02 01 07 04 03");
    CCryptAsn1Parser parser;
    parser.Parse(data.data(), 7, /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
                 /*singleRoot=*/false);
    parser.GetTotalLength();
    const ca::BytePtr text = parser.GetAsn1Structure();
    EXPECT_NE(std::string(reinterpret_cast<const char*>(text.Get()))
                  .find(R"j("data":"[Данные повреждены]"})j"),
              std::string::npos);
    EXPECT_FALSE(CCryptAsn1Parser().GetAsn1Structure());
}

TEST_F(JsonDumpTest, ShowsWhatTheTypedObjectsShow) {
    const char* contents[] = {"",
                              "00",
                              "FF",
                              "04 FF",
                              "09 FF",
                              "2A 86 48",
                              "8F FF FF FF 7F 01",
                              "41 22 5C 0A 7F",
                              "C2 41 D0 96",
                              "41 00 42",
                              "04 16 D8 3D DE 00",
                              "32 34 30 32 32 39 31 32 30 30 30 30 5A",
                              "32 34 31 33 32 39 31 32 30 30 30 30 5A",
                              "32 33 30 32 32 39 32 33 35 39 35 39",
                              "32 34 30 32 32 39 31 32 30 30 30 30 2B 30 31 30 30",
                              "32 30 32 34 30 32 32 39 31 32 30 30 30 30 5A"};
    for (unsigned tag = 0; tag < 256; ++tag) {
        for (const char* content : contents) {
            Bytes data = Hex(content);
            data.insert(data.begin(),
                        {static_cast<unsigned char>(tag), static_cast<unsigned char>(data.size())});
            if ((tag & 0x20) != 0) {
                continue;
            }
            CCryptAsn1Parser parser;
            Bytes copy = data;
            parser.Parse(copy.data(), static_cast<unsigned>(copy.size()), /*stopAtTruncation=*/true,
                         /*continueOnLengthMismatch=*/false, /*singleRoot=*/false);
            const std::unique_ptr<CAsn1Object> object(
                CreatePrimitiveObject(parser.GetRoot(0), nullptr));
            std::string expected;
            try {
                object->Decode();
                expected = ca::u16u8(object->GetFormattedString(0));
            } catch (const std::logic_error&) {
            }
            const std::string json = Dump(data);
            ca::JsonDocument document;
            ASSERT_FALSE(document.Parse(json.data(), json.size()).HasParseError()) << json;
            EXPECT_EQ(std::string(document["structure"]["formattedStringValue"].GetString()),
                      expected)
                << "tag " << tag << " content " << content;
            EXPECT_EQ(data, copy);  // the same bits were cleared
        }
    }
}

TEST_F(JsonDumpTest, NestsInTheCallersWriter) {
    Bytes data = Hex("31 02 05 00");
    CCryptAsn1Parser parser;
    parser.Parse(data.data(), 4, /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
                 /*singleRoot=*/false);
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    writer.StartObject();
    parser.GetRoot(0)->GetInnerBlock(0)->ToJson(writer);
    writer.Key("next");
    writer.Int(1);
    writer.EndObject();
    EXPECT_STREQ(buffer.GetString(),
                 R"j({"structure":{"tag":5,"tagString":"05 NULL(PRIMITIVE)",)j"
                 R"j("formattedStringValue":"","length":2,"offset":2,"isUnknownLength":false,)j"
                 R"j("corrupted":false,"innerBlocks":[]},"next":1})j");
}

TEST_F(JsonDumpTest, ShowsAnEditedTreeWhole) {
    Bytes data = Hex("30 03 04 01 AA");
    Bytes replaced(100, 0xBB);
    CCryptAsn1Parser parser;
    parser.Parse(data.data(), 5, /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
                 /*singleRoot=*/false);
    CAsn1Block& root = *parser.GetRoot(0);
    CAsn1Block* const edited = root.AddInnerBlock();
    edited->tag = 0x04;
    edited->content = replaced.data();
    edited->contentLength = 100;
    for (int i = 0; i < 3; ++i) {
        root.AppendInnerBlock(root.ImportInnerBlock(root.GetInnerBlock(0)));
    }
    root.GetTotalLength(/*recompute=*/true);
    const ca::BytePtr text = parser.GetAsn1Structure();
    const std::string dumped(reinterpret_cast<const char*>(text.Get()));
    std::size_t copies = 0;
    for (std::size_t at = 0; (at = dumped.find(R"("aa")", at)) != std::string::npos; ++at) {
        ++copies;
    }
    EXPECT_EQ(copies, 4U);
    EXPECT_NE(dumped.find(std::string(200, 'b')), std::string::npos);
}

TEST_F(JsonDumpTest, StaysInProportionWhenChildrenOverrun) {
    // Every child shows 65 KB of the same octets.
    Bytes data = Hex("30 80");
    for (int i = 0; i < 8000; ++i) {
        Append(data, Hex("30 02 04 83 01 02 AA BB"));
    }
    data.resize(data.size() + 0x20000);
    const std::size_t size = data.size();
    EXPECT_LT(Dump(data).size(), size * 100);
    EXPECT_GT(Dump(data).size(), size * 10);
}

}  // namespace
