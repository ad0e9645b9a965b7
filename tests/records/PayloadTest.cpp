#include "records/Payload.h"
#include "tests/asn1/DerWriter.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>

namespace {

const std::string kDer = "\x30\x03\x02\x01\x05";  // MAMCAQU=
const std::string kOther = "\x30\x03\x02\x01\x06";

std::string Block(const std::string& label, const std::string& body = "MAMCAQU=") {
    return "-----BEGIN " + label + "-----\n" + body + "\n-----END " + label + "-----\n";
}

// "label:hex" of each object, ", " between them.
std::string Objects(const std::string& payload) {
    Octets octets = Text(payload);
    std::string text;
    for (const ca::PayloadItem& item : ca::DecodePayload(octets)) {
        text += text.empty() ? "" : ", ";
        text += item.label + ":";
        for (const unsigned char octet : item.octets) {
            text += "0123456789abcdef"[octet >> 4];
            text += "0123456789abcdef"[octet & 15];
        }
    }
    return text;
}

TEST(PayloadTest, FindsObjectsInEveryWrapping) {
    using namespace std::string_literals;
    const std::string mime =
        "MIME-Version: 1.0\r\nContent-Type: application/pkcs7-mime; smime-type=signed-data;\r\n"
        " name=\"smime.p7m\"\r\nContent-Transfer-Encoding: Base64\r\n\r\nMAMC\r\nAQU=\r\n";
    const std::string parts =
        "Content-Type: multipart/signed; protocol=\"application/pkcs7-signature\";"
        " boundary=\"b\"\n\nThis is a signed message: base64\n\n--b\n"
        "Content-Type: text/plain\nContent-Transfer-Encoding: base64\n\nSGVsbG8=\n\n--b\n"
        "Content-Transfer-Encoding: base64\nContent-Type: application/x-pkcs7-signature\n\n"
        "MAMCAQU=\n\n--b--\n";
    const struct {
        const char* name;
        std::string payload;
        const char* objects;
    } cases[] = {
        {"DER", kDer, ":3003020105"},
        {"BER of indefinite length", "\x30\x80\x05\x00\x00\x00"s, ":308005000000"},
        {"octets behind", kDer + "\n", ":30030201050a"},
        {"NULs", "\0\0"s, ":0000"},
        {"nothing", "", ""},
        {"white space", " \r\n\t", ""},
        {"a text", "Hello, world", ":48656c6c6f2c20776f726c64"},
        {"octets that hold a PEM line", "\x30\x82\x01\x00"s + Block("X"), nullptr},
        {"PEM", Block("CERTIFICATE"), "CERTIFICATE:3003020105"},
        {"PEM of other labels", Block("PKCS7") + Block("X509 CRL") + Block("TRUSTED CERTIFICATE"),
         "PKCS7:3003020105, X509 CRL:3003020105, TRUSTED CERTIFICATE:3003020105"},
        {"text around",
         "Subject: a\n 1: b\n\n" + Block("CMS") + "\nmore\n" + Block("CMS", "MAMCAQY="),
         "CMS:3003020105, CMS:3003020106"},
        {"text in UTF-8", "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82\n" + Block("CMS"),
         "CMS:3003020105"},
        {"text in Windows-1251", "\xCF\xF0\xE8\xE2\xE5\xF2\n" + Block("CMS"), "CMS:3003020105"},
        {"behind a byte-order mark", "\xEF\xBB\xBF" + Block("CMS"), "CMS:3003020105"},
        {"carriage returns", "-----BEGIN CMS-----\r\nMAMC\r\nAQU=\r\n-----END CMS-----\r\n",
         "CMS:3003020105"},
        {"one line, blanks", "-----BEGIN CMS----- MAMC AQU=\t-----END CMS-----", "CMS:3003020105"},
        {"another end line", "-----BEGIN A-----\nMAMCAQU=\n-----END B-----\n" + Block("C"),
         "A:3003020105, C:3003020105"},
        {"no end line", "-----BEGIN A-----\nMAMCAQU=\n" + Block("C"), "A:3003020105, C:3003020105"},
        {"no body", "-----BEGIN A-----\n-----END A-----\n" + Block("C"), "A:, C:3003020105"},
        {"ends in its first line", "-----BEGIN CERTIFI", ":"},
        {"a label without end", "-----BEGIN " + std::string(100, 'A') + "-----\n" + Block("C"),
         ":, C:3003020105"},
        {"headers", Block("CMS", "Proc-Type: 4,CRL\nOther: x\n\nMAMCAQU="), "CMS:3003020105"},
        {"headers with carriage returns", Block("CMS", "Proc-Type: 4\r\n\r\nMAMCAQU="),
         "CMS:3003020105"},
        {"a damaged body", Block("CMS", "!AMCAQU="), "CMS:"},
        {"checksum line", Block("CMS", "MAMCAQU=\n=abcd"), "CMS:3003020105"},
        {"Base64", "MAMCAQU=", ":3003020105"},
        {"Base64 without padding, broken anywhere", " MA\r\nM\nCA\t\n\nQU \n", ":3003020105"},
        {"MIME", mime, ":3003020105"},
        {"MIME with dashes in a header",
         "Content-Transfer-Encoding: base64\nX: --\n\nMAMCAQU=", ":3003020105"},
        {"the signature of a MIME message", parts, ":3003020105"},
        {"another encoding", "Content-Transfer-Encoding: 7bit\n\nbase64", nullptr},
        {"MIME without a body", "Content-Transfer-Encoding: base64\n", nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        if (c.objects != nullptr) {
            EXPECT_EQ(c.objects, Objects(c.payload));
            continue;
        }
        // What holds no wrapping is one object as it stands.
        Octets octets = Text(c.payload);
        const auto items = ca::DecodePayload(octets);
        ASSERT_EQ(1U, items.size());
        EXPECT_EQ(octets.data(), items[0].octets.data());
        EXPECT_EQ(octets.size(), items[0].octets.size());
    }
}

double SecondsToDecode(std::string_view unit, std::size_t size) {
    Octets payload;
    payload.reserve(size + unit.size());
    while (payload.size() < size) {
        payload.insert(payload.end(), unit.begin(), unit.end());
    }
    const auto begin = std::chrono::steady_clock::now();
    ca::DecodePayload(payload);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    return seconds.count();
}

// Quadratic work on any of these would take minutes.
TEST(PayloadTest, HostileTextsCostWhatTheirSizeDoes) {
    constexpr std::size_t kSize = 1 << 21;
    for (const std::string_view unit :
         {"-----BEGIN ", "-----BEGIN A-----", "-----BEGIN A-----\n-----END A-----\n",
          "-----BEGIN A-----\na:", "a:\n\n", "Content-Transfer-Encoding: x\n", "-----",
          "Content-Transfer-Encoding: base64\n\n", "Content-Transfer-Encoding: base64\n",
          "--b\nContent-Transfer-Encoding: base64\n", "A", "A ", "\n"}) {
        SCOPED_TRACE(unit);
        EXPECT_GT(10, SecondsToDecode(unit, kSize));
    }
}

}  // namespace
