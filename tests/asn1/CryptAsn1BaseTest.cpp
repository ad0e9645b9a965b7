#include "asn1/Asn1Collections.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/CryptAsn1Base.h"
#include "tests/asn1/Asn1Testing.h"

#include <memory>
#include <stdexcept>

namespace {

class ObjectTest : public Asn1Test {
  protected:
    CAsn1Block* Parse(Bytes data) {
        m_data = std::move(data);
        m_parser.Parse(m_data.data(), static_cast<unsigned>(m_data.size()),
                       /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
                       /*singleRoot=*/false);
        return m_parser.GetRoot(0);
    }

    Bytes m_data;
    CCryptAsn1Parser m_parser;
};

TEST_F(ObjectTest, CreatesTheClassOfEveryTag) {
    CAsn1Block block;
    unsigned known = 0;
    for (unsigned tag = 0; tag < 256; ++tag) {
        block.tag = static_cast<unsigned char>(tag);
        const std::unique_ptr<CAsn1Object> object(CreatePrimitiveObject(&block, nullptr));
        known += dynamic_cast<CAsn1Unknown*>(object.get()) == nullptr ? 1 : 0;
        EXPECT_EQ(object->GetBlock(), &block);
        EXPECT_EQ(object->GetTagName().empty(), *Asn1TagName(block.tag) == '\0');
    }
    EXPECT_EQ(known, 17U);
}

TEST_F(ObjectTest, MakesMembersOfWholeSequences) {
    CAsn1Sequence sequence(Parse(Hex("30 0D 31 03 02 01 05 A0 02 05 00 0C 02 41 42")));
    sequence.Decode();
    ASSERT_EQ(sequence.GetInnerObjectCount(), 3U);
    const CAsn1Object* set = sequence.GetInnerObject(0);
    EXPECT_EQ(set->GetInnerObject(0)->GetFormattedString(0), L"5");
    EXPECT_EQ(set->GetInnerObject(0)->GetParent(), set);
    EXPECT_NE(dynamic_cast<CAsn1Unknown*>(sequence.GetInnerObject(1)), nullptr);
    EXPECT_EQ(sequence.GetInnerObject(2)->GetFormattedString(0), L"AB");
    EXPECT_EQ(sequence.GetInnerObject(3), nullptr);
    EXPECT_EQ(set->GetRawData(/*rebuild=*/false), Hex("31 03 02 01 05"));
    sequence.Decode();
    EXPECT_EQ(sequence.GetInnerObjectCount(), 3U);
}

TEST_F(ObjectTest, LogsASequenceWithoutTheConstructedBit) {
    CAsn1Sequence fine(Parse(Hex("A0 00")));
    EXPECT_TRUE(Lines().empty());
    CAsn1Sequence implicit(Parse(Hex("80 00")));
    implicit.Decode();
    EXPECT_EQ(Lines().size(), 2U);
}

TEST_F(ObjectTest, WritesAChangeThroughToTheRoot) {
    CAsn1Sequence sequence(Parse(Hex("30 07 30 05 02 01 05 05 00")));
    sequence.Decode();
    auto* number = dynamic_cast<CAsn1Integer*>(sequence.GetInnerObject(0)->GetInnerObject(0));
    ASSERT_NE(number, nullptr);
    EXPECT_FALSE(sequence.IsChanged());
    number->SetValue(Bytes(200, 0x11));
    EXPECT_TRUE(sequence.IsChanged());
    sequence.Encode();
    EXPECT_FALSE(number->IsChanged());
    EXPECT_EQ(m_parser.GetTotalLength(), 211U);
    const Bytes rebuilt = sequence.GetRawData(/*rebuild=*/true);
    ASSERT_EQ(rebuilt.size(), 211U);
    EXPECT_EQ(Bytes(rebuilt.begin(), rebuilt.begin() + 9), Hex("30 81 D0 30 81 CD 02 81 C8"));
}

TEST_F(ObjectTest, GetsABlockOfItsOwn) {
    auto sequence = std::make_unique<CAsn1Sequence>(Parse(Hex("30 05 30 80 05 00 00 00")));
    sequence->Decode();
    sequence->_SetSelfOwnObject();
    CAsn1Block* inner = sequence->GetInnerObject(0)->GetBlock();
    EXPECT_EQ(inner->parent, sequence->GetBlock());
    EXPECT_NE(sequence->GetBlock(), m_parser.GetRoot(0));
    m_parser.Parse(m_data.data(), 0, /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
                   /*singleRoot=*/false);
    EXPECT_EQ(sequence->GetRawData(/*rebuild=*/true), Hex("30 04 30 02 05 00"));
}

TEST_F(ObjectTest, StandsWithoutABlock) {
    CAsn1Integer number(nullptr);
    number.Decode();
    number.SetValue({1});
    number.Encode();
    number._SetSelfOwnObject();
    EXPECT_EQ(number.GetAsn1DataLength(), 0U);
    EXPECT_TRUE(number.GetRawData(/*rebuild=*/false).empty());
}

TEST_F(ObjectTest, KeepsRawOctetsInsideTheBuffer) {
    // Recomputed, the root takes more octets than the buffer has.
    const GuardedBuffer data(Hex("30 03 04 07 AA 05 00 05 00 05 00"));
    CCryptAsn1Parser parser;
    parser.Parse(data.Data(), data.Size(), true, false, /*singleRoot=*/true);
    CAsn1Block* root = parser.GetRoot(0);
    ASSERT_EQ(root->totalLength, 11U);
    root->AppendInnerBlock(root->ImportInnerBlock(root->GetInnerBlock(0)));
    ASSERT_EQ(root->GetTotalLength(/*recompute=*/true), 20U);
    CAsn1Sequence sequence(root);
    EXPECT_EQ(sequence.GetRawData(/*rebuild=*/false),
              Bytes(data.Data(), data.Data() + data.Size()));
    CAsn1OctetString octets(root);
    octets.Decode();
    EXPECT_EQ(octets.GetValue().size(), 9U);
    root->DeleteInnerBlocks();
    EXPECT_EQ(sequence.GetRawData(/*rebuild=*/true).size(), 11U);
}

TEST_F(ObjectTest, DecodesDeepTreesWithoutRecursion) {
    constexpr std::size_t kDepth = 300000;
    Bytes data;
    for (std::size_t i = 0; i < kDepth; ++i) {
        Append(data, {0x30, 0x80});
    }
    CAsn1Sequence sequence(Parse(std::move(data)));
    sequence.Decode();
    sequence.SetChanged(true);
    sequence.Encode();
    EXPECT_EQ(sequence.GetAsn1DataLength(), 4 * kDepth);
}

}  // namespace
