// What the loaded library says about messages that OpenSSL's command line signed, beside what
// OpenSSL's library reads from them.

#include "tests/module/ModuleLibrary.h"
#include "tests/module/OpenSslObjects.h"

#include <openssl/cms.h>

#include <set>

namespace {

constexpr unsigned kNoData = 16118;
constexpr unsigned kNotVerified = 16199;
constexpr unsigned kNoSignedData = 16308;

constexpr int kVerify = 15;
constexpr int kGetSignInfo = 29;
constexpr int kGetSignType = 44;
constexpr int kGetSignInfo2 = 57;

using CmsPtr = std::unique_ptr<CMS_ContentInfo, Freer<CMS_ContentInfo_free>>;

// Keys and messages, made once by OpenSSL's command line.
class Messages {
  public:
    static const Messages& Get() {
        static const Messages messages;
        return messages;
    }
    std::string Read(const std::string& name) const {
        return TemporaryDir::Read(m_directory.File(name));
    }
    bool IsMade() const { return m_isMade; }

  private:
    Messages() {
        m_directory.Write("letter.txt", "Dear Ann,\n");
        m_directory.Write("ts.ini",
                          "[tsa]\ndefault_tsa=t\n[t]\nserial=serial\ncrypto_device=builtin\n"
                          "signer_digest=sha256\ndefault_policy=1.2.3.4\ndigests=sha256\n"
                          "ess_cert_id_alg=sha256\n[x]\nsubjectKeyIdentifier=hash\n"
                          "extendedKeyUsage=critical,timeStamping\n[req]\n"
                          "distinguished_name=d\n[d]\n");
        const std::string sign = " && openssl cms -sign -binary -in letter.txt -outform DER";
        const std::string ann = " -signer ann.pem -inkey ann.key";
        const std::string bob = " -signer bob.pem -inkey bob.key";
        const std::string make =
            " && openssl req -new -x509 -nodes -config ts.ini -extensions x"
            " -utf8 -newkey ";
        const std::string ec = "ec -pkeyopt ec_paramgen_curve:P-256";
        const std::string script =
            "cd " + m_directory.Path() + " && exec >/dev/null 2>&1" + make + ec +
            " -subj '/CN=Анна' -keyout ann.key -out ann.pem" + make + ec +
            " -subj '/O=a+CN=b/CN=Bob, the \"second\"' -keyout bob.key -out bob.pem" + make +
            "rsa:2048 -subj /CN=Rsa -keyout rsa.key -out rsa.pem" + sign +
            " -nodetach -out both.der" + ann + bob + " -md sha384" + sign + " -out detached.der" +
            ann + sign + " -keyid -nodetach -out keyid.der" + bob + sign +
            " -nodetach -stream -out stream.ber" + ann + bob + sign +
            " -nocerts -noattr -out bare.der" + ann + sign +
            " -nodetach -signer rsa.pem -inkey rsa.key -keyopt rsa_padding_mode:pss"
            " -out pss.der && openssl cms -cmsout -inform DER -in both.der -outform PEM -out "
            "both.pem"
            " && openssl crl2pkcs7 -nocrl -certfile ann.pem -outform DER -out bundle.der"
            " && echo 01 > serial && openssl ts -query -data letter.txt -sha256 -cert -out query"
            " && openssl ts -reply -config ts.ini -queryfile query -signer rsa.pem -inkey rsa.key"
            " -token_out -out token.der && openssl ts -reply -config ts.ini -queryfile query"
            " -signer rsa.pem -inkey rsa.key -out response.der";
        m_isMade = std::system(script.c_str()) == 0;  // NOLINT(cert-env33-c): a test's own script
    }

