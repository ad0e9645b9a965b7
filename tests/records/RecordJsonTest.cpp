#include "common/ErrorCodes.h"
#include "common/Lng.h"
#include "records/AttrCertInfo.h"
#include "records/CertInfo.h"
#include "records/CrlInfo.h"
#include "records/FileData.h"
#include "records/JsonFields.h"
#include "records/SignInfo.h"
#include "records/StringArray.h"
#include "tests/records/RecordTesting.h"

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

// Every field of each record in the order of the text, each with a value of its own.
// clang-format off
const std::string kCert =
    R"({"Id":"Id0","Validity":"Va1","ValidityNumber":4294967295,"Version":"Ve3",)"
    R"("Serial":"Se4","SignatureAlg":"Si5","HashAlg":"Ha6","Issuer":"Is7",)"
    R"("OIDIssuer":"OI8","X500NameIssuer":"X59","ValidFrom":"Va10","ValidFromUTC":"Va11",)"
    R"("ValidTo":"Va12","ValidToUTC":"Va13","Description":"De14","OIDDescription":"OI15",)"
    R"("X500Description":"X516","SubjectTags":"Su17","IssuerTags":"Is18",)"
    R"("PublicKeyAlg":"Pu19","PublicKey":"Pu20","PublicKeyParams":"Pu21",)"
    R"("HasPrivateKey":true,"IssuerUniqueId":"Is23","SubjectUniqueId":"Su24",)"
    R"("PublicKeyHashAlgs":"Pu25","RawData":"Ra26","KeyUsage":128,"KeyUsageStr":"Ke28",)"
    R"("Error":"Er29","Extensions":[{"OidFriendlyName":"Использование",)"
    R"("OidValue":"2.5.29.15","RawData":"AwIFoA==","FormattedData":"a\nb",)"
    R"("Critical":true},{"OidFriendlyName":"","OidValue":"1.2","RawData":"",)"
    R"("FormattedData":"","Critical":false}]})";

const std::string kAttrCert =
    R"({"Id":"Id0","HolderSerial":"Ho1","HolderIssuer":"Ho2","HolderOIDIssuer":"Ho3",)"
    R"("HolderX500NameIssuer":"Ho4","HolderIssuerTags":"Ho5","Validity":"Va6",)"
    R"("ValidityNumber":4294967295,"Version":"Ve8","Serial":"Se9","SignatureAlg":"Si10",)"
    R"("HashAlg":"Ha11","Issuer":"Is12","OIDIssuer":"OI13","X500NameIssuer":"X514",)"
    R"("ValidFrom":"Va15","ValidFromUTC":"Va16","ValidTo":"Va17","ValidToUTC":"Va18",)"
    R"("IssuerTags":"Is19","IssuerUniqueId":"Is20","RawData":"Ra21","Error":"Er22",)"
    R"("Attributes":[{"OidFriendlyName":"Role","OidValue":"2.5.4.72","RawData":"MAA=",)"
    R"("FormattedData":"r"}],"Extensions":[{"OidFriendlyName":"Использование",)"
    R"("OidValue":"2.5.29.15","RawData":"AwIFoA==","FormattedData":"a\nb",)"
    R"("Critical":true},{"OidFriendlyName":"","OidValue":"1.2","RawData":"",)"
    R"("FormattedData":"","Critical":false}]})";

const std::string kVerifyResult =
    R"({"SignatureVerifyResult":16199,"SignatureVerifyResultString":"не проверялась",)"
    R"("CertificateVerifyResult":0,"CertificateVerifyResultString":"c"})";

const std::string kCrl =
    R"({"Version":"V2","SignatureAlg":"RSA","HashAlg":"SHA-256","Issuer":"C=RU","OIDIssuer":"O",)"
    R"("X500NameIssuer":"X","IssuerTags":"C=RU;","ThisUpdate":"t","ThisUpdateUTC":"tu",)"
    R"("NextUpdate":"n","NextUpdateUTC":"nu","Number":"0a","BaseNumber":"","RevokedCount":3,)"
    R"("Revoked":[{"Serial":"01","RevocationDate":"r","RevocationDateUTC":"ru",)"
    R"("Reason":"Замена","InvalidityDate":"i","CertificateIssuer":"CN=a","Extensions":[]}],)"
    R"("Extensions":[],"RawData":"MAA=","Error":"e"})";

