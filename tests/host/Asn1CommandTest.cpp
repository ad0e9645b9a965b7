// The listing of ASN.1 files.

#include "tests/host/HostProcess.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

class Asn1CommandTest : public HostProcessTest {
  protected:
    HostResult List(const std::string& octets, std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"asn1", "--language", "en"});
        options.insert(options.end(), m_directory.Write("data", octets));
        return Run(options);
    }
};

// SEQUENCE { SEQUENCE {}, OID 2.5.4.3, [0] { INTEGER -1 }, OCTET STRING with a long length form }
const std::string kTree(
    "\x30\x14\x30\x00\x06\x03\x55\x04\x03\xA0\x03\x02\x01\xFF\x04\x81\x05"
    "abcde",
    22);
// Its last element in the shortest form, and so the length of the whole.
const std::string kRebuilt(
    "\x30\x13\x30\x00\x06\x03\x55\x04\x03\xA0\x03\x02\x01\xFF\x04\x05"
    "abcde",
    21);

TEST_F(Asn1CommandTest, ListsPlacesAsTheFileHasThem) {
    const HostResult result = List(kTree);
    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ(
        "       0  2+20       SEQUENCE (4 elements)\n"
        "       2  2+0          SEQUENCE (0 elements)\n"
        "       4  2+3          OBJECT IDENTIFIER 2.5.4.3 Common name\n"
        "       9  2+3          [0] (1 element)\n"
        "      11  2+1            INTEGER -1\n"
        "      14  3+5          OCTET STRING 6162636465\n",
        result.out);
}

TEST_F(Asn1CommandTest, ListsWhatStringsEnclose) {
    // SEQUENCE { OCTET STRING { SEQUENCE { BIT STRING { INTEGER 5 } } }, OCTET STRING { [0] } }
    const HostResult result =
        List({"\x30\x0E\x04\x08\x30\x06\x03\x04\0\x02\x01\x05\x04\x02\xA0\0", 16});
    EXPECT_EQ(
        "       0  2+14       SEQUENCE (2 elements)\n"
        "       2  2+8          OCTET STRING 3006030400020105\n"
        "       4  2+6            SEQUENCE (1 element)\n"
        "       6  2+4              BIT STRING 020105\n"
        "       9  2+1                INTEGER 5\n"
        "      12  2+2          OCTET STRING a000\n",
        result.out);
    std::string nested = "\x05";
    nested += '\0';
    for (int i = 0; i < 62; ++i) {
        nested = std::string{'\x04', static_cast<char>(nested.size())} + nested;
    }
    nested = "\x04\x7E" + nested;
    EXPECT_THAT(List(nested).out, HasSubstr("NULL"));
}

