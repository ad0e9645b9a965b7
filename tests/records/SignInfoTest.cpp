#include "common/sha1.h"
#include "records/fill/SignInfoFill.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/EnglishTest.h"
#include "tests/records/RecordTesting.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>

namespace {

const Octets kSignedData = Oid("1.2.840.113549.1.7.2");
const Octets kData = Oid("1.2.840.113549.1.7.1");
const Octets& kSha256 = kSha256Algorithm;
const Octets& kRsa = kRsaKeyAlgorithm;
const Octets kSignature = Tlv(0x04, Text("signature"));
const Octets kTime = Tlv(0x17, Text("240101000000Z"));
const Octets kKeyId = Tlv(0x04, {0xBE, 0xEF});

Octets Serial(unsigned char number) {
    return {0x02, 0x01, number};
}
// Issued by CA; the key identifier is its one extension, `ballast` octets another.
Octets Certificate(unsigned char serial, const char* subject, std::size_t ballast = 0) {
    const Octets keyId = Extension("2.5.29.14", kKeyId);
    const Octets other = Extension("1.2.3", Tlv(0x04, Octets(ballast, 1)));
    const Octets tbs =
        Tlv(0x30,
            {Tlv(0xA0, Serial(2)), Serial(serial), kRsa, Name("CA"), Tlv(0x30, {kTime, kTime}),
             Name(subject),
             Tlv(0x30, {kRsa, {0x03, 0x09, 0x00, 0x30, 0x06, 0x02, 0x01, 0x05, 0x02, 0x01, 0x03}}),
             Tlv(0xA3, Tlv(0x30, {keyId, other}))});
    return Tlv(0x30, {tbs, kRsa, {0x03, 0x01, 0x00}});
}
// Version 2, for the certificate of CA with that serial number, as CertificateChoices has it.
Octets AttributeCertificate(unsigned char holder) {
    const Octets names = Tlv(0x30, Tlv(0xA4, Name("CA")));
    const Octets info =
        Tlv(0x30, {Serial(1), Tlv(0x30, Tlv(0xA0, {names, Serial(holder)})),
                   Tlv(0xA0, Tlv(0x30, Tlv(0xA4, Name("Authority")))), kRsa, Serial(0x77)});
    return Tlv(0xA2, {info, kRsa, {0x03, 0x01, 0x00}});
}

// The same for the certificate, or the key, with that SHA-1 digest.
Octets AttributeCertificateOf(const Octets& octets) {
    SHA1 sha1;
    sha1.Update(octets);
    Octets digest = {0x00};
    const std::wstring hex = sha1.Final();
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        digest.push_back(static_cast<unsigned char>(std::stoul(hex.substr(i, 2), nullptr, 16)));
    }
    const Octets holder =
        Tlv(0xA2, {{0x0A, 0x01, 0x01}, Algorithm("1.3.14.3.2.26"), Tlv(0x03, digest)});
    const Octets info =
        Tlv(0x30, {Serial(1), Tlv(0x30, holder), Tlv(0xA0, Tlv(0x30, Tlv(0xA4, Name("Authority")))),
                   kRsa, Serial(0x78)});
    return Tlv(0xA2, {info, kRsa, {0x03, 0x01, 0x00}});
}

Octets Pkcs9(int arc, const Octets& values) {
    return Attribute(("1.2.840.113549.1.9." + std::to_string(arc)).c_str(), values);
}
Octets Smime(int arc, const Octets& values) {
    return Attribute(("1.2.840.113549.1.9.16.2." + std::to_string(arc)).c_str(), values);
}

Octets ById(unsigned char serial) {
    return Tlv(0x30, {Name("CA"), Serial(serial)});
}
Octets Signer(const Octets& sid, const Octets& signedAttributes = {},
              const Octets& unsignedAttributes = {}) {
    return Tlv(
        0x30,
        {Serial(1), sid, kSha256, signedAttributes.empty() ? Octets() : Tlv(0xA0, signedAttributes),
         kRsa, kSignature, unsignedAttributes.empty() ? Octets() : Tlv(0xA1, unsignedAttributes)});
}

using Tag = std::function<Octets(unsigned char, std::initializer_list<Octets>)>;

Octets Definite(unsigned char tag, std::initializer_list<Octets> parts) {
    return Tlv(tag, parts);
}

Octets Message(const Octets& certificates, const Octets& signers, const Octets& content = {},
               const Tag& tag = Definite) {
    const Octets signedData =
        tag(0x30, {Serial(1), tag(0x31, {kSha256}), tag(0x30, {kData, content}),
                   tag(0xA0, {certificates}), tag(0x31, {signers})});
    return tag(0x30, {kSignedData, tag(0xA0, {signedData})});
}

