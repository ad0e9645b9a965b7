#include "asn1/CryptAsn1Parser.h"
#include "common/Exception.h"
#include "tests/asn1/Asn1Testing.h"

#include <random>

namespace {

class BlockBuildTest : public Asn1Test {};

TEST_F(BlockBuildTest, WritesDerBackAsItWas) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Bytes data = RandomDer(random, 6);
        CCryptAsn1Parser parser;
        Parse(parser, data);
        ASSERT_EQ(parser.GetLastErrorCode(), 0U);
        ASSERT_EQ(Build(parser), data);
    }
}

TEST_F(BlockBuildTest, WritesTheShortestLengths) {
    Bytes data = Hex("30 83 00 00 09 04 82 00 02 AA BB 05 81 00");
    CCryptAsn1Parser parser;
    Parse(parser, data);
    EXPECT_EQ(Build(parser), Hex("30 06 04 02 AA BB 05 00"));

    data = Hex("24 80 04 02 AA BB 00 00");
    Parse(parser, data);
    EXPECT_EQ(Build(parser), data);

    const std::pair<std::size_t, const char*> lengths[] = {
        {127, "04 7F"}, {128, "04 81 80"}, {200, "04 81 C8"}, {65536, "04 83 01 00 00"}};
    for (const auto& [length, header] : lengths) {
        data = Tlv(0x04, Bytes(length, 0x11));
        Parse(parser, data);
        const Bytes built = Build(parser);
        const Bytes expected = Hex(header);
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), built.begin())) << length;
    }
}

TEST_F(BlockBuildTest, EditsATreeAndWritesIt) {
    Bytes data = Hex("30 06 02 01 01 04 01 AA");
    Bytes other = Hex("31 80 05 00 0C 01 41 00 00");
    CCryptAsn1Parser parser;
    CCryptAsn1Parser source;
    Parse(parser, data);
    Parse(source, other);
    CAsn1Block* root = parser.GetRoot(0);

    root->GetInnerBlock(0)->excluded = true;
    CAsn1Block* copy = root->ImportInnerBlock(source.GetRoot(0));
    EXPECT_EQ(root->GetInnerBlockCount(), 2U);
    EXPECT_EQ(copy->parent, root);
    root->AppendInnerBlock(copy);
    root->AppendInnerBlock(copy);  // already there
    CAsn1Block* added = root->AddInnerBlock();
    added->tag = 0x05;
    EXPECT_EQ(Build(parser), Hex("30 0C 04 01 AA 31 05 05 00 0C 01 41 05 00"));

    // A block moves from one tree to another and outlives its parser.
    CAsn1Block* moved = source.GetRoot(0)->GetInnerBlock(1);
    root->AppendInnerBlock(moved);
    EXPECT_EQ(source.GetRoot(0)->GetInnerBlockCount(), 1U);
    source.Parse(other.data(), 0, kStop, /*continueOnLengthMismatch=*/false, /*singleRoot=*/false);
    root->TakeInnerBlock(copy).reset();
    EXPECT_EQ(root->TakeInnerBlock(nullptr), nullptr);
    EXPECT_EQ(Build(parser), Hex("30 08 04 01 AA 05 00 0C 01 41"));

    // More children than were announced are refused, not written.
    unsigned position = 0;
    const Bytes announced(root->totalLength);
    const GuardedBuffer out(announced);
    for (int i = 0; i < 100; ++i) {
        root->AddInnerBlock();
    }
    EXPECT_THROW(root->GetAsn1Data(out.Data(), &position), ca::Exception);
    EXPECT_THROW(parser.Build(out.Data()), ca::Exception);
    root->DeleteInnerBlocks();
    EXPECT_EQ(root->GetInnerBlockCount(), 0U);
}

TEST_F(BlockBuildTest, LogsTheErrorOfTheParseWhenBuilding) {
    Bytes data = Hex("30 05 02 01 07 04 03");
    CCryptAsn1Parser parser;
    Parse(parser, data);
    EXPECT_TRUE(Lines().empty());
    EXPECT_EQ(Build(parser).size(), parser.GetTotalLength());
    EXPECT_EQ(LinesWith(L": CCryptAsn1Parser::Build"), 1U);
}

}  // namespace
