#include "asn1/CryptAsn1Parser.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "tests/asn1/Asn1Testing.h"

#include <functional>
#include <pthread.h>
#include <random>
#include <stdexcept>

namespace {

struct TreeCase {
    const char* name;
    const char* data;
    std::uint32_t error;
    const char* tree;
};

class BlockParserTest : public Asn1Test {};

TEST_F(BlockParserTest, CutsTheRuledTrees) {
    const TreeCase cases[] = {
        {"indefinite", "30 80 02 01 05 00 00", 0, "30+3/7@0~(02+1/3@2)"},
        {"empty primitive", "04 00", 0, "04+0/2@0"},
        {"offset behind an empty constructed", "30 00 02 01 01", 0, "30+0/2@0 02+1/3@0"},
        {"offset below", "30 07 31 00 04 01 AA 05 00", 0, "30+7/9@0(31+0/2@2 04+1/3@2 05+0/2@5)"},
        {"shortest length", "04 81 05 01 02 03 04 05", 0, "04+5/7@0"},
        {"shortest length below", "30 04 04 82 00 00", 0, "30+2/4@0(04+0/2@2)"},
        {"high tag number", "1F 81 02 AA BB", 0, "1F+2/4@0"},
        {"six length octets wrap", "04 86 00 05 00 00 00 01 AA BB CC DD EE FF", 0, "04+6/8@0"},
        {"five of them add", "04 85 02 00 00 00 01 AA BB CC", 0, "04+3/5@0"},
        {"pair at the start of a scan", "04 80 00 00 01 00 00", 0, "04+3/7@0~"},
        {"pair of three zeros", "04 80 01 00 00 00 00", 0, "04+1/5@0~ 00+0/2@5"},
        {"no child before the end", "30 80 00 00 00 00", 0, "30+2/6@0~(00+0/2@2)"},
        {"end missing at once", "30 80 00 00", 0x80093102, "30+0/0@0~!(00+0/2@2)"},
        // The children may go beyond by the header, their own headers not counted.
        {"overrun that passes", "30 02 04 02 AA BB", 0x80093102, "30+2/4@0(04+2/4@2) AA+0/0@6!"},
        {"overrun cut again", "30 03 04 07 AA 05 00 05 00 05 00", 0,
         "30+9/11@0(04+7/9@2) 05+0/2@11 05+0/2@13 05+0/2@15"},
        {"two roots", "05 00 01 01 FF", 0, "05+0/2@0 01+1/3@2"},
        {"nothing", "", 0x80093102, "00+0/0@0!"},
        {"one octet", "30", 0x80093102, "00+0/0@0!"},
        {"length cut off", "30 84 01 02 03", 0x80093102, "30+0/0@0!"},
        {"content cut off", "30 05 02 01 07 04 03", 0x80093102, "30+5/0@0!(02+1/3@2 04+3/0@5!)"},
        {"root's content cut off", "04 03 AA BB", 0x80093102, "04+3/0@0!"},
        {"four GiB", "04 84 FF FF FF FF 00", 0x80093102, "04+4294967295/0@0!"},
        {"scan to the end", "04 80 01 02 00", 0x80093102, "04+0/0@0~!"},
        {"lengths stay as read at a fault", "30 09 04 81 01 AA 04 05", 0x80093102,
         "30+9/0@0!(04+1/4@2 04+5/0@6!)"},
    };
    for (const TreeCase& c : cases) {
        SCOPED_TRACE(c.name);
        const GuardedBuffer data(Hex(c.data));
        CCryptAsn1Parser parser;
        parser.Parse(data.Data(), data.Size(), kStop, /*continueOnLengthMismatch=*/false,
                     /*singleRoot=*/false);
        EXPECT_EQ(parser.GetLastErrorCode(), c.error);
        EXPECT_EQ(Draw(parser), c.tree);
    }
}

TEST_F(BlockParserTest, ReadsOnBehindATruncationInsideTheBuffer) {
    const TreeCase cases[] = {
        {"nothing", "", 0, "00+0/2@0"},
        {"one octet", "30", 0, "30+0/2@0"},
        {"length cut off", "30 84 01 02 03", 0, "30+0/2@0"},
        {"content cut off", "04 05 AA BB", 0, "04+2/4@0"},
        {"below", "30 08 02 01 07 04 03 AA", 0, "30+6/8@0(02+1/3@2 04+1/3@5)"},
        {"no room for a child", "30 05 05 00 02", 0, "30+2/4@0(05+0/2@2)"},
        {"end missing", "30 80 02 01 07", 0, "30+3/7@0~(02+1/3@2)"},
        {"half an end", "30 80 02 01 07 00", 0, "30+3/7@0~(02+1/3@2)"},
        {"scan to the end", "04 80 01 02 00", 0, "04+3/7@0~"},
    };
    for (const TreeCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::size_t before = Lines().size();
        const GuardedBuffer data(Hex(c.data));
        CCryptAsn1Parser parser;
        parser.Parse(data.Data(), data.Size(), kRead, /*continueOnLengthMismatch=*/false,
                     /*singleRoot=*/false);
        EXPECT_EQ(parser.GetLastErrorCode(), c.error);
        EXPECT_EQ(Draw(parser), c.tree);
        EXPECT_GT(Lines().size(), before);
    }
}

TEST_F(BlockParserTest, TellsOfChildrenLongerThanTheirParent) {
    Bytes data = Hex("30 02 05 00 30 03 04 07 AA 05 00 05 00 05 00");
    CCryptAsn1Parser parser;
    Parse(parser, data);
    EXPECT_EQ(Lines(), std::vector<std::wstring>{L"Поврежденные asn.1 данные в смещении 4"});
    EXPECT_FALSE(parser.GetRoot(1)->corrupted);

    // Going on, the parent takes every child up to its end, each with an error of its own.
    CAsn1Block block;
    unsigned position = 0;
    unsigned offset = 100;
    data = Hex("31 09 30 02 04 06 00 00 05 00 05 00 05 00");
    block.Parse(data.data(), &position, &offset, static_cast<unsigned>(data.size()),
                /*noThrow=*/false, /*continueOnLengthMismatch=*/true);
    EXPECT_EQ(position, 11U);
    EXPECT_EQ(LinesWith(L"смещении 102"), 1U);
    EXPECT_EQ(LinesWith(L": CAsn1Block::Parse"), 1U);
}

TEST_F(BlockParserTest, StopsBehindTheFirstRootWhenAsked) {
    Bytes data = Hex("05 00 05 00");
    CCryptAsn1Parser parser;
    parser.Parse(data.data(), 4, kStop, false, /*singleRoot=*/true);
    EXPECT_EQ(Draw(parser), "05+0/2@0");
    EXPECT_EQ(Lines(), std::vector<std::wstring>{SetZORNAMessage(kMsgAsn1TrailingData)});
    parser.Parse(data.data(), 2, kStop, false, /*singleRoot=*/true);
    EXPECT_EQ(Lines().size(), 1U);
}

TEST_F(BlockParserTest, TestsTheClassBitByBit) {
    const struct {
        std::uint8_t tag;
        bool constructed, context, application;
        unsigned contextIndex, applicationIndex;
    } cases[] = {{0x30, true, false, false, 0x10, 0x10},
                 {0x83, false, true, false, 0x03, 0x83},
                 {0x63, true, false, true, 0x43, 0x03},
                 {0xE5, true, true, true, 0x45, 0x85}};
    for (const auto& c : cases) {
        CAsn1Block block;
        block.tag = c.tag;
        EXPECT_EQ(block.IsConstructed(), c.constructed);
        EXPECT_EQ(block.IsContextSpecific(), c.context);
        EXPECT_EQ(block.IsApplicationSpecific(), c.application);
        EXPECT_EQ(block.GetContextSpecificIndex(), c.contextIndex);
        EXPECT_EQ(block.GetApplicationSpecificIndex(), c.applicationIndex);
    }
}

TEST_F(BlockParserTest, CountsLengthOctets) {
    const std::pair<unsigned, unsigned> cases[] = {
        {0, 0},     {127, 0},   {128, 1},      {255, 1},       {256, 2},
        {65535, 2}, {65536, 3}, {0xFFFFFF, 3}, {0x1000000, 4}, {0xFFFFFFFF, 4}};
    for (const auto& [length, count] : cases) {
        EXPECT_EQ(GetBytesCount(length), count) << length;
    }
}

TEST_F(BlockParserTest, FindsBlocks) {
    Bytes data = Hex("30 0B 02 01 01 30 04 05 00 80 00 A1 00 04 00");
    CCryptAsn1Parser parser;
    Parse(parser, data);
    const std::pair<const wchar_t*, int> paths[] = {
        {L"0", 0x30}, {L"0/0", 0x02}, {L"0//1/1", 0x80},  {L"/0/2/", 0xA1}, {L"1", 0x04},
        {L"", -1},    {L"/", -1},     {L"2", -1},         {L"0/9", -1},     {L"0/0/0", -1},
        {L"-1", -1},  {L"0/-1", -1},  {L"2147483647", -1}};
    for (const auto& [path, tag] : paths) {
        const CAsn1Block* block = parser.GetBlockByPath(path);
        EXPECT_EQ(block != nullptr ? block->tag : -1, tag) << path;
    }
    EXPECT_THROW(parser.GetBlockByPath(L"0/x"), std::invalid_argument);
    EXPECT_THROW(parser.GetBlockByPath(L"99999999999"), std::out_of_range);

    const CAsn1Block* root = parser.GetRoot(0);
    EXPECT_EQ(root->GetBlockByPath(L"1/0")->tag, 0x05);
    EXPECT_EQ(root->GetBlockByTag(0x30, 0), root->GetInnerBlock(1));
    EXPECT_EQ(root->GetBlockByTag(0x30, 2), nullptr);
    EXPECT_EQ(root->GetBlockBySpecificIdx(1, 0), root->GetInnerBlock(2));
    EXPECT_EQ(root->GetBlockBySpecificIdx(1, 99), nullptr);
    EXPECT_EQ(root->GetInnerBlock(3), nullptr);
}

TEST_F(BlockParserTest, KeepsWhatStandsBeforeEveryTruncation) {
    std::mt19937 random(11);
    Bytes whole =
        Hex("30 1D 30 80 02 01 05 04 80 41 00 00 00 00 A0 06 06 04 2A 86 48 86 03 02 00 "
            "01 31 00 0C 02 41 42");
    Append(whole, Tlv(0x30, RandomDer(random, 2)));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const GuardedBuffer data(std::span<const unsigned char>(whole).first(size));
        for (const bool stop : {kStop, kRead}) {
            CCryptAsn1Parser parser;
            parser.Parse(data.Data(), data.Size(), stop, /*continueOnLengthMismatch=*/false,
                         /*singleRoot=*/false);
            ASSERT_GE(parser.GetRootCount(), 1U);
            ASSERT_TRUE(stop || parser.GetLastErrorCode() == 0);
            const CAsn1Block* last = parser.GetRoot(parser.GetRootCount() - 1);
            ASSERT_EQ(last->corrupted, parser.GetLastErrorCode() != 0);
            Build(parser);  // within what was announced
            ASSERT_TRUE(parser.GetAsn1Structure());
        }
    }
}