struct Described {
    bool isAttached = false;
    ca::SignInfos list;

    const ca::SignInfo& operator[](std::size_t index) const { return *list.items.at(index); }
    const std::wstring& Error(std::size_t index) const { return (*this)[index].signCert.error; }
};

Described Describe(Octets object) {
    const Octets before = object;
    Described described;
    ca::SignInfos written;
    described.isAttached = ca::FillSignInfos(object, written).value();
    FromText(described.list, ToText(written));
    EXPECT_EQ(before, object) << "describing changed the octets";
    return described;
}

using SignInfoTest = EnglishTest;

TEST_F(SignInfoTest, FindsTheCertificatesOfASigner) {
    const Octets store = Join({Certificate(5, "Other"), Certificate(9, "Ann"),
                               AttributeCertificate(9), AttributeCertificate(5)});
    const Octets signers = Join({Signer(ById(9)), Signer(Tlv(0x80, {0xBE, 0xEF})), Signer(ById(7)),
                                 Signer(Tlv(0x80, {0x01}))});
    for (const Tag& tag : {Tag(Definite), Tag(Indefinite)}) {
        const Described found = Describe(Message(store, signers, tag(0xA0, {kSignature}), tag));
        ASSERT_EQ(4U, found.list.items.size());
        EXPECT_TRUE(found.isAttached);
        EXPECT_EQ(L"CN=Ann", found[0].signCert.description.readable);
        EXPECT_EQ(L"77", found[0].attrCert.serial);
        EXPECT_EQ(L"09", found[0].attrCert.holderSerial);
        EXPECT_EQ(L"RSA with SHA-256", found[0].signAlg);
        EXPECT_EQ(L"SHA-256", found[0].hashAlg);
        EXPECT_EQ(L"fab5f62863cdedc5143552c9d37d6679e3304f7a", found[0].signId);
        EXPECT_EQ(L"", found.Error(0));
        EXPECT_EQ(L"CN=Other", found[1].signCert.description.readable)
            << "by key identifier, the first";
        EXPECT_EQ(L"05", found[1].attrCert.holderSerial);
        EXPECT_EQ(L"CN=CA", found[2].signCert.issuer.readable);
        EXPECT_EQ(L"07", found[2].signCert.serial);
        EXPECT_EQ(L"Certificate is not in the message", found.Error(2));
        EXPECT_EQ(L"01", found[3].signCert.extensions.items.at(0)->formattedData);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(16199U, found[i].verifyResultEx.signatureVerifyResult);
            EXPECT_NE(0U, found[i].signCert.validityNumber) << "reads as a good one";
            EXPECT_NE(0U, found[i].attrCert.validityNumber) << "reads as a good one";
        }
    }
}

// Nothing that stands in front of a certificate hides it, and "Error" says what and where.
TEST_F(SignInfoTest, FindsCertificatesBehindOddElements) {
    const struct {
        Octets odd;
        const wchar_t* error;
    } cases[] = {
        {{0x02, 0x01, 0x05}, L"SignedData.certificates: unexpected element, tag 02, offset 71"},
        {{0xBF, 0x64, 0x01, 0x05}, L"SignedData.certificates: malformed element, offset 71"},
        {{0x00, 0x00}, L"SignedData.certificates: malformed element, offset 71"},
        {{0x30, 0x84, 0xFF, 0xFF, 0xFF, 0xFF},
         L"SignedData.certificates: element longer than its container, offset 71"},
        {{0x30, 0xFF, 0x30, 0x80, 0x30, 0x03, 0x02, 0x01, 0x05},
         L"SignedData.certificates: malformed element, offset 71"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.odd));
        const Octets store = Join({c.odd, Certificate(5, "Other"), Certificate(9, "Ann")});
        const Octets message = Message(store, Signer(ById(9)), Tlv(0xA0, kSignature));
        ASSERT_TRUE(std::equal(c.odd.begin(), c.odd.end(), message.begin() + 71));
        const Described found = Describe(message);
        ASSERT_EQ(1U, found.list.items.size());
        EXPECT_EQ(L"CN=Ann", found[0].signCert.description.readable);
        EXPECT_EQ(c.error, found.Error(0));
    }
}

