// What the loaded library says about certificates, beside what OpenSSL reads from them.

#include "tests/common/SampleObjects.h"
#include "tests/module/ModuleLibrary.h"
#include "tests/module/OpenSslObjects.h"

#include <openssl/pem.h>
#include <openssl/pkcs7.h>
#include <openssl/sha.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <set>

namespace {

constexpr const char* kSystemFolder = "/usr/share/ca-certificates";
constexpr unsigned kNoSuchCertificate = 16102;
constexpr unsigned kNoCertificate = 16113;
constexpr unsigned kNoData = 16118;

using Pkcs7Ptr = std::unique_ptr<PKCS7, Freer<PKCS7_free>>;
using BignumPtr = std::unique_ptr<BIGNUM, Freer<BN_free>>;

X509Ptr ReadPem(const std::string& pem) {
    const BioPtr memory(BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size())));
    return X509Ptr(PEM_read_bio_X509(memory.get(), nullptr, nullptr, nullptr));
}

std::string SerialOf(X509* certificate) {
    const BignumPtr number(ASN1_INTEGER_to_BN(X509_get0_serialNumber(certificate), nullptr));
    char* const text = BN_bn2hex(number.get());
    const std::string hex = Lower(text);
    OPENSSL_free(text);
    return hex == "0" ? "00" : hex;
}

// Encoded order; the certificates of the system put one attribute into each RDN.
std::string NameOf(const X509_NAME* name) {
    std::string text;
    for (int i = 0; i < X509_NAME_entry_count(name); ++i) {
        const X509_NAME_ENTRY* const entry = X509_NAME_get_entry(name, i);
        unsigned char* utf8 = nullptr;
        const int size = ASN1_STRING_to_UTF8(&utf8, X509_NAME_ENTRY_get_data(entry));
        const std::string value(reinterpret_cast<char*>(utf8), static_cast<std::size_t>(size));
        OPENSSL_free(utf8);
        const bool isQuoted = value.find_first_of(",+") != std::string::npos;
        text += (i == 0 ? "" : ", ") + DottedOf(X509_NAME_ENTRY_get_object(entry)) + "=" +
                (isQuoted ? "\"" + value + "\"" : value);
    }
    return text;
}

std::string SignatureAlgorithmOf(const X509* certificate) {
    static const std::map<int, std::string> names = {
        {NID_sha1WithRSAEncryption, "RSA with SHA-1"},
        {NID_sha256WithRSAEncryption, "RSA with SHA-256"},
        {NID_sha384WithRSAEncryption, "RSA with SHA-384"},
        {NID_sha512WithRSAEncryption, "RSA with SHA-512"},
        {NID_ecdsa_with_SHA256, "ECDSA with SHA-256"},
        {NID_ecdsa_with_SHA384, "ECDSA with SHA-384"},
        {NID_ecdsa_with_SHA512, "ECDSA with SHA-512"},
    };
    const auto found = names.find(X509_get_signature_nid(certificate));
    return found != names.end() ? found->second : "not in the test's table";
}

std::string KeyOf(X509* certificate) {
    EVP_PKEY* const key = X509_get0_pubkey(certificate);
    std::array<char, 80> curve{};
    if (EVP_PKEY_get_base_id(key) == EVP_PKEY_RSA) {
        BIGNUM* exponent = nullptr;
        EVP_PKEY_get_bn_param(key, "e", &exponent);
        const BignumPtr owned(exponent);
        return "RSA, " + std::to_string(EVP_PKEY_get_bits(key)) + " bit, exponent " +
               std::to_string(BN_get_word(exponent));
    }
    EVP_PKEY_get_group_name(key, curve.data(), curve.size(), nullptr);
    const char* const nist = EC_curve_nid2nist(OBJ_txt2nid(curve.data()));
    return "Elliptic curve public key, NIST " + std::string(nist != nullptr ? nist : "?");
}

using Extensions = std::vector<std::pair<std::string, bool>>;