TEST_F(BlockParserTest, NeverMakesMoreBlocksThanOctets) {
    // A literal reading makes a hundred million and more blocks of these.
    for (const std::size_t size : {200U, 400U, 500U, 4000U}) {
        std::mt19937 random(static_cast<unsigned>(size));
        Bytes data;
        while (data.size() < size) {
            data.push_back(static_cast<unsigned char>((0x20 + random() % 0x60) | 0x20));
        }
        data.resize(size * 2);
        for (const bool stop : {kStop, kRead}) {
            const std::size_t before = LinesWith(L": CAsn1Block::Parse");
            CCryptAsn1Parser parser;
            Parse(parser, data, stop);
            if (size >= 400) {
                EXPECT_EQ(parser.GetLastErrorCode(), ca::kErrAsn1Corrupted);
                EXPECT_EQ(LinesWith(L": CAsn1Block::Parse"), before + 1);
                const CAsn1Block* open = parser.GetRoot(parser.GetRootCount() - 1);
                EXPECT_TRUE(open->corrupted);
                EXPECT_EQ(open->totalLength, 0U);
            }
            std::size_t blocks = 0;
            std::vector<const CAsn1Block*> open(parser.GetRoots().begin(), parser.GetRoots().end());
            while (!open.empty()) {
                const auto children = open.back()->GetInnerBlocks();
                open.pop_back();
                open.insert(open.end(), children.begin(), children.end());
                ++blocks;
            }
            EXPECT_LE(blocks, data.size());
        }
    }
}