    TemporaryDir m_directory;
    bool m_isMade = false;
};

CmsPtr Parse(const std::string& octets) {
    const BioPtr memory(BIO_new_mem_buf(octets.data(), static_cast<int>(octets.size())));
    return CmsPtr(d2i_CMS_bio(memory.get(), nullptr));
}

std::string SignIdOf(CMS_SignerInfo* signer) {
    const ASN1_OCTET_STRING* const value = CMS_SignerInfo_get0_signature(signer);
    return IdOf(
        {reinterpret_cast<const char*>(value->data), static_cast<std::size_t>(value->length)});
}

std::string SigningTimeOf(const CMS_SignerInfo* signer) {
    const int index = CMS_signed_get_attr_by_NID(signer, NID_pkcs9_signingTime, -1);
    if (index < 0) {
        return "";
    }
    return TimeOf(X509_ATTRIBUTE_get0_type(CMS_signed_get_attr(signer, index), 0)->value.utctime);
}

std::vector<std::string> AttributesOf(const CMS_SignerInfo* signer) {
    std::vector<std::string> list;
    for (int i = 0; i < CMS_signed_get_attr_count(signer); ++i) {
        list.push_back(DottedOf(X509_ATTRIBUTE_get0_object(CMS_signed_get_attr(signer, i))));
    }
    return list;
}

std::string Text(const rapidjson::Value& record, const char* key) {
    return record[key].GetString();
}

void ExpectAgreement(CMS_SignerInfo* signer, const rapidjson::Value& info) {
    EXPECT_EQ(SignIdOf(signer), Text(info, "SignId"));
    EXPECT_EQ(SigningTimeOf(signer), Text(info, "SignTimeUTC"));
    std::vector<std::string> attributes;
    for (const auto& attribute : info["Extensions"].GetArray()) {
        attributes.push_back(Text(attribute, "ExtensionOID"));
        EXPECT_NE("", Text(attribute, "ExtensionInterpretedString"));
    }
    EXPECT_EQ(AttributesOf(signer), attributes);
    const auto& result = info["VerifyResultEx"];
    EXPECT_EQ(kNotVerified, result["SignatureVerifyResult"].GetUint());
    EXPECT_EQ(kNotVerified, result["CertificateVerifyResult"].GetUint());
    EXPECT_EQ("Signature was not verified", Text(info, "VerifyResult"));
    EXPECT_EQ("Certificate was not verified", Text(result, "CertificateVerifyResultString"));
}

class DescribeSignaturesTest : public LibraryTest {
  protected:
    void SetUp() override {
        if (!Messages::Get().IsMade()) {
            GTEST_SKIP() << "OpenSSL's command line did not make the messages";
        }
    }
    Answer Describe(int mode, std::string_view payload) {
        return CallRaw("\"mode\":" + std::to_string(mode), payload);
    }
};

TEST_F(DescribeSignaturesTest, AgreesWithOpenSslOnItsMessages) {
    struct Case {
        const char* file;
        bool isAttached;
        const char* algorithm;
        std::set<std::string> subjects;  // of the certificates
    };
    const std::string bob = R"(CN=b + O=a, CN="Bob, the ""second""")";
    const Case cases[] = {
        {"both.der", true, "ECDSA with SHA-384", {"CN=Анна", bob}},
        {"both.pem", true, "ECDSA with SHA-384", {"CN=Анна", bob}},
        {"detached.der", false, "ECDSA with SHA-256", {"CN=Анна"}},
        {"keyid.der", true, "ECDSA with SHA-256", {bob}},
        {"stream.ber", true, "ECDSA with SHA-256", {"CN=Анна", bob}},
        {"bare.der", false, "ECDSA with SHA-256", {""}},
        {"pss.der", true, "RSA-PSS, SHA-256, MGF1 SHA-256, 222", {"CN=Rsa"}},
        {"token.der", true, "RSA with SHA-256", {"CN=Rsa"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const std::string octets = Messages::Get().Read(c.file);
        const bool isPem = octets.starts_with("-----");
        const CmsPtr message = Parse(isPem ? Messages::Get().Read("both.der") : octets);
        ASSERT_NE(nullptr, message);
        STACK_OF(CMS_SignerInfo)* const signers = CMS_get0_SignerInfos(message.get());
        for (const int mode : {kGetSignInfo, kGetSignType, kVerify}) {
            const Answer answer = Describe(mode, octets);
            ASSERT_EQ(0U, answer.Code());
            EXPECT_EQ(c.isAttached, answer.json["isAttached"].GetBool());
            const auto& infos = answer.json["signInfo"];
            ASSERT_EQ(sk_CMS_SignerInfo_num(signers), static_cast<int>(infos.Size()));
            std::set<std::string> subjects;
            for (rapidjson::SizeType i = 0; i < infos.Size(); ++i) {
                ExpectAgreement(sk_CMS_SignerInfo_value(signers, static_cast<int>(i)), infos[i]);
                EXPECT_EQ(c.algorithm, Text(infos[i], "SignAlg"));
                EXPECT_EQ(c.isAttached, infos[i]["IsAttached"].GetBool());
                const auto& certificate = infos[i]["SignCert"];
                subjects.insert(Text(certificate, "Description"));
                EXPECT_EQ(Text(certificate, "Description").empty()
                              ? "Certificate is not in the message"
                              : "",
                          Text(certificate, "Error"));
            }
            EXPECT_EQ(c.subjects, subjects);
        }
    }
}

TEST_F(DescribeSignaturesTest, TellsWhatATimeStampStamps) {
    for (const char* file : {"token.der", "response.der"}) {
        SCOPED_TRACE(file);
        const Answer answer = Describe(kGetSignInfo, Messages::Get().Read(file));
        ASSERT_EQ(0U, answer.Code());
        const std::string text =
            Text(answer.json["signInfo"][0]["Extensions"][0], "ExtensionInterpretedString");
        EXPECT_TRUE(
            text.starts_with("Time-stamp token information (1.2.840.113549.1.9.16.1.4)\n  Time: "));
        EXPECT_NE(std::string::npos, text.find("\n  Policy: 1.2.3.4\n  Serial: 0")) << text;
    }
}

TEST_F(DescribeSignaturesTest, GetSignInfo2AnswersWithAListABlob) {
    const auto call = [this](const std::vector<std::string>& blobs) {
        std::string list;
        for (const std::string& blob : blobs) {
            list += (list.empty() ? "\"" : ",\"") + Base64(blob) + "\"";
        }
        return Call("{\"mode\":57,\"signatures\":[" + list + "]}");
    };
    const Messages& messages = Messages::Get();
    const Answer answer =
        call({messages.Read("both.pem"), "no message", messages.Read("keyid.der")});
    ASSERT_EQ(0U, answer.Code());
    const auto& lists = answer.json["signInfoArray"];
    ASSERT_EQ(3U, lists.Size());
    EXPECT_EQ(2U, lists[0].Size());
    EXPECT_EQ(0U, lists[1].Size());
    EXPECT_EQ(1U, lists[2].Size());
    EXPECT_EQ(kNoSignedData, call({"no message", messages.Read("ann.pem")}).Code());
    const Answer file =
        Describe(kGetSignInfo2, messages.Read("both.pem") + messages.Read("both.pem"));
    ASSERT_EQ(0U, file.Code());
    ASSERT_EQ(1U, file.json["signInfoArray"].Size());
    EXPECT_EQ(4U, file.json["signInfoArray"][0].Size());
}

TEST_F(DescribeSignaturesTest, RefusesWhatNobodySigned) {
    for (const int mode : {kGetSignInfo, kGetSignInfo2, kGetSignType, kVerify}) {
        EXPECT_EQ(kNoData, Describe(mode, "").Code());
        for (const char* file : {"letter.txt", "ann.pem", "bundle.der"}) {
            const Answer answer = Describe(mode, Messages::Get().Read(file));
            EXPECT_EQ(kNoSignedData, answer.Code()) << mode << " " << file;
            EXPECT_FALSE(answer.json.HasMember("signInfo"));
        }
    }
    // The signature may stand apart from the file.
    const std::string apart =
        R"("mode":29,"sendSignData":")" + Base64(Messages::Get().Read("detached.der")) + '"';
    const Answer answer = CallRaw(apart, "Dear Ann,\n");
    ASSERT_EQ(0U, answer.Code());
    EXPECT_EQ(1U, answer.json["signInfo"].Size());
}

}  // namespace
