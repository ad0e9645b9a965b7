// `cmhost describe` as its users run it.

#include "tests/asn1/DerWriter.h"
#include "tests/common/SampleObjects.h"
#include "tests/host/HostProcess.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include <sstream>
#include <sys/stat.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

// Characters of UTF-8 text.
std::size_t Characters(const std::string& utf8) {
    std::size_t count = 0;
    for (const char c : utf8) {
        count += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
    }
    return count;
}

class DescribeCommandTest : public HostProcessTest {
  protected:
    // b.pem, a folder a/ with a list, a letter and links that lead nowhere or back.
    void WriteArchive() {
        namespace fs = std::filesystem;
        fs::create_directories(m_directory.File("archive/a/deep"));
        m_directory.Write("archive/b.pem", kSampleCertificate);
        m_directory.Write("archive/a/deep/list.crl", kSampleCrl);
        m_directory.Write("archive/a/letter.txt", "Dear Ivan,\n");
        m_directory.Write("archive/a/empty", "");
        fs::create_directory_symlink("..", m_directory.File("archive/a/circle"));
        fs::create_symlink("nowhere", m_directory.File("archive/a/broken"));
        ASSERT_EQ(0, ::mkfifo(m_directory.File("archive/a/pipe").c_str(), 0600));
    }
};

TEST_F(DescribeCommandTest, LaysRecordsOutForPeople) {
    m_directory.Write("c.pem", kSampleCertificate);
    m_directory.Write("l.pem", kSampleCrl);
    const HostResult english = Run({"describe", "c.pem", "--language", "en"});
    EXPECT_EQ(0, english.exitCode);
    EXPECT_EQ("", english.err);
    for (const char* fragment :
         {"c.pem: certificate\n", "\n  Serial number:       80a1b2c3\n",
          "\n  Subject:             C=RU, O=\"Ромашка, ООО\", CN=Иванов Иван\n",
          "\n  Extensions:\n    Basic constraints (2.5.29.19), critical\n      CA: yes\n      "
          "Path"}) {
        EXPECT_THAT(english.out, HasSubstr(fragment));
    }
    EXPECT_THAT(english.out, Not(HasSubstr("RawData")));

    const HostResult russian = Run({"describe", "c.pem", "l.pem", "--language", "ru"});
    EXPECT_EQ(0, russian.exitCode);
    for (const char* fragment : {"c.pem: сертификат\n", "\n  Серийный номер:       80a1b2c3\n",
                                 "l.pem: список отозванных сертификатов\n",
                                 "\n  Отозванные сертификаты:\n    0a1b  01.01.2026 "}) {
        EXPECT_THAT(russian.out, HasSubstr(fragment));
    }
    EXPECT_THAT(russian.err, HasSubstr("2 of 2 files described"));
}

TEST_F(DescribeCommandTest, CallsTheCertificatesOfAnEnvelopeRecipients) {
    const Octets rsa = Tlv(0x30, {{0x06, 9, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 1, 1, 1}});
    const Octets recipient = Tlv(0x30, {{2, 1, 2}, {0x80, 2, 0xC0, 0xDE}, rsa, {0x04, 0x00}});
    const Octets enveloped = Tlv(0x30, {{2, 1, 2}, Tlv(0x31, recipient)});
    const Octets message =
        Tlv(0x30, {{0x06, 9, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 1, 7, 3}, Tlv(0xA0, enveloped)});
    m_directory.Write("e.p7m", std::string(message.begin(), message.end()));
    EXPECT_THAT(Run({"describe", "e.p7m", "--language", "en"}).out,
                MatchesRegex("e.p7m: enveloped message\n  Recipients 1/1:\n    Identifier: .*\n"
                             "    Serial number:  c0de\n    Description:    Key: c0de\n"
                             "    Key encryption: RSA\n+"));
    EXPECT_THAT(Run({"describe", "e.p7m", "--language", "ru"}).out,
                HasSubstr("Получатели 1/1:\n    Идентификатор: "));
}

