#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Strings.h"
#include "asn1/FieldReader.h"
#include "common/ErrorCodes.h"
#include "common/Lng.h"
#include "tests/asn1/DerWriter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Pair ::= SEQUENCE { key INTEGER, value UTF8String OPTIONAL }
class CPair : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Pair";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override {
        CFieldReader fields(*this);
        key = fields.Required<CAsn1Integer>("key");
        value = fields.Optional<CAsn1UTF8String>("value");
        fields.End();
    }

    CAsn1Integer* key = nullptr;
    CAsn1UTF8String* value = nullptr;
};

// Either ::= CHOICE { number INTEGER, pair [0] IMPLICIT Pair, wrapped [1] EXPLICIT Pair }
class CEither : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Either";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1Integer || (tag & kAsn1ContextBit) != 0;
    }

    void Decode() override {
        CChoiceReader choice(*this);
        number = choice.Alternative<CAsn1Integer>("number");
        pair = choice.Implicit<CPair>(0, "pair");
        wrapped = choice.Explicit<CPair>(1, "wrapped");
        choice.End();
    }

    CAsn1Integer* number = nullptr;
    CPair* pair = nullptr;
    CPair* wrapped = nullptr;
};

// Sample ::= SEQUENCE {
//     version  [0] EXPLICIT INTEGER DEFAULT 1,
//     flag     BOOLEAN DEFAULT FALSE,
//     either   Either,
//     pairs    SEQUENCE OF Pair,
//     mark     [2] IMPLICIT BOOLEAN DEFAULT TRUE,
//     inner    [3] IMPLICIT Pair OPTIONAL,
//     rest     ANY OPTIONAL }
class CSample : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Sample";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override {
        CFieldReader fields(*this);
        version = fields.OptionalExplicit<CAsn1Integer>(0, "version");
        flag = fields.Default("flag", false);
        either = fields.Required<CEither>("either");
        pairs = fields.Required<CAsn1SequenceOf<CPair>>("pairs");
        mark = fields.DefaultImplicit(2, "mark", true);
        inner = fields.OptionalImplicit<CPair>(3, "inner");
        rest = fields.OptionalAny("rest");
        fields.End();
    }

    CAsn1Integer* version = nullptr;
    bool flag = false;
    CEither* either = nullptr;
    CAsn1SequenceOf<CPair>* pairs = nullptr;
    bool mark = false;
    CPair* inner = nullptr;
    CAsn1Any* rest = nullptr;
};

Octets Integer(unsigned char value) {
    return {0x02, 0x01, value};
}

Octets Pair(unsigned char key, const char* value) {
    return Tlv(0x30, {Integer(key), Tlv(0x0C, Text(value))});
}

const Octets kNoPairs{0x30, 0x00};

class FieldReaderTest : public testing::TestWithParam<Asn1Blocks> {
  protected:
    void SetUp() override { SetZORNALng(L"en"); }
    void TearDown() override { SetZORNALng(L"ru"); }
};

TEST_P(FieldReaderTest, ReadsEveryKindOfMember) {
    Octets der = Tlv(0x30, {Tlv(0xA0, Integer(2)), Tlv(0x01, {0xFF}), Tlv(0xA1, Pair(7, "seven")),
                            Tlv(0x30, {Pair(1, "one"), Pair(2, "two")}), Tlv(0x82, {0x00}),
                            Tlv(0xA3, {Integer(9)}), Tlv(0x04, {0xAB})});
    CAsn1Root<CSample> sample(der, GetParam());
    for (int time = 0; time < 2; ++time) {  // the same again
        sample->Decode();
        EXPECT_EQ(2, IntegerOf(sample->version, 1));
        EXPECT_TRUE(sample->flag);
        ASSERT_NE(nullptr, sample->either->wrapped);
        EXPECT_EQ(nullptr, sample->either->number);
        EXPECT_EQ(nullptr, sample->either->pair);
        EXPECT_EQ(7, IntegerOf(sample->either->wrapped->key, 0));
        sample->either->wrapped->value->Decode();
        EXPECT_EQ(L"seven", sample->either->wrapped->value->GetFormattedString(0));
        EXPECT_FALSE(sample->mark);
        EXPECT_EQ(9, IntegerOf(sample->inner->key, 0));
        EXPECT_EQ(0x04, sample->rest->Tag());
        EXPECT_FALSE(sample->HasFault());
    }
    EXPECT_EQ(2U, sample->pairs->Count());
    auto at = sample->pairs->Elements();
    ASSERT_TRUE(at.Next());
    ASSERT_TRUE(at.Next());
    EXPECT_EQ(nullptr, at.Fault());
    EXPECT_EQ(2, IntegerOf(at.Item()->key, 0));
    EXPECT_FALSE(at.Next());
}

