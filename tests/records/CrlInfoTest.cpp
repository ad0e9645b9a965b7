#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/InitString.h"
#include "records/fill/CrlInfoFill.h"
#include "records/scan/LooksLike.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/EnglishTest.h"
#include "tests/records/RecordTesting.h"

#include <optional>
#include <string>
#include <vector>

namespace {

const Octets kAlgorithm = Algorithm("1.2.840.113549.1.1.11", kDerNull);
const Octets kThisUpdate = Tlv(0x17, Text("240101000000Z"));
const Octets kVersion2{0x02, 0x01, 0x01};

Octets Joined(const std::vector<Octets>& parts) {
    Octets all;
    for (const Octets& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

// Of at most two octets, and the one for the sign where that is due.
Octets Serial(unsigned value) {
    const Octets sign = value < 0x8000 ? Octets() : Octets{0};
    return Tlv(0x02,
               {sign, {static_cast<unsigned char>(value >> 8), static_cast<unsigned char>(value)}});
}

// An extension of the arc 2.5.29.
Octets Extension(unsigned char arc, const Octets& value) {
    return Tlv(0x30, {{0x06, 0x03, 0x55, 0x1D, arc}, Tlv(0x04, value)});
}

Octets Entry(unsigned serial, const std::vector<Octets>& extensions = {}) {
    const Octets date = Tlv(0x17, Text("230506070809Z"));
    return extensions.empty() ? Tlv(0x30, {Serial(serial), date})
                              : Tlv(0x30, {Serial(serial), date, Tlv(0x30, Joined(extensions))});
}

// A list of what stands after its issuer.
Octets List(const std::vector<Octets>& members) {
    Octets tbs = Joined({kVersion2, kAlgorithm, Name("Issuer")});
    const Octets rest = Joined(members);
    tbs.insert(tbs.end(), rest.begin(), rest.end());
    return Tlv(0x30, {Tlv(0x30, tbs), kAlgorithm, Tlv(0x03, {0x00, 0x01})});
}

Octets ListOf(const std::vector<Octets>& entries) {
    return List({kThisUpdate, Tlv(0x30, Joined(entries))});
}

class CrlInfoTest : public EnglishTest {
  protected:
    // The record as its reader sees it.
    ParsedJson& Describe(Octets der, const ca::CrlPage& page = {}) {
        const Octets before = der;
        ca::CrlInfo record;
        ca::FillCrlInfo(der, page, record);
        EXPECT_EQ(before, der) << "describing changed the octets";
        m_described.emplace(ToText(record));
        return *m_described;
    }
    std::string Text(const char* key) { return (**m_described)[key].GetString(); }
    // One value of each described entry, ";" after each.
    std::string Each(const char* key) {
        std::string all;
        for (const ca::JsonValue& entry : (**m_described)["Revoked"].GetArray()) {
            all += entry[key].GetString() + std::string(";");
        }
        return all;
    }
    unsigned Count() { return (**m_described)["RevokedCount"].GetUint(); }

  private:
    std::optional<ParsedJson> m_described;
};

TEST_F(CrlInfoTest, FillsTheKeysOfAList) {
    const Octets reason = Extension(0x15, {0x0A, 0x01, 0x01});
    const Octets invalid = Extension(0x18, Tlv(0x18, ::Text("20230101000000Z")));
    ParsedJson& list =
        Describe(List({kThisUpdate, Tlv(0x17, ::Text("990101000000Z")),
                       Tlv(0x30, {Entry(0x0180), Entry(0x8001, {reason, invalid})}),
                       Tlv(0xA0, Tlv(0x30, {Extension(0x14, {0x02, 0x02, 0x00, 0xFF}),
                                            Extension(0x1B, {0x02, 0x01, 0x07})}))}));
    EXPECT_EQ("V2", Text("Version"));
    EXPECT_EQ("SHA-256", Text("HashAlg"));
    EXPECT_EQ("CN=Issuer", Text("Issuer"));
    EXPECT_EQ("2.5.4.3=Issuer", Text("OIDIssuer"));
    EXPECT_EQ("01.01.2024 00:00:00", Text("ThisUpdateUTC"));
    EXPECT_EQ("01.01.1999 00:00:00", Text("NextUpdateUTC"));
    EXPECT_EQ("ff", Text("Number"));
    EXPECT_EQ("07", Text("BaseNumber"));
    EXPECT_EQ(2U, Count());
    EXPECT_EQ("0180;8001;", Each("Serial"));
    EXPECT_EQ("06.05.2023 07:08:09;06.05.2023 07:08:09;", Each("RevocationDateUTC"));
    EXPECT_EQ(";Key compromise;", Each("Reason"));
    EXPECT_EQ(2U, (*list)["Revoked"][1]["Extensions"].Size());
    EXPECT_EQ(2U, (*list)["Extensions"].Size());
    EXPECT_EQ("", Text("Error"));
}

TEST_F(CrlInfoTest, LeavesWhatIsAbsentEmpty) {
    for (const Octets& noEntries : {List({kThisUpdate}), ListOf({})}) {
        ParsedJson& list = Describe(noEntries);
        EXPECT_EQ(0U, Count());
        EXPECT_EQ("", Text("NextUpdate"));
        EXPECT_EQ("", Text("NextUpdateUTC"));
        EXPECT_EQ("", Text("Number"));
        EXPECT_FALSE(list->HasMember("BaseNumber"));
        EXPECT_EQ("", Text("Error"));
    }
}

TEST_F(CrlInfoTest, DescribesThePageAskedFor) {
    std::vector<Octets> entries;
    for (unsigned i = 0; i < 1500; ++i) {
        entries.push_back(Entry(i));
    }
    const Octets list = ListOf(entries);
    struct Case {
        const wchar_t* parameters;
        std::size_t described;
        const char* firstSerial;
    };
    const Case cases[] = {
        {L"", 1000, "0000"},
        {L"CRL_FIRST=1400;", 100, "0578"},
        {L"CRL_FIRST=7;CRL_COUNT=2;", 2, "0007"},
        {L"CRL_COUNT=4294967295;", 1500, "0000"},
        {L"CRL_COUNT=0;", 0, ""},
        {L"CRL_FIRST=1500;", 0, ""},
        {L"CRL_SERIAL=05:db;CRL_FIRST=3;", 1, "05db"},
        {L"CRL_SERIAL=0000005DB;", 1, "05db"},
        {L"CRL_SERIAL=ffffff;", 0, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.parameters);
        ParsedJson& page = Describe(list, ca::ReadCrlPage(ca::InitString(c.parameters)));
        EXPECT_EQ(1500U, Count());
        ASSERT_EQ(c.described, (*page)["Revoked"].Size());
        if (c.described != 0) {
            EXPECT_STREQ(c.firstSerial, (*page)["Revoked"][0]["Serial"].GetString());
        }
    }
    for (const wchar_t* wrong : {L"CRL_FIRST=-1;", L"CRL_COUNT=x;", L"CRL_SERIAL=12g4;"}) {
        SCOPED_TRACE(testing::Message() << wrong);
        EXPECT_EQ(ca::kErrParameters, ErrorOf([&] { ca::ReadCrlPage(ca::InitString(wrong)); }));
    }
}

TEST_F(CrlInfoTest, SaysWhatVersionOneDoesNotHave) {
    const Octets reason = Extension(0x15, {0x0A, 0x01, 0x01});
    const Octets entries = Tlv(0x30, {Entry(1), Entry(2, {reason}), Entry(3, {reason})});
    const Octets extensions = Tlv(0xA0, Tlv(0x30, Extension(0x14, {0x02, 0x01, 0x05})));
    const Octets tbs = Joined({kAlgorithm, Name("Issuer"), kThisUpdate, entries, extensions});
    Describe(Tlv(0x30, {Tlv(0x30, tbs), kAlgorithm, Tlv(0x03, {0x00, 0x01})}));
    EXPECT_EQ("Extensions: no part of this version\nEntry 2: Extensions: no part of this version",
              Text("Error"));
}

TEST_F(CrlInfoTest, CarriesTheIssuerOfACertificateOver) {
    const auto issuedBy = [](const char* name) {
        return Extension(0x1D, Tlv(0x30, Tlv(0xA4, Name(name))));
    };
    const Octets list =
        ListOf({Entry(1), Entry(2, {issuedBy("Other")}), Entry(3), Entry(4),
                Entry(5, {issuedBy("Third")}), Entry(6), Entry(7, {issuedBy("Issuer")}), Entry(8)});
    Describe(list);
    EXPECT_EQ(";CN=Other;CN=Other;CN=Other;CN=Third;CN=Third;;;", Each("CertificateIssuer"));
    // Also from in front of a page and of the entry that is looked up.
    Describe(list, {.first = 3, .count = 1, .serial = {}});
    EXPECT_EQ("CN=Other;", Each("CertificateIssuer"));
    Describe(list, {.first = 0, .count = 10, .serial = {{6}}});
    EXPECT_EQ("CN=Third;", Each("CertificateIssuer"));
}

TEST_F(CrlInfoTest, ShowsTheEntriesAroundABrokenOne) {
    const Octets badDate = Tlv(0x30, {Serial(2), Tlv(0x17, ::Text("231306070809Z"))});
    const Octets noSerial = Tlv(0x30, {{0x04, 0x01, 0x55}});
    const Octets badReason = Entry(4, {Extension(0x15, {0x0A, 0x01})});
    Describe(ListOf({Entry(1), badDate, noSerial, badReason, Entry(5)}));
    EXPECT_EQ(5U, Count());
    EXPECT_EQ("0001;0002;Unreadable value: 3003040155;0004;0005;", Each("Serial"));
    EXPECT_EQ("06.05.2023 07:08:09;;;06.05.2023 07:08:09;06.05.2023 07:08:09;",
              Each("RevocationDateUTC"));
    const std::string error = Text("Error");
    for (const char* fault : {"Entry 2: ", "Entry 3: ", "Entry 4: "}) {
        EXPECT_NE(std::string::npos, error.find(fault)) << error;
    }
    EXPECT_EQ(std::string::npos, error.find("Entry 5")) << error;
    // What is not an element ends the list, and the entries in front of it stay.
    Describe(ListOf({Entry(1), {0x30, 0x7F, 0x02}}));
    EXPECT_EQ("0001;Unreadable value: 307f02;", Each("Serial"));
    EXPECT_NE("", Text("Error"));
    // Also when it lies after the page.
    Describe(ListOf({Entry(1), {0x30, 0x7F, 0x02}}), {.first = 0, .count = 1, .serial = {}});
    EXPECT_EQ(2U, Count());
    EXPECT_NE("", Text("Error"));
}

TEST_F(CrlInfoTest, TakesEveryCutAndEveryWrongOctet) {
    const Octets whole =
        List({kThisUpdate, Tlv(0x30, {Entry(1), Entry(2, {Extension(0x15, {0x0A, 0x01, 0x01})})}),
              Tlv(0xA0, Tlv(0x30, Extension(0x14, {0x02, 0x01, 0x07})))});
    const auto describe = [](Octets der) {
        ca::CrlInfo record;
        const std::uint32_t code = ErrorOf([&] { ca::FillCrlInfo(der, {}, record); });
        EXPECT_TRUE(code == 0 || code == ca::kErrBadData) << code;
        ParsedJson parsed(ToText(record));
        return code;
    };
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(ca::kErrBadData,
                  describe({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)}));
    }
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const unsigned char wrong : Octets{0x00, 0x1F, 0x30, 0x7F, 0x80, 0x84, 0xFF}) {
            Octets der = whole;
            der[i] = wrong;
            describe(der);
        }
    }
}