Extensions ExtensionsOf(const X509* certificate) {
    Extensions list;
    for (int i = 0; i < X509_get_ext_count(certificate); ++i) {
        X509_EXTENSION* const extension = X509_get_ext(certificate, i);
        list.emplace_back(DottedOf(X509_EXTENSION_get_object(extension)),
                          X509_EXTENSION_get_critical(extension) != 0);
    }
    return list;
}

class DescribeCertificatesTest : public LibraryTest {
  protected:
    Answer Describe(std::string_view payload) { return CallRaw(R"("mode":22)", payload); }
};

std::string Text(const rapidjson::Value& record, const char* key) {
    return record[key].GetString();
}

void ExpectAgreement(X509* certificate, const rapidjson::Value& info) {
    EXPECT_EQ(SerialOf(certificate), Text(info, "Serial"));
    EXPECT_EQ(NameOf(X509_get_issuer_name(certificate)), Text(info, "OIDIssuer"));
    EXPECT_EQ(NameOf(X509_get_subject_name(certificate)), Text(info, "OIDDescription"));
    EXPECT_EQ(TimeOf(X509_get0_notBefore(certificate)), Text(info, "ValidFromUTC"));
    EXPECT_EQ(TimeOf(X509_get0_notAfter(certificate)), Text(info, "ValidToUTC"));
    EXPECT_EQ(SignatureAlgorithmOf(certificate), Text(info, "SignatureAlg"));
    EXPECT_EQ(KeyOf(certificate),
              Text(info, "PublicKeyAlg") + ", " + Text(info, "PublicKeyParams"));
    EXPECT_EQ(IdOf(DerOf(certificate)), Text(info, "Id"));
    const std::uint32_t usage = X509_get_key_usage(certificate);
    EXPECT_EQ(usage == UINT32_MAX ? 0 : usage, info["KeyUsage"].GetUint());
    Extensions extensions;
    for (const auto& extension : info["Extensions"].GetArray()) {
        extensions.emplace_back(Text(extension, "OidValue"), extension["Critical"].GetBool());
    }
    EXPECT_EQ(ExtensionsOf(certificate), extensions);
    EXPECT_EQ("", Text(info, "Error"));
}

TEST_F(DescribeCertificatesTest, AgreesWithOpenSslOnTheAuthoritiesOfTheSystem) {
    if (!std::filesystem::exists(kSystemFolder)) {
        GTEST_SKIP() << "no certificates on this system";
    }
    for (const auto& file : std::filesystem::recursive_directory_iterator(kSystemFolder)) {
        if (file.path().extension() != ".crt") {
            continue;
        }
        SCOPED_TRACE(file.path().filename());
        const std::string pem = TemporaryDir::Read(file.path());
        const X509Ptr certificate = ReadPem(pem);
        ASSERT_NE(nullptr, certificate);
        const Answer answer = Describe(pem);
        ASSERT_EQ(0U, answer.Code());
        ExpectAgreement(certificate.get(), answer.json["certInfo"]);
    }
}