TEST_P(FieldReaderTest, LeavesOutWhatIsOptional) {
    Octets der = Tlv(0x30, {Integer(5), kNoPairs});
    CAsn1Root<CSample> sample(der, GetParam());
    sample->Decode();
    EXPECT_EQ(nullptr, sample->version);
    EXPECT_EQ(1, IntegerOf(sample->version, 1));
    EXPECT_FALSE(sample->flag);
    EXPECT_EQ(5, IntegerOf(sample->either->number, 0));
    EXPECT_TRUE(sample->mark);
    EXPECT_EQ(nullptr, sample->inner);
    EXPECT_EQ(nullptr, sample->rest);
    EXPECT_EQ(0U, sample->pairs->Count());
}

TEST_P(FieldReaderTest, GivesTheOctetsAsReceived) {
    const Octets inner{0xA3, 0x81, 0x03, 0x02, 0x01, 0x09};  // a length that is not minimal
    const Octets pairs = Indefinite(0x30, {Pair(1, "one")});
    Octets der = Join({Indefinite(0x30, {Integer(5), pairs, inner}), Text("behind")});
    CAsn1Root<CSample> sample(der, GetParam());
    sample->Decode();
    EXPECT_EQ(Text("behind"), Octets(sample.Rest().begin(), sample.Rest().end()));
    EXPECT_EQ(der.size() - 6, sample->Raw().size());
    EXPECT_EQ(inner, Octets(sample->inner->Raw().begin(), sample->inner->Raw().end()));
    const auto encoding = sample->inner->GetBlock()->GetRawEncoding();
    EXPECT_EQ(inner, Octets(encoding.begin(), encoding.end()));
    EXPECT_EQ(pairs, Octets(sample->pairs->Raw().begin(), sample->pairs->Raw().end()));
    auto at = sample->pairs->Elements();
    ASSERT_TRUE(at.Next());
    EXPECT_EQ(1, IntegerOf(at.Item()->key, 0));
    EXPECT_FALSE(at.Next());
}

TEST_P(FieldReaderTest, NamesTheFirstFaultAndReadsOn) {
    const Octets badPair = Tlv(0xA3, {Tlv(0x0C, Text("no key"))});
    const struct {
        Octets content;
        std::uint32_t code;
        const wchar_t* text;
        bool hasInner;  // after the fault
    } cases[] = {
        {{}, ca::kErrAsn1Corrupted, L"Sample.either: missing element, offset 2", false},
        {Integer(5), ca::kErrAsn1Corrupted, L"Sample.pairs: missing element, offset 5", false},
        {Join({Integer(5), Tlv(0xA3, Integer(1))}), ca::kErrAsn1BadTag,
         L"Sample.pairs: unexpected element, tag a3, offset 5", true},
        {Join({Tlv(0xA0, {}), Integer(5), kNoPairs, Tlv(0xA3, Integer(1))}), ca::kErrAsn1Corrupted,
         L"Sample.version: missing element, offset 4", true},
        {Join({Tlv(0xA0, Tlv(0x04, {})), Integer(5), kNoPairs, Tlv(0xA3, Integer(1))}),
         ca::kErrAsn1BadTag, L"Sample.version: unexpected element, tag 04, offset 4", true},
        {Join({Tlv(0xA0, {Integer(2), Integer(2)}), Integer(5), kNoPairs, Tlv(0xA3, Integer(1))}),
         ca::kErrAsn1Corrupted, L"Sample.version: malformed element, offset 7", true},
        {Join({Integer(5), kNoPairs, badPair}), ca::kErrAsn1BadTag,
         L"Pair.key: unexpected element, tag 0c, offset 9", true},
        {Join({Tlv(0x85, {}), kNoPairs, badPair}), ca::kErrAsn1BadTag,
         L"Either: unexpected element, tag 85, offset 2", true},
        {Join({Integer(5), kNoPairs, Tlv(0xA3, Integer(1)), Integer(1), Integer(2)}),
         ca::kErrAsn1BadTag, L"Sample: unexpected element, tag 02, offset 15", true},
        {Join({Integer(5), kNoPairs, Tlv(0xA3, Integer(1)), {0x04, 0x02, 0x00}}),
         ca::kErrAsn1UnexpectedEnd, L"Sample.rest: element longer than its container, offset 12",
         true},
        {Join({Integer(5), {0x3F, 0x00}}), ca::kErrAsn1Corrupted,
         L"Sample.pairs: malformed element, offset 5", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(c.text)));
        Octets der = Tlv(0x30, c.content);
        CAsn1Root<CSample> sample(der, GetParam());
        try {
            sample->Decode();
            ADD_FAILURE() << "no fault";
        } catch (const ca::Exception& fault) {
            EXPECT_EQ(c.code, fault.errorCode);
            if (GetParam() == Asn1Blocks::kRead) {  // offsets of parsed blocks have their own rule
                EXPECT_EQ(c.text, fault.message);
            }
        }
        EXPECT_TRUE(sample->HasFault());
        EXPECT_EQ(c.hasInner, sample->inner != nullptr);
    }
}