TEST_F(DescribeCommandTest, SaysEveryExtensionOfARichCertificateInBothLanguages) {
    const std::string data = MOD_FOO_TEST_DATA;
    for (const std::string language : {"en", "ru"}) {
        const HostResult result = RunScript("TZ=MSK-3 cmhost describe --width 100 --language " +
                                            language + " - < '" + data + "/rich.pem'");
        EXPECT_EQ(TemporaryDir::Read(data + "/rich." + language + ".txt"), result.out);
    }
}

TEST_F(DescribeCommandTest, FoldsLinesToTheWidth) {
    m_directory.Write("c.pem", kSampleCertificate);
    const HostResult result = Run({"describe", "c.pem", "--language", "en", "--width", "50"});
    for (const std::string& line : Lines(result.out)) {
        EXPECT_LE(Characters(line), 50U) << line;
    }
    EXPECT_THAT(result.out, HasSubstr("... (65 octets)"));
    EXPECT_THAT(result.out, HasSubstr("C=RU, O=\"Ромашка, ООО\",\n                       CN="));
}

TEST_F(DescribeCommandTest, ReadsTheStandardInputAndShowsAnswers) {
    const HostResult result = Run({"describe", "--json", "-", "--language", "en"},
                                  std::string("text in front\n") + kSampleCertificate);
    EXPECT_EQ(0, result.exitCode);
    rapidjson::Document answer;
    answer.Parse(result.out.c_str());
    ASSERT_TRUE(answer.IsObject());
    EXPECT_STREQ("80a1b2c3", answer["certInfo"]["Serial"].GetString());

    const HostResult letter = Run({"describe", "-", "--language", "en"}, "Dear Ivan,\n");
    EXPECT_EQ(1, letter.exitCode);
    EXPECT_THAT(letter.out, HasSubstr("-: not described: "));
    EXPECT_THAT(letter.out, HasSubstr("(16113)"));
}

TEST_F(DescribeCommandTest, DescribesWhatNoOperationDoes) {
    const Octets refusal = {0x30, 3, 0x0A, 1, 6};
    m_directory.Write("a.ocsp", std::string(refusal.begin(), refusal.end()));
    m_directory.Write("a.pem",
                      "-----BEGIN OCSP RESPONSE-----\nMAMKAQY=\n-----END OCSP RESPONSE-----\n");
    for (const std::string file : {"a.ocsp", "a.pem"}) {
        const HostResult text = Run({"describe", file, "--language", "en"});
        EXPECT_EQ(0, text.exitCode);
        EXPECT_EQ(file + ": OCSP response\n  Status: Unauthorized (6)\n\n", text.out);
        EXPECT_EQ("{\"file\":\"" + file +
                      "\",\"kind\":\"ocspResponse\",\"description\":"
                      "{\"status\":\"Запрос не разрешен (6)\",\"error\":\"\"}}\n",
                  Run({"describe", "--ndjson", file, "--language", "ru"}).out);
    }
    const HostResult json = Run({"describe", "--json", "a.ocsp", "--language", "en"});
    rapidjson::Document answer;
    answer.Parse(json.out.c_str());
    ASSERT_TRUE(answer.IsObject());
    EXPECT_STREQ("Unauthorized (6)", answer["description"]["status"].GetString());
}

TEST_F(DescribeCommandTest, SaysWhyNothingIsDescribed) {
    const Octets numbers = Tlv(0x30, {{2, 1, 5}, {2, 1, 3}, {2, 1, 3}});
    const std::string unknown(numbers.begin(), numbers.end());
    const std::pair<std::string, const char*> cases[] = {
        {unknown, "ASN.1 data of an unknown kind; cmhost asn1 shows their structure (16113)"},
        {"-----BEGIN X-----\nMAkCAQUCAQMCAQM=\n-----END X-----\n",
         "ASN.1 data of an unknown kind; cmhost asn1 shows their structure (16113)"},
        {unknown.substr(0, 9), "ASN.1 data that are cut off"},
        {"-----BEGIN X-----\n?\n-----END X-----\n", "a PEM block that does not decode"},
        {std::string("\xFF\xFF\xFF\xFF", 4), "no ASN.1 data"},
        {"# Heading of a text that is long enough to be an element\n", "no ASN.1 data"},
        {"-----BEGIN PGP MESSAGE-----\nhQEC\n-----END PGP MESSAGE-----\n", "OpenPGP data\n"},
    };
    for (const auto& [content, expected] : cases) {
        const HostResult result = Run({"describe", "-", "--language", "en"}, content);
        EXPECT_EQ(1, result.exitCode);
        EXPECT_THAT(result.out, HasSubstr(std::string("-: not described: ") + expected));
    }
}