TEST_F(BlockParserTest, TakesATotalAbove32BitsAsCorrupted) {
    CAsn1Block root;
    for (int i = 0; i < 2; ++i) {
        root.AddInnerBlock()->contentLength = 0x80000000;
    }
    EXPECT_THROW(root.GetTotalLength(/*recompute=*/true), ca::Exception);
    EXPECT_EQ(LinesWith(L": CAsn1Block::GetTotalLength"), 1U);
}

TEST_F(BlockParserTest, ShowsTheSameOctetsAFewTimesOnly) {
    // Each child shows the rest of the buffer again. Read literally, 140,000 octets are 1.4 GB.
    struct Case {
        const char* name;
        Bytes unit;
        bool stop;
    };
    const Case cases[] = {
        {"definite", Hex("30 05 04 83 00 80 00"), kStop},
        {"truncated", Hex("30 06 04 84 FF FF FF FF"), kRead},
        {"indefinite", Hex("30 02 04 80"), kStop},
        {"endless", Hex("30 02 04 80"), kRead},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        for (const std::size_t units : {20U, 20000U}) {
            Bytes data;
            for (std::size_t i = 0; i < units; ++i) {
                Append(data, c.unit);
            }
            data.resize(data.size() + 0x8000, static_cast<unsigned char>(c.stop ? 0 : 4));
            const std::size_t before = LinesWith(L": CAsn1Block::Parse");
            CCryptAsn1Parser parser;
            Parse(parser, data, c.stop);
            const bool isSmall = units == 20;  // the tree as the rules have it
            EXPECT_EQ(parser.GetLastErrorCode(), isSmall ? 0U : ca::kErrAsn1Corrupted);
            EXPECT_GE(parser.GetRootCount(), isSmall ? units : 16U);
            EXPECT_GE(LinesWith(L": CAsn1Block::Parse"), before + (isSmall ? 0 : 1));
            const std::size_t most = 16 * data.size() + (1 << 20);
            EXPECT_LE(Build(parser).size(), most + 6 * data.size());
            EXPECT_GE(Build(parser).size(), isSmall ? 0 : most - data.size());
            EXPECT_TRUE(parser.GetRoot(parser.GetRootCount() - 1)->corrupted != isSmall);
        }
    }
}