TEST_P(FieldReaderTest, ChildrenStayInsideTheirParents) {
    // The INTEGER of the inner pair runs on into the octets of the outer one.
    Octets der = Tlv(0x30, {Integer(5), kNoPairs, {0xA3, 0x02, 0x02, 0x03}, Octets(3, 0x01)});
    CAsn1Root<CSample> sample(der, GetParam());
    EXPECT_THROW(sample->Decode(), ca::Exception);
    ASSERT_NE(nullptr, sample->inner);
    EXPECT_EQ(nullptr, sample->inner->key);
    EXPECT_TRUE(sample->inner->HasFault());
}

TEST_P(FieldReaderTest, ListsGoOnBehindABadElement) {
    Octets der = Tlv(
        0x30,
        {Integer(5),
         Tlv(0x30,
             {Pair(1, "one"), Integer(2), Tlv(0x30, {}), Pair(4, "four"), {0x30, 0x05, 0x00}})});
    CAsn1Root<CSample> sample(der, GetParam());
    sample->Decode();
    EXPECT_EQ(5U, sample->pairs->Count());
    const struct {
        bool item;
        bool key;
        std::uint32_t code;
        std::size_t raw;
    } steps[] = {{true, true, 0, 10},
                 {false, false, ca::kErrAsn1BadTag, 3},
                 {true, false, ca::kErrAsn1Corrupted, 2},
                 {true, true, 0, 11},
                 {false, false, ca::kErrAsn1UnexpectedEnd, 3}};
    auto at = sample->pairs->Elements();
    for (const auto& step : steps) {
        ASSERT_TRUE(at.Next());
        EXPECT_EQ(step.item, at.Item() != nullptr);
        EXPECT_EQ(step.key, at.Item() != nullptr && at.Item()->key != nullptr);
        EXPECT_EQ(step.code, at.Fault() != nullptr ? at.Fault()->errorCode : 0);
        EXPECT_EQ(step.raw, at.Raw().size());
    }
    EXPECT_FALSE(at.Next());
    EXPECT_FALSE(at.Next());
}

INSTANTIATE_TEST_SUITE_P(Blocks, FieldReaderTest,
                         testing::Values(Asn1Blocks::kAll, Asn1Blocks::kRead));

TEST(FieldReaderListTest, WalksALongListWithoutBlocks) {
    constexpr std::size_t kCount = 200000;
    Octets elements;
    elements.reserve(kCount * 3);
    for (std::size_t i = 0; i < kCount; ++i) {
        const Octets one = Integer(static_cast<unsigned char>(i));
        elements.insert(elements.end(), one.begin(), one.end());
    }
    Octets der = Tlv(0x30, elements);
    CAsn1Root<CAsn1SequenceOf<CAsn1Integer>> list(der, Asn1Blocks::kRead);
    EXPECT_EQ(kCount, list->Count());
    std::size_t seen = 0;
    for (auto at = list->Elements(); at.Next(); ++seen) {
        ASSERT_NE(nullptr, at.Item());
        ASSERT_EQ(static_cast<unsigned char>(seen), OctetsOf(at.Item())[0]);
    }
    EXPECT_EQ(kCount, seen);
    EXPECT_EQ(0U, list->GetBlock()->GetInnerBlockCount());
}