struct Chain {
    KeyPtr rootKey{EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256")};
    KeyPtr leafKey{EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256")};
    X509Ptr root = Issue("Root", "Root", rootKey.get(), rootKey.get());
    X509Ptr leaf = Issue("Leaf", "Root", leafKey.get(), rootKey.get());

    // A message that carries certificates only.
    std::string Bundle() const {
        const Pkcs7Ptr bundle(PKCS7_new());
        PKCS7_set_type(bundle.get(), NID_pkcs7_signed);
        PKCS7_content_new(bundle.get(), NID_pkcs7_data);
        PKCS7_add_certificate(bundle.get(), root.get());
        PKCS7_add_certificate(bundle.get(), leaf.get());
        return Der<PKCS7>(bundle.get(), &i2d_PKCS7);
    }
};

std::string Bare(std::string pem) {
    pem.erase(0, pem.find('\n'));
    return pem.substr(0, pem.find("-----END"));
}

TEST_F(DescribeCertificatesTest, FindsOneCertificateInEveryForm) {
    const X509Ptr certificate = ReadPem(kSampleCertificate);
    const std::string pem = kSampleCertificate;
    const std::pair<const char*, std::string> forms[] = {
        {"DER", DerOf(certificate.get())},
        {"PEM", pem},
        {"text around", "Subject: CN=Иванов\r\n\n" + pem + "\nthe end\n"},
        {"Base64", Bare(pem)},
    };
    for (const auto& [name, payload] : forms) {
        SCOPED_TRACE(name);
        const Answer answer = Describe(payload);
        ASSERT_EQ(0U, answer.Code());
        const auto& info = answer.json["certInfo"];
        ExpectAgreement(certificate.get(), info);
        EXPECT_FALSE(info.HasMember("IssuerCert"));
        EXPECT_EQ("CN=Иванов Иван,O=Ромашка\\, ООО,C=RU", Text(info, "X500Description"));
        EXPECT_EQ("C=RU;O=Ромашка, ООО;CN=Иванов Иван;", Text(info, "SubjectTags"));
        EXPECT_EQ(16199U, info["ValidityNumber"].GetUint());
    }
}

TEST_F(DescribeCertificatesTest, ListsSeveralAndNestsTheIssuerOfAChain) {
    const Chain chain;
    const Answer several = Describe(PemOf(chain.root.get()) + PemOf(chain.leaf.get()));
    ASSERT_EQ(0U, several.Code());
    const auto& infos = several.json["certInfos"];
    ASSERT_EQ(2U, infos.Size());
    EXPECT_EQ("CN=Root", Text(infos[0], "Description"));
    EXPECT_EQ("CN=Leaf", Text(infos[1], "Description"));

    const Answer bundle = Describe(chain.Bundle());
    ASSERT_EQ(0U, bundle.Code());
    const auto& leaf = bundle.json["certInfo"];
    EXPECT_EQ("CN=Leaf", Text(leaf, "Description"));
    ASSERT_TRUE(leaf.HasMember("IssuerCert"));
    ExpectAgreement(chain.root.get(), leaf["IssuerCert"]);
    EXPECT_FALSE(leaf["IssuerCert"].HasMember("IssuerCert"));
}

TEST_F(DescribeCertificatesTest, TakesIdsAndRefusesWhatIsNoCertificate) {
    const auto call = [this](const std::string& members) { return Call("{" + members + "}"); };
    EXPECT_EQ(0U, call(R"("mode":22)").Code());
    EXPECT_TRUE(call(R"("mode":22,"senderCertId":"FooCertId")").json.HasMember("certInfo"));
    EXPECT_EQ(kNoSuchCertificate, call(R"("mode":22,"senderCertId":"Other")").Code());
    for (const char* mode : {R"("mode":21)", R"("mode":45)"}) {
        SCOPED_TRACE(mode);
        EXPECT_EQ(kNoData, call(mode).Code());
        EXPECT_EQ(0U, CallRaw(mode, kSampleCertificate).Code());
        EXPECT_EQ(kNoCertificate, CallRaw(mode, kSampleCrl).Code());
    }
    EXPECT_EQ(kNoCertificate, Describe(kSampleCrl).Code());
    EXPECT_EQ(kNoCertificate, Describe("no certificate at all").Code());
}

TEST_F(DescribeCertificatesTest, SurvivesTruncationAndFlippedBits) {
    const X509Ptr certificate = ReadPem(kSampleCertificate);
    const std::string der = DerOf(certificate.get());
    const std::set<unsigned> allowed = {0, kNoCertificate, kNoData};
    for (std::size_t size = 1; size < der.size(); ++size) {
        const unsigned code = Describe(der.substr(0, size)).Code();
        EXPECT_TRUE(allowed.contains(code)) << size << ": " << code;
    }
    constexpr std::size_t kStep = 3;
    for (std::size_t bit = 0; bit < der.size() * 8; bit += kStep) {
        std::string flipped = der;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
        const unsigned code = Describe(flipped).Code();
        EXPECT_TRUE(allowed.contains(code)) << bit << ": " << code;
    }
}

}  // namespace