TEST_F(SignInfoTest, FindsAHolderByItsDigest) {
    const Octets certificate = Certificate(9, "Ann");
    const Octets key =
        Tlv(0x30, {kRsa, {0x03, 0x09, 0x00, 0x30, 0x06, 0x02, 0x01, 0x05, 0x02, 0x01, 0x03}});
    for (const Octets& digested : {certificate, key, Certificate(8, "Bob")}) {
        const Described found =
            Describe(Message(Join({AttributeCertificateOf(digested), certificate}),
                             Join({Signer(ById(9)), Signer(ById(9))})));
        const bool isHolder = digested == certificate || digested == key;
        EXPECT_EQ(isHolder ? L"78" : L"", found[0].attrCert.serial);
        EXPECT_EQ(isHolder ? L"78" : L"", found[1].attrCert.serial);
    }
}

TEST_F(SignInfoTest, TakesWhatTheSignerStatesFromTheAttributes) {
    const Octets binaryTime = Smime(46, {0x02, 0x04, 0x66, 0x00, 0x00, 0x00});
    const Octets time = Pkcs9(5, kTime);
    const Octets hint = Smime(4, Tlv(0x30, {Tlv(0x0C, Text("letter")), kData}));
    const Octets description = Pkcs9(13, Tlv(0x0C, Text("approved")));
    struct Case {
        Octets signedAttributes;
        Octets unsignedAttributes;
        const wchar_t* time;
        const wchar_t* comment;
    };
    const Case cases[] = {
        {Join({binaryTime, time}), hint, L"01.01.2024 00:00:00", L"letter"},
        {Join({hint, binaryTime}), Join({time, description}), L"24.03.2024 10:27:12", L"approved"},
        {kRsa, time, L"", L""},  // what anybody can add is no signing time
        {Pkcs9(5, Tlv(0x17, Text("24"))), {}, L"", L""},
    };
    for (const Case& c : cases) {
        const Described said =
            Describe(Message({}, Signer(ById(1), c.signedAttributes, c.unsignedAttributes)));
        EXPECT_EQ(c.time, said[0].signTime.utc);
        EXPECT_EQ(c.comment, said[0].comment);
        EXPECT_FALSE(said.isAttached);
    }
}

TEST_F(SignInfoTest, SaysWhatSignersShareOfEach) {
    const Octets certificate = Certificate(1, "Ann");
    const Octets type =
        Pkcs9(3, {0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x07, 0x01});
    const Octets comment = Pkcs9(13, Tlv(0x0C, Text("approved")));
    const Octets badDigest = Pkcs9(4, {0x02, 0x01, 0x05});
    for (const Octets& last : {Pkcs9(4, {0x04, 0x02, 0xBE, 0xEF}), badDigest}) {
        const Octets signer = Signer(ById(1), Join({type, Pkcs9(5, kTime), comment, last}));
        const Described said = Describe(Message(certificate, Join({signer, signer, signer})));
        ASSERT_EQ(3U, said.list.items.size());
        EXPECT_EQ(last != badDigest, said.Error(0).empty()) << last.size();
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(L"approved", said[i].comment);
            EXPECT_EQ(said.Error(0), said.Error(i));
            ASSERT_EQ(said[0].extensions.size(), said[i].extensions.size());
            for (std::size_t k = 0; k < said[0].extensions.size(); ++k) {
                EXPECT_EQ(ToText(*said[0].extensions[k]), ToText(*said[i].extensions[k]));
            }
        }
    }
}

bool Says(const std::wstring& error, const wchar_t* text) {
    return error.find(text) != std::wstring::npos;
}