TEST_F(DescribeCommandTest, DescribesEachObjectOfAFile) {
    m_directory.Write("all.pem", std::string(kSampleCrl) + kSampleCertificate +
                                     "-----BEGIN EC PARAMETERS-----\nBggqhkjOPQMBBw==\n"
                                     "-----END EC PARAMETERS-----\n" +
                                     kSampleMessage + kSampleCertificate +
                                     "-----BEGIN X-----\nBQA=\n-----END X-----\n");
    const HostResult result = Run({"describe", "--ndjson", "all.pem", "--language", "en"});
    EXPECT_EQ(1, result.exitCode);
    std::vector<std::string> kinds;
    for (const std::string& line : Lines(result.out)) {
        rapidjson::Document row;
        row.Parse(line.c_str());
        ASSERT_TRUE(row.IsObject()) << line;
        EXPECT_EQ(kinds.size() + 1, row["object"].GetUint());
        kinds.emplace_back(row.HasMember("kind") ? row["kind"].GetString() : "");
    }
    EXPECT_THAT(kinds, ElementsAre("crl", "certificates", "ecParameters", "signature", ""));
    EXPECT_THAT(Run({"describe", "all.pem", "--language", "en"}).out,
                HasSubstr("all.pem 3/5: elliptic curve parameters\n  Curve:      NIST P-256\n"));
}

// One after the other, without armour; what is damaged or nothing known is said too.
TEST_F(DescribeCommandTest, TellsTheObjectsOfOneEncodingApart) {
    const Octets request = Oid("1.2.840.10045.3.1.7");
    const Octets refusal = {0x30, 3, 0x0A, 1, 6};
    const Octets both = Join({refusal, {0x05, 0x00}, request, {0x30, 0x80}});
    m_directory.Write("two.der", std::string(both.begin(), both.end()));
    EXPECT_EQ(
        "two.der 1/2: OCSP response\n  Status: Unauthorized (6)\n"
        "  Faults: Octets behind the object: 2\n\n"
        "two.der 2/2: elliptic curve parameters\n  Curve:      NIST P-256\n"
        "  Identifier: NIST P-256 (1.2.840.10045.3.1.7)\n  Faults:     Octets behind the object: "
        "2\n\n",
        Run({"describe", "two.der", "--language", "en"}).out);
    m_directory.Write("damaged.pem", std::string(kSampleCertificate) +
                                         "-----BEGIN CERTIFICATE-----\n?\n"
                                         "-----END CERTIFICATE-----\n");
    const HostResult damaged = Run({"describe", "damaged.pem", "--language", "en"});
    EXPECT_EQ(1, damaged.exitCode);
    EXPECT_THAT(damaged.out, HasSubstr("damaged.pem 1/2: certificate\n"));
    EXPECT_THAT(damaged.out, HasSubstr("2/2: not described: a PEM block that does not decode"));
}