TEST_F(BlockParserTest, LogsEachKindOfDamageAFewTimesOnly) {
    Bytes data;
    for (int i = 0; i < 1000; ++i) {
        Append(data, Hex("30 01 04 70"));  // too long for its parent, and at the end for the buffer
    }
    CCryptAsn1Parser parser;
    parser.Parse(data.data(), static_cast<unsigned>(data.size()), kRead,
                 /*continueOnLengthMismatch=*/true, false);
    EXPECT_EQ(LinesWith(L"Поврежденные asn.1 данные"), 16U);
    EXPECT_GE(LinesWith(L": CAsn1Block::Parse"), 17U);
    EXPECT_LE(LinesWith(L""), 16U + 2 * 32U + 2U);  // the two last end the parse
}

// Runs on a stack that any recursion on depth would leave at once.
void OnSmallStack(const std::function<void()>& task) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, std::size_t{256} << 10U);
    pthread_t thread;
    auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    std::function<void()> copy = task;
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &copy), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

TEST_F(BlockParserTest, NeedsNoStackForDepth) {
    constexpr std::size_t kDepth = 200000;
    Bytes open;
    for (std::size_t i = 0; i < kDepth; ++i) {
        Append(open, {0x30, 0x80});
    }
    Bytes closed = open;
    Append(closed, {0x05, 0x00});
    closed.resize(closed.size() + 2 * kDepth);
    OnSmallStack([&] {
        for (Bytes* data : {&open, &closed}) {
            CCryptAsn1Parser parser;
            Parse(parser, *data);
            EXPECT_EQ(parser.GetLastErrorCode(), data == &open ? ca::kErrAsn1UnexpectedEnd : 0U);
            const std::size_t octets = 4 * kDepth + (data == &open ? 0 : 2);
            EXPECT_EQ(parser.GetTotalLength(), octets);
            CAsn1Block holder;
            const std::unique_ptr<CAsn1Block> copy(holder.ImportInnerBlock(parser.GetRoot(0)));
            EXPECT_GT(copy->GetTotalLength(/*recompute=*/true), 2 * kDepth);
            EXPECT_TRUE(parser.GetAsn1Structure());
            if (data == &closed) {
                EXPECT_TRUE(Build(parser) == closed);
            }
        }
    });
}

}  // namespace
