#include "common/ErrorCodes.h"
#include "records/fill/RecipientsFill.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/EnglishTest.h"
#include "tests/records/RecordTesting.h"

namespace {

const Octets& kRsa = kRsaKeyAlgorithm;
const Octets kName = Name("Authority");
const Octets kKey = Tlv(0x04, {0xEE, 0xEE});
const Octets kVersion = {0x02, 0x01, 0x00};

Octets Id(const Octets& issuer, const Octets& serial) {
    return Tlv(0x30, {issuer, Tlv(0x02, serial)});
}
Octets Transported(const Octets& id) {
    return Tlv(0x30, {kVersion, id, kRsa, kKey});
}
Octets Agreed(const std::initializer_list<Octets> ids) {
    Octets keys;
    for (const Octets& id : ids) {
        keys = Join({keys, Tlv(0x30, {id, kKey})});
    }
    const Octets originator = Tlv(0xA0, Tlv(0x80, {0x01}));
    return Tlv(0xA1, {kVersion, originator, kRsa, Tlv(0x30, keys)});
}
Octets Other(const Octets& type, const Octets& value) {
    return Tlv(0xA4, {Tlv(0x06, type), value});
}
Octets Envelope(const Octets& recipients) {
    return Tlv(0x30, {kVersion, Tlv(0xA0, Octets()), Tlv(0x31, recipients)});
}

using RecipientsTest = EnglishTest;

// "issuer/serial/description" of each, "!" after those with a fault, "-" before unnamed ones.
std::wstring Summary(Octets recipients) {
    Octets envelope = Envelope(recipients);
    const Octets before = envelope;
    std::wstring text;
    const ca::Recipients found = ca::DescribeRecipients(envelope);
    std::size_t named = 0;
    ca::CertInfos2 read;
    FromText(read, ToText(found.records));
    for (const auto& record : read.items) {
        text += text.empty() ? L"" : L"; ";
        text += record->id.empty() ? L"-" : L"";
        text +=
            record->issuer.readable + L"/" + record->serial + L"/" + record->description.readable;
        text += record->error.empty() ? L"" : L"!";
        named += record->id.empty() ? 0 : 1;
    }
    EXPECT_EQ(named, found.ids.Count());
    EXPECT_EQ(before, envelope) << "describing changed the octets";
    return text;
}

TEST_F(RecipientsTest, ReadsEachKindAndGoesOnAfterFaults) {
    const Octets good = Transported(Id(kName, {0x00, 0xAB}));
    const Octets goodId = Id(kName, {0x05});
    const Octets pskValue = Tlv(0x30, {kVersion, kKey, kRsa, kRsa, Tlv(0x30, {good, good}), kKey});
    const Octets agreedPsk = Tlv(0x30, {kVersion, kKey, Tlv(0xA0, Tlv(0x80, {0x01})), kRsa, kRsa,
                                        Tlv(0x30, Tlv(0x30, {goodId, kKey}))});
    const Octets kem =
        Tlv(0x30, {kVersion, Tlv(0x80, {0x0F}), kRsa, kKey, kRsa, {0x02, 0x01, 0x20}, kRsa, kKey});
    const auto oriType = [](unsigned char last) {
        return Octets{0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x09, 0x10, 0x0D, last};
    };
    const struct {
        const char* name;
        Octets recipients;
        const wchar_t* summary;
    } cases[] = {
        {"issuer and serial", good, L"CN=Authority/ab/"},
        {"key identifier", Transported(Tlv(0x80, {0xC0, 0xDE})), L"/c0de/Key: c0de"},
        {"segmented key identifier", Transported(Tlv(0xA0, {{0x04, 1, 0xC0}, {0x04, 1, 0xDE}})),
         L"/c0de/Key: c0de"},
        {"several of one agreement", Agreed({goodId, Tlv(0xA0, Tlv(0x04, {0x0A}))}),
         L"CN=Authority/05/; /0a/Key: 0a"},
        {"one hidden among others", Join({Transported(Id(Tlv(0x30, Octets()), {0x00})), good}),
         L"-/00/; CN=Authority/ab/"},
        {"pre-shared key", Other(oriType(1), pskValue), L"CN=Authority/ab/; CN=Authority/ab/"},
        {"pre-shared key and an agreed one", Other(oriType(2), agreedPsk), L"CN=Authority/05/"},
        {"encapsulated key", Other(oriType(3), kem), L"/0f/Key: 0f"},
        {"unknown kind", Join({Other({0x2A, 0x03}, kKey), good}), L"-//1.2.3; CN=Authority/ab/"},
        {"fault in one", Join({Tlv(0x30, {kVersion, Tlv(0x80, {0x0A})}), good}),
         L"/0a/Key: 0a!; CN=Authority/ab/"},
        {"no recipient", Join({{0xA9, 0x00}, good}),
         L"-//Unreadable value: a900!; CN=Authority/ab/"},
        {"fault in an agreement", Agreed({goodId, kKey}),
         L"CN=Authority/05/; -//Unreadable value: 30080402eeee0402eeee!"},
        {"key without its identifier", Agreed({Tlv(0xA0, Octets()), goodId}),
         L"-//Unreadable value: 3006a0000402eeee!; CN=Authority/05/"},
        {"octets that are no element", Join({good, {0x30, 0x7F}}),
         L"CN=Authority/ab/; -//Unreadable value: 307f!"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.summary, Summary(c.recipients));
    }
}

TEST_F(RecipientsTest, TellsHiddenRecipientsFromNoEnvelope) {
    EXPECT_EQ(ca::kErrRecipientsHidden, ErrorOf([] { Summary({}); }));
    EXPECT_EQ(ca::kErrRecipientsHidden, ErrorOf([] { Summary(Transported({0x80, 0x01, 0x00})); }));
    for (Octets wrong : {Octets{0x30, 0x00}, Octets{0x30, 0x03, 0x02, 0x01, 0x00}, Octets{0x31}}) {
        EXPECT_EQ(ca::kErrBadData, ErrorOf([&] { ca::DescribeRecipients(wrong); }));
    }
}

}  // namespace