TEST_F(Asn1CommandTest, ShowsValuesAsPeopleReadThem) {
    const struct {
        const char* name;
        std::string octets;
        const char* line;
    } cases[] = {
        {"true", {"\x01\x01\xFF", 3}, "BOOLEAN TRUE\n"},
        {"eight octets", {"\x02\x08\x80\0\0\0\0\0\0\0", 10}, "INTEGER -9223372036854775808\n"},
        {"nine octets", {"\x02\x09\0\x80\0\0\0\0\0\0\0", 11}, "INTEGER 008000000000000000\n"},
        {"empty number", {"\x02\0", 2}, "INTEGER\n"},
        {"bits", {"\x03\x02\x04\xF0", 4}, "BIT STRING f0 (4 unused bits)\n"},
        {"no bits", {"\x03\0", 2}, "BIT STRING\n"},
        {"null", {"\x05\0", 2}, "NULL\n"},
        {"unknown identifier", {"\x06\x03\x2A\x86\x48", 5}, "OBJECT IDENTIFIER 1.2.840\n"},
        {"unfinished identifier", {"\x06\x01\x86", 3}, "OBJECT IDENTIFIER #86\n"},
        {"UTF-8", "\x0C\x04\xD0\x96\xD1\x8F", "UTF8String \"Жя\"\n"},
        {"steering text", "\x0C\x06\x1B[2J\xC2\x9B", "UTF8String \".[2J.\"\n"},
        {"malformed text", "\x0C\x01\xFF", "UTF8String \"\xEF\xBF\xBD\"\n"},
        {"16-bit text", "\x1E\x04\x04\x16\x04\x4F", "BMPString \"Жя\"\n"},
        {"last century",
         "\x17\x0D"
         "500101000000Z",
         "UTCTime 1950-01-01 00:00:00 UTC\n"},
        {"this century",
         "\x17\x0D"
         "491231235959Z",
         "UTCTime 2049-12-31 23:59:59 UTC\n"},
        {"long time",
         "\x18\x0F"
         "20500101000000Z",
         "GeneralizedTime 2050-01-01 00:00:00 UTC\n"},
        {"odd time",
         "\x17\x0D"
         "5001010000\x1B"
         "0Z",
         "UTCTime \"5001010000.0Z\"\n"},
        {"private", "\xC1\x02hi", "[PRIVATE 1] \"hi\"\n"},
        {"application", {"\x61\0", 2}, "[APPLICATION 1] (0 elements)\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const HostResult result = List(c.octets);
        EXPECT_EQ(0, result.exitCode);
        EXPECT_THAT(result.out, testing::EndsWith(c.line));
    }
    EXPECT_THAT(
        Run({"asn1", "--language", "ru", m_directory.Write("oid", "\x06\x03\x55\x04\x03")}).out,
        HasSubstr("2.5.4.3 Общее имя"));
}

TEST_F(Asn1CommandTest, CutsLongValuesToTheWidth) {
    const std::string octets = "\x0C\x81\x90" + std::string(0x90, 'x');
    EXPECT_EQ("       0  3+144      UTF8String \"xxxxxxxxxxxxxxxxxxxxxxxx...\n",
              List(octets, {"--width", "60"}).out);
    EXPECT_THAT(List(octets, {"--width", "300"}).out, Not(HasSubstr("...")));
}

TEST_F(Asn1CommandTest, WritesOneNodeAsItStandsOrAnew) {
    const std::string raw = m_directory.File("raw");
    EXPECT_EQ(0, List(kTree, {"--path", "0/2/0", "--raw", raw}).exitCode);
    EXPECT_EQ("\x02\x01\xFF", TemporaryDir::Read(raw));
    EXPECT_EQ(kTree + kTree, List(kTree + kTree, {"--raw", "-"}).out);
    EXPECT_EQ(kRebuilt, List(kTree, {"--rebuild", "-"}).out);
    EXPECT_THAT(List(kTree, {"--path", "0/2", "--json"}).out,
                HasSubstr("\"tagString\":\"A0(CONSTRUCTED, CONTEXT)\""));
    for (const char* path : {"0/9", "1", "x", "0/-1", "99999999999999999999"}) {
        EXPECT_EQ(2, List(kTree, {"--path", path}).exitCode) << path;
    }
}

TEST_F(Asn1CommandTest, ReadsEveryFormOfAFile) {
    const std::string pem =
        "text\n-----BEGIN A-----\nAgEB\n-----END A-----\n"
        "-----BEGIN B-----\nAgEC\n-----END B-----\n";
    const HostResult result = List(pem);
    EXPECT_EQ(0, result.exitCode);
    EXPECT_THAT(result.out, HasSubstr("A 1:\n       0  2+1        INTEGER 1\n"));
    EXPECT_THAT(result.out, HasSubstr("B 2:\n       0  2+1        INTEGER 2\n"));
    EXPECT_EQ("\x02\x01\x01\x02\x01\x02", List(pem, {"--raw", "-"}).out);
    EXPECT_THAT(List("AgED\r\n").out, HasSubstr("INTEGER 3"));
    EXPECT_EQ(1, List("").exitCode);
    EXPECT_EQ(1, List("-----BEGIN A-----\n!\n-----END A-----\n").exitCode);
    EXPECT_EQ(2, Run({"asn1", "none"}).exitCode);
}

TEST_F(Asn1CommandTest, ShowsWhatADamagedFileHolds) {
    for (std::size_t length = 2; length < kTree.size(); ++length) {
        SCOPED_TRACE(length);
        const HostResult result = List(kTree.substr(0, length), {"--rebuild", "/dev/null"});
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.err, HasSubstr("end too early"));
        EXPECT_THAT(result.out, HasSubstr("(damaged)"));
    }
}

TEST_F(Asn1CommandTest, DepthCostsNeitherStackNorWidth) {
    std::string octets;
    constexpr std::size_t kDepth = 40000;
    for (std::size_t i = 0; i < kDepth; ++i) {
        octets += "\x30\x80";
    }
    const HostResult result = List(octets);
    EXPECT_EQ(1, result.exitCode);
    EXPECT_LT(result.out.size(), kDepth * 120);
    EXPECT_THAT(result.out, HasSubstr("(39999) SEQUENCE"));
    EXPECT_EQ(1, List(octets, {"--json"}).exitCode);
}

}  // namespace
