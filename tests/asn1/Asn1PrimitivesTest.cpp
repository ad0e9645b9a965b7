#include "asn1/Asn1Collections.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "tests/asn1/Asn1Testing.h"

#include <memory>
#include <stdexcept>

namespace {

class PrimitivesTest : public Asn1Test {
  protected:
    // The typed object of the first root; keeps data and tree.
    CAsn1Object& Read(std::string_view hex) {
        m_data = Hex(hex);
        m_parser.Parse(m_data.data(), static_cast<unsigned>(m_data.size()),
                       /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
                       /*singleRoot=*/false);
        m_object.reset(CreatePrimitiveObject(m_parser.GetRoot(0), nullptr));
        m_object->Decode();
        return *m_object;
    }

    Bytes m_data;
    CCryptAsn1Parser m_parser;
    std::unique_ptr<CAsn1Object> m_object;
};

TEST_F(PrimitivesTest, NamesAndShowsValues) {
    const struct {
        const char* data;
        const char* name;
        const wchar_t* shown;
    } cases[] = {
        {"01 01 00", "BOOLEAN", L"False"},
        {"01 01 20", "BOOLEAN", L"True"},
        {"01 00", "BOOLEAN", L"False"},
        {"02 01 FF", "INTEGER", L"255"},
        {"02 04 FF FF FF FF", "INTEGER", L"4294967295"},
        {"02 05 00 FF FF FF FF", "INTEGER", L"00ffffffff"},
        {"02 00", "INTEGER", L"0"},
        {"03 02 07 80", "BIT STRING", L"80"},
        {"03 02 04 FF", "BIT STRING", L"f0"},
        {"03 03 FF AA BB", "BIT STRING", L"aa00"},
        {"03 01 03", "BIT STRING", L""},
        {"03 00", "BIT STRING", L""},
        {"04 03 00 0A AB", "OCTET STRING", L"000aab"},
        {"05 00", "NULL", L""},
        {"06 03 2A 86 48", "OBJECT IDENTIFIER", L"1.2.840"},
        {"06 03 88 37 03", "OBJECT IDENTIFIER", L"2.111.3"},
        {"06 01 00", "OBJECT IDENTIFIER", L"0.0"},
        {"06 01 27", "OBJECT IDENTIFIER", L"0.39"},
        {"06 01 28", "OBJECT IDENTIFIER", L"1.0"},
        {"06 01 4F", "OBJECT IDENTIFIER", L"1.39"},
        {"06 01 50", "OBJECT IDENTIFIER", L"2.0"},
        {"06 06 2A 8F FF FF FF 7F", "OBJECT IDENTIFIER", L"1.2.-1"},
        {"06 07 2A 90 80 80 80 05 81", "OBJECT IDENTIFIER", L"1.2.5"},
        {"06 00", "OBJECT IDENTIFIER", L""},
        {"0C 04 D0 96 C3 28", "UTF8 STRING", L"\u0416\uFFFD("},
        {"12 02 31 32", "NUMERIC STRING", L"12"},
        {"13 02 41 42", "PRINTABLE STRING", L"AB"},
        {"14 03 4F C2 4B", "TELETEX STRING", L"O'K"},
        {"16 03 61 40 62", "IA5 STRING", L"a@b"},
        {"1E 07 04 16 D8 3D DE 00 41", "UNICODE STRING", L"\u0416\U0001F600"},
        {"1E 04 D8 3D 00 41", "UNICODE STRING", L"\uFFFDA"},
        {"24 80 04 01 AA 24 06 04 01 BB 04 01 CC 05 00 00 00", "", L"aabbcc"},
        {"80 01 41", "", L""},
        {"0A 01 05", "", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.data);
        CAsn1Object& object = Read(c.data);
        EXPECT_EQ(object.GetTagName(), c.name);
        EXPECT_EQ(object.GetFormattedString(0), c.shown);
    }
}

TEST_F(PrimitivesTest, ClearsUnusedBitsInTheCallersBuffer) {
    const auto& bits = dynamic_cast<CAsn1BitString&>(Read("03 03 04 FF FF"));
    EXPECT_EQ(m_data, Hex("03 03 04 FF F0"));
    EXPECT_EQ(bits.GetUnusedBits(), 4U);
    EXPECT_EQ(Bytes(bits.GetValue().begin(), bits.GetValue().end()), Hex("FF F0"));
    Read("03 01 07");
    EXPECT_EQ(m_data, Hex("03 01 07"));
}

TEST_F(PrimitivesTest, WritesHexadecimalByFlags) {
    const Bytes octets = Hex("00 0A 0B");
    const std::pair<unsigned, const wchar_t*> cases[] = {{0, L"000a0b"}, {1, L"000A0B"},
                                                         {2, L"0a0b"},   {4, L"00:0a:0b"},
                                                         {6, L"0a:0b"},  {7, L"0A:0B"}};
    for (const auto& [flags, text] : cases) {
        EXPECT_EQ(CAsn1Integer::GetHexString(flags, octets.data(), 3), text) << flags;
    }
    EXPECT_EQ(CAsn1Integer::GetHexString(6, octets.data(), 1), L"");
    EXPECT_EQ(CAsn1Integer::GetHexString(7, octets.data(), 0), L"");
}

TEST_F(PrimitivesTest, WritesValuesThatReadBackTheSame) {
    const char* texts[] = {"1.2.840.113549", "2.111.3", "2.999.4294967295", "0.0", "2.48.128"};
    for (const char* text : texts) {
        CAsn1ObjectIdentifier oid;
        oid.SetValue(std::wstring(text, text + std::strlen(text)));
        oid.Encode();
        const std::wstring before = oid.GetValue();
        oid.Decode();
        EXPECT_EQ(oid.GetValue(), before == L"2.999.4294967295" ? L"2.999.-1" : before);
    }
    CAsn1ObjectIdentifier bad;
    bad.SetValue(L"1.x");
    EXPECT_THROW(bad.Encode(), std::invalid_argument);

    CAsn1Sequence sequence;
    CAsn1Integer number;
    number.SetValue({0x05});
    CAsn1Boolean flag;
    flag.SetValue(true);
    CAsn1BitString bits;
    bits.SetValue({0xF0}, 4);
    CAsn1UTF8String text;
    text.SetValue(L"\u0416");
    CAsn1UnicodeString wide;
    wide.SetValue(L"A\U0001F600");
    CAsn1ContructedOctetString segments;
    segments.SetValue({0xAA});
    CAsn1Null nothing;
    CAsn1Object* members[] = {&number, &flag, &bits, &text, &wide, &segments, &nothing};
    for (CAsn1Object* member : members) {
        member->Encode();
        sequence._AttachInnerObject(member, /*withBlock=*/true);
        EXPECT_EQ(member->GetParent(), &sequence);
    }
    EXPECT_EQ(sequence.GetRawData(/*rebuild=*/false),
              Hex("30 1D 02 01 05 01 01 FF 03 02 04 F0 0C 02 D0 96 1E "
                  "06 00 41 D8 3D DE 00 24 03 04 01 AA 05 00"));
    sequence._DetachInnerObject(&flag, /*withBlock=*/true);
    sequence._DetachInnerObject(&segments, /*withBlock=*/true);
    sequence._AttachInnerObject(&flag, /*withBlock=*/true);
    EXPECT_EQ(sequence.GetAsn1DataLength(), 26U);
    EXPECT_EQ(segments.GetParent(), nullptr);
}

TEST_F(PrimitivesTest, KeepsSegmentsWithinTheBuffer) {
    // Overrunning segments show the same octets again.
    auto& segments = dynamic_cast<CAsn1ContructedOctetString&>(
        Read("24 80 24 02 04 0A 04 00 04 00 04 06 01 02 03 04 00 00"));
    EXPECT_LE(segments.GetValue().size(), m_data.size());
}

}  // namespace