TEST_F(DescribeCommandTest, ShowsTheEntriesOfAListThatAreAskedFor) {
    const Octets algorithm = Algorithm("1.2.840.10045.4.3.2");
    const Octets date = Tlv(0x17, Text("240101000000Z"));
    Octets entries;
    for (int i = 0; i < 1003; ++i) {
        const auto high = static_cast<unsigned char>(1 + i / 256);
        const Octets entry = Tlv(0x30, {{2, 2, high, static_cast<unsigned char>(i % 256)}, date});
        entries.insert(entries.end(), entry.begin(), entry.end());
    }
    const Octets list =
        Tlv(0x30, {Tlv(0x30, {algorithm, Tlv(0x30, Octets()), date, Tlv(0x30, entries)}), algorithm,
                   Tlv(0x03, {0, 1})});
    m_directory.Write("l.crl", std::string(list.begin(), list.end()));
    const struct {
        std::vector<std::string> options;
        std::size_t rows;
        const char* end;
    } cases[] = {
        {{}, 1000, "\n    \u2026 and 3 more\n\n"},
        {{"--all"}, 1003, "04ea  01.01.2024 00:00:00 UTC\n\n"},
        {{"--count", "2"}, 2, "0101  01.01.2024 00:00:00 UTC\n    \u2026 and 1001 more\n\n"},
        {{"--first", "1002"}, 1, "04ea  01.01.2024 00:00:00 UTC\n    \u2026 and 1002 more\n\n"},
        {{"--serial", "02:05"}, 1, "0205  01.01.2024 00:00:00 UTC\n\n"},
        {{"--serial", "77"}, 0, "Revoked certificates:\n    none of this number\n\n"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> arguments = {"describe", "l.crl", "--language", "en"};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const std::string out = Run(arguments).out;
        EXPECT_THAT(out, testing::EndsWith(c.end));
        std::size_t rows = 0;
        for (const std::string& line : Lines(out)) {
            rows += line.ends_with("  01.01.2024 00:00:00 UTC") && line.starts_with("    ") ? 1 : 0;
        }
        EXPECT_EQ(c.rows, rows);
    }
    EXPECT_EQ(2, Run({"describe", "l.crl", "--serial", "1;CRL_COUNT=1"}).exitCode);
    EXPECT_EQ(2, Run({"describe", "l.crl", "--serial", "1", "--all"}).exitCode);
}

TEST_F(DescribeCommandTest, WalksFoldersInOrderAndCountsWhatIsNotDescribed) {
    WriteArchive();
    const HostResult result = Run({"describe", "--ndjson", "archive", "--language", "en"});
    EXPECT_EQ(2, result.exitCode);
    std::vector<std::string> summary;
    for (const std::string& line : Lines(result.out)) {
        rapidjson::Document row;
        row.Parse(line.c_str());
        ASSERT_TRUE(row.IsObject()) << line;
        std::string text = row["file"].GetString();
        if (row.HasMember("kind")) {
            EXPECT_EQ(0U, row["answer"]["errorCode"].GetUint());
            text += std::string(" ") + row["kind"].GetString();
        } else {
            EXPECT_STRNE("", row["error"].GetString());
            text += row.HasMember("errorCode") ? " refused" : " unreadable";
        }
        summary.push_back(text);
    }
    EXPECT_THAT(summary, ElementsAre("archive/a/broken unreadable", "archive/a/deep/list.crl crl",
                                     "archive/a/empty refused", "archive/a/letter.txt refused",
                                     "archive/b.pem certificate"));
    EXPECT_THAT(result.err, HasSubstr("2 of 5 files described"));
    EXPECT_THAT(result.err, HasSubstr("1 not: cannot open FILE: No such file"));
    EXPECT_THAT(result.err, HasSubstr("1 not: 16113 "));

    const HostResult threads =
        Run({"describe", "--ndjson", "archive", "--language", "en", "--threads", "4"});
    EXPECT_EQ(result.out, threads.out);
    EXPECT_EQ(result.err, threads.err);
    EXPECT_EQ(2, Run({"describe", "--ndjson", "--json", "archive"}).exitCode);
}

TEST_F(DescribeCommandTest, LivesThroughAProviderOfNonsense) {
    m_directory.Write("c.pem", kSampleCertificate);
    for (const char* form : {"--width=80", "--json", "--ndjson"}) {
        const HostResult result =
            Run({"describe", "--module", MOD_FOO_FAKE_MODULE, "c.pem", form, "--language", "en"});
        EXPECT_EQ(1, result.exitCode) << form << result.err;
    }
}

}  // namespace