// One signature on which the listed others are.
std::string Signature(const std::string& coSigners) {
    return R"({"VerifyResultEx":)" + kVerifyResult +
           R"(,"VerifyResult":"Ve1","SignId":"Si2","Comment":"Co3","Uri":"Ur4",)"
           R"("SignTime":"Si5","SignTimeUTC":"Si6","SignAlg":"Si7","HashAlg":"Ha8",)"
           R"("IsAttached":true,"SignCert":)" +
           kCert + R"(,"AttrCert":)" + kAttrCert + R"(,"CoSigners":)" + coSigners +
           R"(,"Extensions":[{"ExtensionName":"n","ExtensionOID":"1.2.3",)"
           R"("ExtensionInterpretedString":"s","ExtensionInterpretedData":"MAA="}]})";
}
// clang-format on

std::string WithIssuer(const std::string& issuer) {
    return kCert.substr(0, kCert.size() - 1) + R"(,"IssuerCert":)" + issuer + "}";
}

// An empty object inside `depth` - 1 others.
std::string Nested(const std::string& head, const std::string& tail, int depth) {
    std::string text;
    std::string end;
    for (int i = 1; i < depth; ++i) {
        text += head;
        end += tail;
    }
    return text + "{}" + end;
}

template <class Record>
void ExpectRoundTrip(const std::string& text) {
    SCOPED_TRACE(text);
    Record record;
    FromText(record, text);
    EXPECT_EQ(text, ToText(record));
    if constexpr (std::is_copy_constructible_v<Record>) {
        const Record copy(record);
        record = Record();
        EXPECT_EQ(text, ToText(copy));
    }
}

TEST(RecordJsonTest, WritesWhatItReadInTheOrderOfTheKeys) {
    ExpectRoundTrip<ca::CertInfo>(kCert);
    ExpectRoundTrip<ca::CertInfo2>(kCert);
    ExpectRoundTrip<ca::CertInfo2>(WithIssuer(WithIssuer(kCert)));
    ExpectRoundTrip<ca::CertInfos2>("[" + kCert + "," + WithIssuer(kCert) + "]");
    ExpectRoundTrip<ca::AttrCertInfo>(kAttrCert);
    ExpectRoundTrip<ca::VerificationResult>(kVerifyResult);
    ExpectRoundTrip<ca::CrlInfo>(kCrl);
    EXPECT_EQ(std::string::npos, ToText(ca::CrlInfo()).find("BaseNumber"));
    ExpectRoundTrip<ca::CertForCheck>(R"({"CertId":"id","Cert":"MAA="})");
    ExpectRoundTrip<ca::SignInfos>("[]");
    ExpectRoundTrip<ca::SignInfosArray>("[[]]");
    const std::string leaf = Signature("[]");
    const std::string threeLevels = Signature("[" + leaf + "," + Signature("[" + leaf + "]") + "]");
    ExpectRoundTrip<ca::SignInfos>("[" + threeLevels + "," + leaf + "]");
    ExpectRoundTrip<ca::SignInfosArray>("[[" + threeLevels + "],[],[" + leaf + "]]");
}

TEST(RecordJsonTest, WritesEveryKeyOfAFreshRecord) {
    EXPECT_EQ(R"({"CertId":"","Cert":""})", ToText(ca::CertForCheck()));
    const std::string cert = ToText(ca::CertInfo2());
    EXPECT_NE(std::string::npos, cert.find(R"("Error":"","Extensions":[]})")) << cert;
    const std::string sign = ToText(ca::SignInfo());
    EXPECT_NE(std::string::npos, sign.find(R"("CoSigners":[],"Extensions":[]})")) << sign;
}