TEST_F(SignInfoTest, NotesWhatStandsTwice) {
    const Octets later = Tlv(0x17, Text("250101000000Z"));
    const Octets stamp = Smime(20, Tlv(0x04, Text("x")));
    const struct {
        const char* name;
        Octets attributes;
        bool isFault;
    } cases[] = {
        {"two signing times", Join({Pkcs9(5, kTime), kRsa, Pkcs9(5, later)}), true},
        {"two values of one", Pkcs9(5, Join({kTime, later})), true},
        {"two time stamps of the content", Join({Pkcs9(5, kTime), stamp, stamp}), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Described said = Describe(Message({}, Signer(ById(1), c.attributes)));
        EXPECT_EQ(L"01.01.2024 00:00:00", said[0].signTime.utc) << "the first";
        EXPECT_EQ(c.isFault, Says(said.Error(0),
                                  L"Signing time (1.2.840.113549.1.9.5): stands "
                                  L"more than once"))
            << said.Error(0);
        EXPECT_FALSE(Says(said.Error(0), L"9.16.2.20): stands")) << said.Error(0);
    }
    const Octets ann = Certificate(9, "Ann");
    const wchar_t* const kAnother = L"another certificate that fits";
    EXPECT_TRUE(Says(
        Describe(Message(Join({ann, Certificate(9, "Bob")}), Signer(ById(9)))).Error(0), kAnother));
    EXPECT_EQ(L"",
              Describe(Message(Join({ann, ann, Certificate(8, "Bob")}), Signer(ById(9)))).Error(0))
        << "the same one again is none other; keys are not asked for";
    EXPECT_TRUE(
        Says(Describe(Message(Join({ann, Certificate(8, "Bob")}), Signer(Tlv(0x80, {0xBE, 0xEF}))))
                 .Error(0),
             kAnother));
}

TEST_F(SignInfoTest, NamesTheSignersInsideAttributes) {
    const Octets token = Message(Certificate(7, "Stamps"), Signer(ById(7)));
    const Octets ann = Certificate(9, "Ann");
    const Octets response = Tlv(0x30, {Tlv(0x30, Serial(0)), token});
    const std::wstring stamps = L"Signer: CN=Stamps\n  Issuer: CN=CA\n  Serial: 07\n  Signature ";
    const struct {
        const char* name;
        Octets attribute;
        std::wstring text;
    } cases[] = {
        {"countersignature", Pkcs9(6, Signer(ById(9))),
         L"Signer: CN=Ann\n  Issuer: CN=CA\n  Serial: 09\n  Signature "},
        {"by key", Pkcs9(6, Signer(Tlv(0x80, {0xBE, 0xEF}))),
         L"Signer: CN=Ann\n  Key: beef\n  Signature "},
        {"nobody's", Pkcs9(6, Signer(ById(3))), L"Signer:\n  Issuer: CN=CA\n  Serial: 03\n"},
        {"token", Smime(14, token), stamps},
        {"token of the message's signer", Smime(14, Message({}, Signer(ById(9)))),
         L"Signer: CN=Ann\n"},
        {"response", Smime(14, response), stamps},
        {"octets", Smime(14, Tlv(0x04, token)), stamps},
        {"segments of a response", Smime(14, Tlv(0x24, Tlv(0x04, response))), stamps},
        {"explicit tag", Smime(14, Tlv(0xA0, token)), stamps},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Described said = Describe(Message(ann, Signer(ById(9), {}, c.attribute)));
        ASSERT_EQ(1U, said[0].extensions.size());
        const std::wstring& text = said[0].extensions[0]->extensionInterpretedString;
        EXPECT_NE(std::wstring::npos, text.find(c.text)) << text;
        EXPECT_EQ(L"", said.Error(0));
    }
}

TEST_F(SignInfoTest, KeepsTheTypeOfAnOddAttribute) {
    const Octets odd = Tlv(0x30, {Tlv(0x06, {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 1, 9, 5}), kTime});
    const Described said = Describe(Message({}, Signer(ById(1), odd)));
    EXPECT_EQ(L"Signing time", said[0].extensions.at(0)->extensionName);
    EXPECT_TRUE(Says(said[0].extensions[0]->extensionInterpretedString, L"\n    UTC TIME: "))
        << said[0].extensions[0]->extensionInterpretedString;
    EXPECT_TRUE(Says(said.Error(0), L"Attribute.values: unexpected element")) << said.Error(0);
}

TEST_F(SignInfoTest, NestsCountersignaturesToABound) {
    Octets signer = Signer(ById(99));
    for (unsigned char level = 18; level != 0; --level) {
        const Octets plain = Signer(ById(static_cast<unsigned char>(level + 100)));
        signer = Signer(ById(level), {}, Pkcs9(6, Join({signer, plain})));
    }
    const Described described = Describe(Message({}, signer));
    const ca::SignInfo* at = &described[0];
    for (unsigned level = 1; level <= ca::kMaxCountersigned; ++level) {
        ASSERT_EQ(2U, at->coSigners.items.size()) << level;
        EXPECT_FALSE(at->extensions.at(0)->extensionInterpretedData.empty());
        EXPECT_EQ(L"Certificate is not in the message", at->signCert.error);
        at = at->coSigners.items[0].get();
    }
    EXPECT_TRUE(at->coSigners.items.empty());
    EXPECT_EQ(L"Certificate is not in the message\nCountersignatures are nested too deeply",
              at->signCert.error);
    ca::SignInfos again;
    FromText(again, ToText(described.list));
    EXPECT_EQ(ToText(described.list), ToText(again));
}

TEST_F(SignInfoTest, DescribesTheOthersBesideDamagedSigners) {
    Octets truncated = Signer(ById(3));
    truncated.resize(truncated.size() - 4);
    truncated[1] = static_cast<unsigned char>(truncated[1] - 4);
    const Octets badAttributes =
        Join({{0x02, 0x01, 0x05}, Pkcs9(5, Tlv(0x17, Text("240101000000Z")))});
    const Octets signers = Join({{0x02, 0x01, 0x05},
                                 truncated,
                                 Signer(ById(1), badAttributes),
                                 Signer(ById(1)),
                                 Signer(Tlv(0xA0, Serial(5))),
                                 {0x30, 0x10, 0x00}});
    const Octets message = Message(Certificate(1, "Ann"), signers);
    const Described described = Describe(message);
    ASSERT_EQ(6U, described.list.items.size());
    EXPECT_NE(std::wstring::npos, described.Error(0).find(L"Unreadable value: 020105"));
    const auto start =
        std::search(message.begin(), message.end(), truncated.begin(), truncated.end()) -
        message.begin();
    const std::wstring place =
        L"SignerInfo.signature: element longer than its container, offset " +
        std::to_wstring(static_cast<std::size_t>(start) + truncated.size() + 4 - kSignature.size());
    EXPECT_NE(std::wstring::npos, described.Error(1).find(place)) << described.Error(1);
    EXPECT_EQ(L"03", described[1].signCert.serial);
    EXPECT_EQ(L"CN=Ann", described[2].signCert.description.readable);
    EXPECT_EQ(L"01.01.2024 00:00:00", described[2].signTime.utc);
    EXPECT_EQ(2U, described[2].extensions.size());
    EXPECT_NE(L"", described.Error(2));
    EXPECT_EQ(L"", described.Error(3));
    EXPECT_NE(L"", described.Error(4));
    EXPECT_NE(L"", described.Error(5));
}

TEST_F(SignInfoTest, BoundsWhatASmallMessageCanAskFor) {
    constexpr std::size_t kBallast = 600000;
    Octets few;
    for (int i = 0; i < 8; ++i) {
        few = Join({few, Signer(ById(1))});
    }
    const Described repeated = Describe(Message(Certificate(1, "Ann", kBallast), few));
    std::size_t whole = 0;
    for (const auto& signature : repeated.list.items) {
        whole += signature->signCert.rawData.empty() ? 0 : 1;
        EXPECT_EQ(L"01", signature->signCert.serial);
    }
    EXPECT_GE(whole, 2U);
    EXPECT_LE(whole, 4U);
    EXPECT_EQ(L"Certificate is named by too many signatures to be described with each",
              repeated.Error(7));

    Octets many;
    const Octets signer = Signer(ById(1), Pkcs9(5, kTime), Smime(99, Tlv(0x04, Octets(80, 0xAA))));
    for (std::size_t i = 0; i < ca::kMaxSignatures + 50; ++i) {
        many.insert(many.end(), signer.begin(), signer.end());
    }
    const Described counted = Describe(Message({}, many));
    EXPECT_EQ(ca::kMaxSignatures, counted.list.items.size());
    EXPECT_NE(std::wstring::npos, counted.Error(0).find(L"\u2026 and 50 more"));
}

TEST_F(SignInfoTest, TellsSignedDataFromOtherObjects) {
    Octets message = Message({}, Signer(ById(1)));
    const std::span<const unsigned char> found = ca::FindSignedData(message);
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found.size(), ca::FindSignedData(found).size()) << "without its ContentInfo";
    Octets data = Tlv(0x30, {kData, Tlv(0xA0, kSignature)});
    Octets empty = Tlv(0x30, {kSignedData});
    Octets certificate = Certificate(1, "Ann");
    message.pop_back();
    for (Octets* other : {&data, &empty, &certificate, &message}) {
        EXPECT_TRUE(ca::FindSignedData(*other).empty());
    }
    const auto response = [](unsigned char status, const Octets& token) {
        return Tlv(0x30, {Tlv(0x30, {Serial(status), Tlv(0x30, Tlv(0x0C, Text("why")))}), token});
    };
    const Octets token = Message({}, Signer(ById(1)));
    for (const unsigned char status : Octets{0, 1}) {
        Octets granted = response(status, token);
        EXPECT_EQ(found.size(), ca::FindSignedData(granted).size());
    }
    Octets refused = response(2, token);
    Octets granted = response(0, {});
    for (Octets* other : {&refused, &granted}) {
        EXPECT_TRUE(ca::FindSignedData(*other).empty());
    }
    const Octets noSigners = Tlv(0x30, {Serial(1), Tlv(0x31, kSha256), Tlv(0x30, kData)});
    const Described described = Describe(noSigners);
    ASSERT_EQ(1U, described.list.items.size()) << "a fault must be seen";
    EXPECT_NE(std::wstring::npos, described.Error(0).find(L"signerInfos"));
}

}  // namespace