TEST_F(CrlInfoTest, TellsListsFromOtherOctets) {
    const Octets period = Tlv(0x30, {kThisUpdate, kThisUpdate});
    const Octets certificate =
        Tlv(0x30, {Tlv(0x30, {Serial(1), kAlgorithm, Name("a"), period, Name("b")}), kAlgorithm});
    EXPECT_TRUE(ca::LooksLikeCrl(ListOf({})));
    EXPECT_TRUE(
        ca::LooksLikeCrl(Tlv(0x30, {Tlv(0x30, {kAlgorithm, Name("a"), kThisUpdate}), kAlgorithm})));
    EXPECT_FALSE(ca::LooksLikeCrl(certificate));
    EXPECT_FALSE(ca::LooksLikeCrl(Octets()));
    EXPECT_FALSE(ca::LooksLikeCrl(Octets(64, 0xFF)));
}

TEST_F(CrlInfoTest, EntriesOutliveTheOctetsOfTheirRecord) {
    Octets der = ListOf({Entry(1, {Extension(0x15, {0x0A, 0x01, 0x01})}), Entry(2)});
    ca::CrlInfo record;
    ca::FillCrlInfo(der, {}, record);
    const std::string before = ToText(record.revoked);
    ca::RevokedCertCollection entries = record.revoked;
    record.rawData = {};
    EXPECT_EQ(before, ToText(record.revoked));
    FromText(record, R"({"RawData":"AAAA"})");
    EXPECT_EQ("[]", ToText(record.revoked));
    EXPECT_EQ(before, ToText(entries));
    FromText(entries, R"([{"Serial":"7"}])");
    EXPECT_TRUE(ToText(entries).starts_with(R"([{"Serial":"7")"));
    EXPECT_EQ(std::string::npos, ToText(entries).find("01"));
}

}  // namespace