template <class Record>
void ExpectReplaced(const std::string& text) {
    SCOPED_TRACE(text);
    Record record;
    for (int i = 0; i < 2; ++i) {
        FromText(record, text);
        EXPECT_EQ(text, ToText(record)) << "lists are replaced";
    }
    EXPECT_EQ(ca::kErrJsonParse, ErrorOf([&] { FromText(record, "7"); }));
    EXPECT_EQ(text, ToText(record));
    FromText(record, R"({"Unknown":[1]})");
    EXPECT_EQ(ToText(Record()), ToText(record)) << "a missing key gives its default";
}

TEST(RecordJsonTest, BeginsAnewWithEachText) {
    const std::string two = Signature("[" + Signature("[]") + "," + Signature("[]") + "]");
    ExpectReplaced<ca::SignInfo>(two);
    ExpectReplaced<ca::CertInfo2>(WithIssuer(kCert));
    ExpectReplaced<ca::AttrCertInfo>(kAttrCert);
    ExpectReplaced<ca::VerificationResult>(kVerifyResult);
    ExpectReplaced<ca::CrlInfo>(kCrl);
    ExpectReplaced<ca::CertInfo>(kCert);
    ExpectReplaced<ca::CertForCheck>(R"({"CertId":"id","Cert":"MAA="})");
    const std::string extension =
        R"({"OidFriendlyName":"n","OidValue":"1.2","RawData":"MAA=","FormattedData":"f")";
    ExpectReplaced<ca::CertInfoAttribute>(extension + "}");
    ExpectReplaced<ca::CertInfoExtension>(extension + R"(,"Critical":true})");
    ExpectReplaced<ca::RevokedCert>(
        R"({"Serial":"1","RevocationDate":"r","RevocationDateUTC":"u","Reason":"s",)"
        R"("InvalidityDate":"i","CertificateIssuer":"c","Extensions":[)" +
        extension + R"(,"Critical":true}]})");
    ExpectReplaced<ca::SignExtension>(
        R"({"ExtensionName":"n","ExtensionOID":"1.2.3",)"
        R"("ExtensionInterpretedString":"s","ExtensionInterpretedData":"MAA="})");
    ca::SignInfo sign;
    FromText(sign, two);
    FromText(sign, R"({"SignCert":{"Id":"x"}})");
    EXPECT_TRUE(sign.coSigners.items.empty());
    EXPECT_EQ(L"", sign.signCert.serial);
}

// Lists are ignored when they are no arrays; everything else of another type is refused.
template <class Record>
void ExpectTypesChecked(const std::string& text) {
    ParsedJson whole(text);
    for (const auto& member : std::as_const(*whole).GetObject()) {
        const std::string key = member.name.GetString();
        for (const char* wrong : {"null", "{}", "-1", "1.5", "4294967296"}) {
            if (member.value.IsObject() && std::string(wrong) == "{}") {
                continue;
            }
            SCOPED_TRACE(key + " " + wrong);
            Record record;
            const std::string one = "{\"" + key + "\":" + wrong + "}";
            EXPECT_EQ(member.value.IsArray() ? 0U : ca::kErrJsonParse,
                      ErrorOf([&] { FromText(record, one); }));
        }
    }
    for (const char* wrong : {"null", "[]", "\"\"", "7"}) {
        Record record;
        EXPECT_EQ(ca::kErrJsonParse, ErrorOf([&] { FromText(record, wrong); })) << wrong;
    }
}

TEST(RecordJsonTest, RefusesValuesOfTheWrongType) {
    ExpectTypesChecked<ca::CertInfo2>(WithIssuer(kCert));
    ExpectTypesChecked<ca::AttrCertInfo>(kAttrCert);
    ExpectTypesChecked<ca::SignInfo>(Signature("[]"));
    ExpectTypesChecked<ca::VerificationResult>(kVerifyResult);
    ExpectTypesChecked<ca::CrlInfo>(kCrl);
}

