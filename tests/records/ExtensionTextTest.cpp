#include "common/Encode.h"
#include "common/Lng.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/ExtensionFill.h"
#include "records/text/AttributeText.h"
#include "records/text/ExtensionText.h"
#include "records/text/OcspText.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/TemporaryDir.h"
#include "tests/records/RecordTesting.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <utility>

// The values, their texts and the certificate are in tests/data/extensions; README.md there says
// how they were made.

namespace {

const std::string kFolder = MOD_FOO_TEST_DATA "/extensions/";

struct Sample {
    std::string name;
    Octets oid;
    Octets value;
    std::wstring english;
    std::wstring russian;
};

Octets FromHex(std::string_view hex) {
    Octets octets;
    for (std::size_t at = 0; at + 1 < hex.size(); at += 2) {
        octets.push_back(
            static_cast<unsigned char>(std::stoul(std::string(hex.substr(at, 2)), nullptr, 16)));
    }
    return octets;
}

std::string ReadAll(const std::string& name) {
    std::ifstream file(kFolder + name, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

// The lines up to one that is `end`, or the end of the file.
std::wstring ReadText(std::istream& file, std::string_view end) {
    std::string text;
    for (std::string line; std::getline(file, line) && line != end;) {
        text += (text.empty() ? "" : "\n") + line;
    }
    return ca::u8u16(text);
}

std::vector<Sample> ReadSamples() {
    std::istringstream file(ReadAll("texts.txt"));
    std::vector<Sample> samples;
    std::string oid;
    std::string value;
    for (Sample sample; file >> sample.name >> oid >> value;) {
        sample.oid = FromHex(oid);
        sample.value = FromHex(value);
        std::getline(file, value);
        sample.english = ReadText(file, "---");
        sample.russian = ReadText(file, "");
        samples.push_back(sample);
    }
    return samples;
}

// Any octets are such a value.
bool IsPresenceOnly(const Sample& sample) {
    return sample.name == "ctPoison" || sample.name == "ocspNoCheck";
}

class ExtensionTextTest : public testing::Test {
  protected:
    ExtensionTextTest() { tzset(); }
    ~ExtensionTextTest() override { SetZORNALng(L"ru"); }
    ExtensionTextTest(const ExtensionTextTest&) = delete;
    ExtensionTextTest& operator=(const ExtensionTextTest&) = delete;

    static ca::ValueForms Say(const Sample& sample, const wchar_t* language = L"en") {
        SetZORNALng(language);
        Octets value = sample.value;
        const ca::ValueForms forms = ca::DescribeExtension(sample.oid, value);
        EXPECT_EQ(sample.value, value) << "describing changed the octets";
        return forms;
    }

  private:
    struct ZoneReset {
        ~ZoneReset() { tzset(); }
    };
    ZoneReset m_reset;  // once the variable is as it was
    ScopedVariable m_zone{"TZ", "MSK-3"};
};

TEST_F(ExtensionTextTest, SaysEachTypeInBothLanguages) {
    const std::vector<Sample> samples = ReadSamples();
    ASSERT_GE(samples.size(), 40U);
    for (const Sample& sample : samples) {
        SCOPED_TRACE(sample.name);
        EXPECT_EQ(sample.english, Say(sample).text);
        EXPECT_EQ(sample.russian, Say(sample, L"ru").text);
        // What is said to be unreadable is a fault of the record.
        EXPECT_EQ(sample.english.find(L"Unreadable") == std::wstring::npos,
                  Say(sample).error.empty());
    }
}

// Cut anywhere a value is said as digits, and what is wrong with it beside.
TEST_F(ExtensionTextTest, SaysWhatIsCutOffAsUnreadable) {
    for (Sample sample : ReadSamples()) {
        SCOPED_TRACE(sample.name);
        while (!IsPresenceOnly(sample) && !sample.value.empty()) {
            sample.value.pop_back();
            const ca::ValueForms forms = Say(sample);
            EXPECT_EQ(0U, forms.text.find(L"Unreadable value: ")) << sample.value.size();
            EXPECT_NE(L"", forms.error) << sample.value.size();
        }
    }
}

TEST_F(ExtensionTextTest, KeepsTheStatementsBesideAnUnreadableOne) {
    // QcLimitValue that is a NULL, then QcCompliance.
    const Octets limit = Tlv(0x30, {FromHex("060604008e460102"), {0x05, 0x00}});
    const Octets compliance = Tlv(0x30, FromHex("060604008e460101"));
    const ca::ValueForms forms =
        Say({"qcStatements", FromHex("2b06010505070103"), Tlv(0x30, {limit, compliance}), {}, {}});
    EXPECT_EQ(L"Transaction value limit: Unreadable value: NULL\nEU qualified certificate",
              forms.text);
    EXPECT_NE(std::wstring::npos, forms.error.find(L"Transaction value limit (0.4.0.1862.1.2)"));
}

// Of an odd extension its identifier, of an odd element all the others.
TEST_F(ExtensionTextTest, KeepsWhatStandsBesideAnOddElement) {
    const Octets keyUsage = {0x06, 0x03, 0x55, 0x1D, 0x0F};
    const Octets first = {0x04, 0x02, 0x03, 0x02};
    const Octets second = {0x04, 0x02, 0x05, 0xA0};
    const Octets names = {0x06, 0x03, 0x55, 0x1D, 0x11};
    const struct {
        const char* name;
        Octets extension;
        const wchar_t* oid;
        const wchar_t* text;
        const wchar_t* error;
    } cases[] = {
        {"segments", Tlv(0x30, {keyUsage, Tlv(0x24, {first, second})}), L"2.5.29.15",
         L"Digital signature, Key encipherment (a0)", L""},
        {"no OCTET STRING", Tlv(0x30, {keyUsage, {0x03, 0x02, 0x05, 0xA0}}), L"2.5.29.15",
         L"Unreadable value: BIT STRING: a0",
         L"Key usage (2.5.29.15): Extension.extnValue: unexpected element, tag 03, offset 7"},
        {"an element too many", Tlv(0x30, {keyUsage, Tlv(0x04, {0x03, 0x02, 0x05, 0xA0}), {5, 0}}),
         L"2.5.29.15", L"Unreadable value:\n  OCTET STRING: 030205a0\n  NULL",
         L"Key usage (2.5.29.15): Extension: unexpected element, tag 05, offset 13"},
        {"no identifier", Tlv(0x30, Octets{5, 0}), L"", L"Unreadable value:\n  SEQUENCE\n    NULL",
         L"Unreadable value: 30020500"},
        {"explicit tag",
         Tlv(0x30, {names,
                    Tlv(0x04, Tlv(0x30, {Tlv(0xA2, Tlv(0x16, Text("a"))), Tlv(0x82, Text("b"))}))}),
         L"2.5.29.17", L"Unreadable value:\n  [2]\n    IA5 STRING: a\nDNS: b",
         L"Subject alternative name (2.5.29.17): malformed element"},
        {"an odd usage",
         Tlv(0x30, {{0x06, 0x03, 0x55, 0x1D, 0x25},
                    Tlv(0x04, Tlv(0x30, {{0x06, 0x02, 0x2A, 0x03},
                                         Tlv(0x0C, Text("x")),
                                         {0x06, 0x02, 0x2A, 0x04}}))}),
         L"2.5.29.37", L"1.2.3\nUnreadable value: UTF8 STRING: x\n1.2.4",
         L"Extended key usage (2.5.29.37): OBJECT IDENTIFIER: unexpected element, tag 0c, offset "
         L"6"},
    };
    SetZORNALng(L"en");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Octets extension = c.extension;
        ca::CertInfoExtension record;
        std::wstring error;
        CAsn1Element element;
        CAsn1Cursor(extension).StepOrRest(element);
        ca::FillExtension(element, record, error);
        EXPECT_EQ(c.oid, record.oidValue);
        EXPECT_EQ(c.text, record.formattedData);
        EXPECT_EQ(c.error, error);
        EXPECT_EQ(c.extension, extension) << "describing changed the octets";
    }
}

TEST_F(ExtensionTextTest, CountsTheElementsPastTheBound) {
    Octets features;
    for (int i = 0; i < 1003; ++i) {
        features.insert(features.end(), {0x02, 0x01, 0x05});
    }
    const Octets list = Tlv(0x30, features);
    const ca::ValueForms forms = Say({"tlsFeature", FromHex("2b06010505070118"), list, {}, {}});
    EXPECT_EQ(1000, std::count(forms.text.begin(), forms.text.end(), L'\n'));
    EXPECT_EQ(L"\u2026 and 3 more", forms.text.substr(forms.text.rfind(L'\n') + 1));
    EXPECT_EQ(L"TLS features (1.3.6.1.5.5.7.1.24): \u2026 and 3 more", forms.error);
}

// All keys of the record, in both languages.
TEST_F(ExtensionTextTest, DescribesARussianQualifiedCertificate) {
    const std::string der = ReadAll("russian-qualified.cer");
    for (const char* const language : {"en", "ru"}) {
        SCOPED_TRACE(language);
        SetZORNALng(ca::u8u16(language).c_str());
        Octets octets(der.begin(), der.end());
        ca::CertInfo record;
        ca::FillCertInfo(octets, record);
        ParsedJson actual(ToText(record));
        ParsedJson expected(ReadAll(std::string("russian-qualified.") + language + ".json"));
        EXPECT_EQ(expected->MemberCount(), actual->MemberCount());
        for (const auto& member : std::as_const(*expected).GetObject()) {
            SCOPED_TRACE(member.name.GetString());
            ASSERT_TRUE(actual->HasMember(member.name));
            EXPECT_EQ(ToText(member.value), ToText((*actual)[member.name]));
        }
    }
}

// The compiler holds the rows to the table of identifiers; what it cannot see is a row of the wrong
// list, and one that another row hides.
TEST(FormatterRowsTest, EachIsOfAKindOfItsListAndStandsOnce) {
    using enum ca::OidKind;
    const std::set<ca::OidKind> extensions{kExtension, kAcExtension, kCrlExtension,
                                           kCrlEntryExtension, kOcspExtension};
    const std::set<ca::OidKind> attributes{kCmsAttribute, kAttribute, kAcAttribute, kNameAttribute};
    const struct {
        const std::set<ca::OidKind>& kinds;
        std::vector<std::span<const ca::ExtensionRow>> subjects;
    } lists[] = {
        {extensions,
         {ca::StandardExtensionRows(), ca::AttributeExtensionRows(), ca::QualifiedExtensionRows(),
          ca::ProfessionExtensionRows(), ca::NetworkExtensionRows(), ca::MediaExtensionRows(),
          ca::OcspExtensionRows(), ca::VendorExtensionRows()}},
        {attributes,
         {ca::EssAttributeRows(), ca::CadesAttributeRows(), ca::CodeAttributeRows(),
          ca::RequestAttributeRows()}}};
    for (const auto& list : lists) {
        std::set<const ca::OidInfo*> seen;
        for (const auto rows : list.subjects) {
            for (const ca::ExtensionRow& row : rows) {
                EXPECT_TRUE(list.kinds.contains(row.type->kind)) << row.type->shortName;
                EXPECT_TRUE(seen.insert(row.type).second) << row.type->shortName;
                EXPECT_NE(nullptr, row.say) << row.type->shortName;
            }
        }
    }
}

}  // namespace