TEST(FieldReaderRootTest, RefusesOctetsThatAreNotTheType) {
    const struct {
        Octets der;
        std::uint32_t code;
    } cases[] = {{{}, ca::kErrAsn1Corrupted},
                 {{0x30}, ca::kErrAsn1UnexpectedEnd},
                 {{0x30, 0x05, 0x00}, ca::kErrAsn1UnexpectedEnd},
                 {{0x31, 0x00}, ca::kErrAsn1BadTag}};
    for (const auto& c : cases) {
        Octets der = c.der;
        try {
            CAsn1Root<CPair> pair(der);
            ADD_FAILURE() << "accepted";
        } catch (const ca::Exception& fault) {
            EXPECT_EQ(c.code, fault.errorCode);
        }
    }
}

template <class T>
class Value {
  public:
    explicit Value(Octets der) : m_der(std::move(der)) {
        CAsn1Element element;
        EXPECT_EQ(Asn1Fault::kNone, CAsn1Cursor(m_der).Next(element));
        BindBlock(m_block, element, 0);
    }
    const T* operator()() const { return &m_object; }

  private:
    Octets m_der;
    CAsn1Block m_block;
    T m_object{&m_block};
};

TEST(FieldReaderValueTest, ReadsSmallIntegersWithTheirSign) {
    const struct {
        Octets octets;
        std::int64_t value;
    } cases[] = {{{0x00}, 0},
                 {{0xFF}, -1},
                 {{0x00, 0xFF}, 255},
                 {{0x80, 0, 0, 0, 0, 0, 0, 0}, INT64_MIN},
                 {{0x7F, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, INT64_MAX},
                 {{}, -77},
                 {Octets(9, 0x00), -77}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.value, IntegerOf(Value<CAsn1Integer>(Tlv(0x02, c.octets))(), -77));
    }
    EXPECT_EQ(-77, IntegerOf(nullptr, -77));
}

TEST(FieldReaderValueTest, ReadsBitsWithoutClearingThem) {
    const Value<CAsn1BitString> bits(Tlv(0x03, {0x03, 0x81, 0x0F}));
    const CAsn1Bits value = BitsOf(bits());
    EXPECT_TRUE(value[0]);
    EXPECT_FALSE(value[1]);
    EXPECT_TRUE(value[7]);
    EXPECT_TRUE(value[12]);
    EXPECT_FALSE(value[13]) << "an unused bit";
    EXPECT_FALSE(value[1000]);
    EXPECT_EQ(0x0F, value.octets[1]) << "cleared";
    for (const Octets& content : {Octets{}, Octets{0x08, 0xFF}, Octets{0x01}}) {
        EXPECT_TRUE(BitsOf(Value<CAsn1BitString>(Tlv(0x03, content))()).octets.empty());
    }
    EXPECT_TRUE(BitsOf(nullptr).octets.empty());
}

TEST(FieldReaderValueTest, JoinsTheSegmentsOfAnOctetString) {
    const Octets segmented =
        Indefinite(0x24, {Tlv(0x04, {1, 2}), Indefinite(0x24, {Tlv(0x04, {3})}), Tlv(0x04, {4})});
    EXPECT_EQ((Octets{1, 2, 3, 4}), OctetStringOf(Value<CAsn1OctetString>(segmented)()));
    EXPECT_EQ((Octets{1, 2}), OctetStringOf(Value<CAsn1OctetString>(Tlv(0x04, {1, 2}))()));

    Octets deep = Tlv(0x04, {1});
    for (int level = 0; level < 1000; ++level) {
        deep = Tlv(0x24, deep);
    }
    for (const Octets& bad : {deep, Tlv(0x24, {0x02, 0x01, 0x00}), Tlv(0x24, {0x04, 0x05})}) {
        EXPECT_THROW(OctetStringOf(Value<CAsn1OctetString>(bad)()), ca::Exception);
    }
}

}  // namespace