TEST(RecordJsonTest, AppendsToListsAndIgnoresWhatIsNoArray) {
    ca::CertInfos2 certs;
    for (const char* text : {R"([{"Id":"a"}])", "{}", "null", "\"x\"", R"([{"Id":"b"},{}])"}) {
        FromText(certs, text);
    }
    EXPECT_EQ(ca::kErrJsonParse, ErrorOf([&] { FromText(certs, R"([{"Id":"c"},7])"); }));
    ASSERT_EQ(3U, certs.items.size());
    EXPECT_EQ(L"b", certs.items[1]->id);

    // What is kept in another form than the first element stands before what comes later.
    ca::SignInfosArray lists;
    for (const std::size_t count : {0, 0, 2, 0}) {
        ca::SignInfos list;
        for (std::size_t i = 0; i < count; ++i) {
            list.Add(std::make_unique<ca::SignInfo>());
        }
        FromText(list, R"([{"SignId":"late"}])");
        count == 0 ? lists.Add({}) : lists.Add(std::move(list));
    }
    FromText(lists, R"([[],[{"SignId":"last"}]])");
    const std::string fresh = ToText(ca::SignInfo());
    const auto named = [&](const std::string& id) {
        ca::SignInfo record;
        FromText(record, R"({"SignId":")" + id + "\"}");
        return ToText(record);
    };
    EXPECT_EQ(6U, lists.Count());
    EXPECT_EQ(
        "[[],[],[" + fresh + "," + fresh + "," + named("late") + "],[],[],[" + named("last") + "]]",
        ToText(lists));
    ca::SignInfosArray taken(std::move(lists));
    EXPECT_EQ(6U, taken.Count());

    ca::CertInfoExtensionCollection extensions;
    FromText(extensions, R"([{},{"Critical":true}])");
    FromText(extensions, "{}");
    EXPECT_EQ(2U, extensions.items.size());
    FromText(extensions, R"([{"OidValue":"1.2"}])");
    EXPECT_EQ(1U, extensions.items.size());
}

TEST(RecordJsonTest, BoundsTheNestingOfRecords) {
    const auto issuers = [](int depth) { return Nested(R"({"IssuerCert":)", "}", depth); };
    const auto coSigners = [](int depth) { return Nested(R"({"CoSigners":[)", "]}", depth); };
    ca::CertInfo2 cert;
    FromText(cert, issuers(ca::kMaxRecordNesting));
    ca::SignInfo sign;
    FromText(sign, coSigners(ca::kMaxRecordNesting));
    for (const int depth : {ca::kMaxRecordNesting + 1, 100000}) {
        EXPECT_EQ(ca::kErrJsonParse, ErrorOf([&] { FromText(cert, issuers(depth)); }));
        EXPECT_EQ(ca::kErrJsonParse, ErrorOf([&] { FromText(sign, coSigners(depth)); }));
    }
    // The count starts anew after a refusal.
    FromText(cert, issuers(ca::kMaxRecordNesting));
}

TEST(RecordJsonTest, ListsTextsUnderTheirTypeOrTag) {
    ca::StringArray ids(ca::kTypeCertificates);
    FromText(ids, R"(["a\"b","Хранилище"])");
    FromText(ids, R"({"0":"x"})");
    EXPECT_EQ(ca::kErrJsonParse, ErrorOf([&] { FromText(ids, R"(["c",null])"); }));
    FromText(ids, R"([""])");
    EXPECT_EQ(R"(["a\"b","Хранилище",""])", ToText(ids));
    EXPECT_EQ(ca::kTypeCertificates, ids.GetType());

    ca::StringArray2 tagged("names");
    FromText(tagged, R"(["😀"])");
    EXPECT_EQ(L"\U0001F600", tagged.items.at(0));
    EXPECT_EQ(R"(["😀"])", ToText(tagged));
    EXPECT_STREQ("names", tagged.GetTag());
}

TEST(RecordJsonTest, CarriesFileDataAsBase64) {
    ca::FileData data;
    for (const char* text : {"\"\"", "\"AA==\"", "\"AP8=\"", "\"AP+A\"", "\"AP+AgA==\""}) {
        FromText(data, text);
        EXPECT_EQ(text, ToText(data));
    }
    EXPECT_EQ(4U, data.size());
    EXPECT_EQ(ca::kErrJsonParse, ErrorOf([&] { FromText(data, "[]"); }));
    EXPECT_EQ(4U, data.size());
    EXPECT_EQ(ca::kErrNoArgumentData, ErrorOf([&] { FromText(data, "\"*\""); }));
    EXPECT_EQ(0U, data.size());
    EXPECT_EQ(nullptr, data.data());
}

TEST(RecordJsonTest, MovesFileDataWithoutACopy) {
    ca::FileData data;
    data.Assign("abc", 3);
    const unsigned char* octets = data.data();
    ca::BytePtr block = data.Release();
    EXPECT_EQ(octets, block.Get());
    EXPECT_EQ(0U, data.size());
    data.Adopt(std::move(block), 2);
    ca::FileData taken(std::move(data));
    EXPECT_EQ(octets, taken.data());
    EXPECT_EQ("\"YWI=\"", ToText(taken));
    taken.AssignZeros(3);
    EXPECT_EQ("\"AAAA\"", ToText(taken));
}

TEST(RecordJsonTest, WritesFileDataAsAMemberAndAnElement) {
    ca::FileData data;
    data.Assign("abc", 3);
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("a");
    data.ToJson(writer);
    writer.Key("b");
    writer.StartArray();
    data.ToJson(writer);
    data.ToJson(writer);
    writer.EndArray();
    writer.EndObject();
    EXPECT_STREQ(R"({"a":"YWJj","b":["YWJj","YWJj"]})", buffer.GetString());
}

class KeyUsageTextTest : public testing::Test {
  protected:
    ~KeyUsageTextTest() override { SetZORNALng(m_wasRussian ? L"ru" : L"en"); }

  private:
    const bool m_wasRussian = IsRussian();
};

TEST_F(KeyUsageTextTest, NamesTheUsagesInBitOrder) {
    struct UsageCase {
        unsigned bits;
        const wchar_t* english;
        const wchar_t* russian;
    };
    const UsageCase cases[] = {
        {0, L"", L""},
        {0x86, L"Digital signature, Certificate signing, CRL signing",
         L"Цифровая подпись, Подписывание сертификатов, Подписывание списков отзыва"},
        {0x8009, L"Key agreement, Encipher only, Decipher only",
         L"Согласование ключей, Только шифрование, Только расшифрование"},
        {0xFFFF7F00, L"", L""},
    };
    for (const UsageCase& c : cases) {
        SetZORNALng(L"en");
        EXPECT_EQ(c.english, ca::CertInfo2::GetKeyUsageStr(c.bits));
        SetZORNALng(L"ru");
        EXPECT_EQ(c.russian, ca::CertInfo2::GetKeyUsageStr(c.bits));
    }
}

TEST(CertInfosTest, ListsTheIdentifiersThatPassTheFilter) {
    ca::CertInfos2 certs;
    FromText(certs, R"([{"Id":"plain","ValidityNumber":16199},
        {"Id":"old","ValidityNumber":16123,"HasPrivateKey":true},
        {"Id":"key","HasPrivateKey":true}])");
    const auto list = [&](unsigned filter) {
        std::vector<std::wstring> ids;
        certs.GetCertIdList(filter, ids);
        return ids;
    };
    using Ids = std::vector<std::wstring>;
    EXPECT_EQ((Ids{L"plain", L"old", L"key"}), list(ca::kCertFilterAll));
    EXPECT_EQ((Ids{L"plain", L"key"}), list(ca::kCertFilterInPeriod));
    EXPECT_EQ((Ids{L"old", L"key"}), list(ca::kCertFilterWithPrivateKey));
    EXPECT_EQ((Ids{L"key"}), list(ca::kCertFilterInPeriod | ca::kCertFilterWithPrivateKey));
}

TEST(RecordJsonTest, WritesTextsOfAnyLettersAsTheyAre) {
    ca::StringArray written(ca::kTypeStores);
    written.items = {L"",         L"a\nb\"c\\", L"\n",           L"Имя\n\"x\\y\"", L"\u0001\nя",
                     L"\u00FF\t", L"a\u0001",   L"\U0001F600\"", L"\u007F\u0080",  L"конец\\"};
    ca::StringArray read(ca::kTypeStores);
    FromText(read, ToText(written));
    EXPECT_EQ(written.items, read.items);
}

}  // namespace
