#include "tests/asn1/DerWriter.h"
#include "tests/common/HttpTestServer.h"
#include "tests/openssl/SignaturesFixture.h"

#include <gmock/gmock.h>
#include <openssl/cms.h>
#include <openssl/ocsp.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

using ca_test::HttpTestServer;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string kDelegate = "responder";

/// The elements in a constructed one.
std::vector<Octets> Inside(const Octets& element) {
    std::vector<Octets> parts;
    const unsigned char* at = element.data();
    const auto next = [&] {
        long length = 0;
        int tag = 0;
        int form = 0;
        ASN1_get_object(&at, &length, &tag, &form, element.data() + element.size() - at);
        return length;
    };
    for (next(); at < element.data() + element.size();) {
        const unsigned char* const begin = at;
        const long length = next();
        at += length;
        parts.emplace_back(begin, at);
    }
    return parts;
}

/// The content of an element.
Octets WithoutHead(const Octets& element) {
    Octets content;
    for (const Octets& part : Inside(element)) {
        content.insert(content.end(), part.begin(), part.end());
    }
    return content;
}

/// A message with an answer as revocation information of another format (RFC 5940).
std::string WithInformation(const std::string& message, const std::string& answer) {
    const std::vector<Octets> outer = Inside(Text(message));
    std::vector<Octets> parts = Inside(Inside(outer[1])[0]);
    parts.insert(parts.end() - 1, Tlv(0xA1, Tlv(0xA1, {Oid("1.3.6.1.5.5.7.16.2"), Text(answer)})));
    Octets content;
    for (const Octets& part : parts) {
        content.insert(content.end(), part.begin(), part.end());
    }
    const Octets made = Tlv(0x30, {outer[0], Tlv(0xA0, Tlv(0x30, content))});
    return {made.begin(), made.end()};
}

/// A message with an answer among its first signer's revocation values (RFC 5126, 6.3.4).
std::string WithValues(const std::string& message, const std::string& answer) {
    const BioPtr memory(BIO_new_mem_buf(message.data(), static_cast<int>(message.size())));
    const std::unique_ptr<CMS_ContentInfo, Freer<CMS_ContentInfo_free>> read(
        d2i_CMS_bio(memory.get(), nullptr));
    const Octets octets = Inside(Inside(Inside(Text(answer))[1])[0])[1];
    const Octets value = Tlv(0x30, Tlv(0xA1, Tlv(0x30, WithoutHead(octets))));
    CMS_unsigned_add1_attr_by_NID(sk_CMS_SignerInfo_value(CMS_get0_SignerInfos(read.get()), 0),
                                  NID_id_smime_aa_ets_revocationValues, V_ASN1_SEQUENCE,
                                  value.data(), static_cast<int>(value.size()));
    return Der<CMS_ContentInfo>(read.get(), &i2d_CMS_ContentInfo);
}

/// With responders for both authorities, "openssl ocsp" behind a server of this process.
class OcspTest : public SignaturesTest {
  protected:
    /// What the responder of the lower authority sends in answer to a question.
    using Answering = std::function<std::string(const std::string& question)>;

    OcspTest()
        : m_server([this](ca_test::Connection& connection, const ca_test::Request& request) {
              const bool isRoot = request.head.starts_with("POST /root");
              const Answering answer = m_answer;  // the test may go on before a slow one ends
              connection.Write(ca_test::Ok(isRoot ? AnswerOf("root", "root", request.body)
                                                  : answer(request.body)));
          }) {}

    /// OpenSSL's own answer.
    std::string AnswerOf(const std::string& issuer, const std::string& signer,
                         const std::string& question, const std::string& options = "-ndays 1") {
        const std::string name = "question" + std::to_string(++m_count);
        Put(name, question);
        EXPECT_EQ(
            0, Run("openssl ocsp -index " + PkiPath(issuer + ".index") + " -CA " +
                   PkiPath(issuer + ".crt") + " -rsigner " + PkiPath(signer + ".crt") + " -rkey " +
                   PkiPath(signer + ".key") + " -reqin " + Scratch(name) + " -respout " +
                   Scratch(name + ".der") + ' ' + options + " > /dev/null 2>&1"));
        return TemporaryDir::Read(Scratch(name + ".der"));
    }
    /// A question about a certificate of the lower authority.
    std::string QuestionAbout(const std::string& name) {
        EXPECT_EQ(0, Run("openssl ocsp -issuer " + PkiPath("ca.crt") + " -cert " +
                         PkiPath(name + ".crt") + " -reqout " + Scratch("asked")));
        return TemporaryDir::Read(Scratch("asked"));
    }
    Answering By(const std::string& signer, const std::string& options = "-ndays 1") {
        return [=, this](const std::string& question) {
            return AnswerOf("ca", signer, question, options);
        };
    }
    static Answering Always(std::string answer) {
        return [answer = std::move(answer)](const std::string&) { return answer; };
    }
    std::string Url(const wchar_t* path) const { return ca_test::Narrow(m_server.Url(path)); }
    /// \param ocsp   members of "ocsp", each with a comma after it.
    /// \param lower  members of the lower authority's responder, each after a comma.
    void Use(const std::string& ocsp, const std::string& lower = "", const char* crl = "false",
             const char* policy = "required") {
        Configure(R"("ocsp":{)" + ocsp + R"("responders":[{"url":")" + Url(L"/ca") + '"' + lower +
                  R"(},{"url":")" + Url(L"/root") + R"(","issuer":"CN=root,O=Test"}]},"crl":{)" +
                  R"("enabled":)" + crl + R"(},"policies":{"signing":{"revocation":")" + policy +
                  R"("}},)");
    }
    unsigned Judge(const std::string& name, const std::string& params = "",
                   const std::string& more = "") {
        const Answer answer =
            CallRaw(R"("mode":25,"extInitParams":")" + params + '"', Pki(name + ".crt") + more);
        EXPECT_EQ(answer.Code(), 0U) << answer.text;
        const auto& result = answer.json["verifyResult"];
        m_said = result["CertificateVerifyResultString"].GetString();
        return result["CertificateVerifyResult"].GetUint();
    }

    Answering m_answer = By(kDelegate);
    std::string m_said;
    std::atomic<int> m_count = 0;
    HttpTestServer m_server;
};

constexpr const char* kOn = R"("enabled":true,)";
const std::string kOfCa = R"(,"issuer":"CN=ca,O=Test")";

}  // namespace

TEST_F(OcspTest, BelievesOnlyWhatIsAnAnswer) {
    const std::string later = "VERIFY_TIME=" + std::to_string(std::time(nullptr) + 3 * 86400);
    const std::string aboutAlice = AnswerOf("ca", kDelegate, QuestionAbout("alice"));
    struct Case {
        const char* name;
        Answering answer;
        unsigned code;
        const char* said;
        std::string params = "";
    };
    const Case cases[] = {
        {"bob", By(kDelegate), 16200, "OCSP answer of "},
        {"bob", By("ca"), 16200, ", from the server"},
        {"bob", By("ca", "-resp_key_id -resp_no_certs"), 16200, "OCSP answer of "},
        {"revoked", By(kDelegate), 16203, "; revoked "},
        {"responder", By(kDelegate), 16207, "does not know the certificate"},
        {"bob", By("bob"), 16207, "may not give it"},
        {"bob", By("root"), 16207, "may not give it"},
        {"bob", By(kDelegate, "-badsig"), 16207, "signature of the OCSP answer is wrong"},
        {"bob", Always(aboutAlice), 16207, "nonce of the OCSP answer"},
        {"bob", Always(aboutAlice), 16207, "for another certificate", "OCSP_NONCE=0"},
        {"bob", By(kDelegate), 16207, "out of date", later},
        {"bob", By(kDelegate, ""), 16200, "OCSP answer of "},
        {"bob", By(kDelegate, ""), 16207, "out of date",
         "VERIFY_TIME=" + std::to_string(std::time(nullptr) + 1000)},
        {"bob", Always(std::string("\x30\x03\x0A\x01\x03", 5)), 16207, "one of a failure"},
        {"bob", Always("no answer"), 16207, "one of a failure"},
        {"bob", Always(std::string(2U << 20, 'x')), 16207, "no answer of the OCSP responder"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.name) + ' ' + c.said);
        m_answer = c.answer;
        Use(kOn, kOfCa);
        LogRecorder::Take();
        EXPECT_EQ(Judge(c.name, c.params), c.code) << m_said;
        EXPECT_THAT(m_said, HasSubstr(c.said));
        std::wstring log;
        for (const LogLine& line : LogRecorder::Take()) {
            log += line.text;
        }
        const bool isRefused = c.code == 16207 && std::string(c.name) == "bob";
        EXPECT_EQ(log.find(L"OCSP answer is not believed") != std::wstring::npos, isRefused);
    }
}

TEST_F(OcspTest, GoesByEachSetting) {
    const std::string aboutBob = AnswerOf("ca", kDelegate, QuestionAbout("bob"));
    struct Case {
        const char* what;
        std::string ocsp;
        std::string lower;
        Answering answer;
        unsigned code;
    };
    const Answering slow = [this](const std::string& question) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1500));
        return AnswerOf("ca", kDelegate, question);
    };
    const auto signer = [](const std::string& name) {
        return R"(,"certificate":")" + PkiPath(name + ".crt") + '"';
    };
    const Case cases[] = {
        {"enabled", "", "", By(kDelegate), 16207},
        {"issuer", kOn, R"(,"issuer":"CN=other,O=Test")", By(kDelegate), 16207},
        {"nonce", kOn + std::string(R"("nonce":false,)"), "", Always(aboutBob), 16200},
        {"nonce", kOn, "", Always(aboutBob), 16207},
        {"certificate", kOn, signer("bob"), By("bob"), 16200},
        {"certificate", kOn, signer("alice"), By("bob"), 16207},
        {"certificate", kOn, signer("none"), By(kDelegate), 16207},
        {"timeout", kOn, R"(,"timeout":200)", slow, 16207},
        {"timeout", kOn, R"(,"timeout":9000)", slow, 16200},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.what) + c.lower);
        m_answer = c.answer;
        Use(c.ocsp, c.lower);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(Judge("bob"), c.code) << m_said;
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(9));
    }
    EXPECT_EQ(Judge("bob", "OCSP_CHECK=0"), 16207U);

    m_answer = slow;
    Use(kOn, kOfCa + R"(,"timeout":200)");
    EXPECT_EQ(Judge("bob"), 16207U);
    const std::size_t asked = m_server.Requests().size();
    EXPECT_EQ(Judge("bob"), 16207U);
    EXPECT_EQ(m_server.Requests().size(), asked) << "it did not answer a moment ago";

    // What is kept is not asked for again, and a new state is not seen.
    for (const bool isKept : {true, false}) {
        SCOPED_TRACE(isKept);
        Use(kOn, kOfCa + (isKept ? "" : R"(,"cacheTime":0)"));
        m_answer = By(kDelegate);
        EXPECT_EQ(Judge("bob"), 16200U);
        m_answer = Always("");
        EXPECT_EQ(Judge("bob"), isKept ? 16200U : 16207U);
    }
}

TEST_F(OcspTest, AsksTheResponderThatACertificateNames) {
    Put("aia",
        "authorityInfoAccess=OCSP;URI:" + Url(L"/ca") + "\nkeyUsage=critical,digitalSignature");
    ASSERT_EQ(0, Run("cd " + PkiPath("") +
                     " && openssl x509 -req -in bob.csr -CA ca.crt -CAkey ca.key -set_serial 0x77 "
                     "-days 9 -out named.crt -extfile " +
                     Scratch("aia") +
                     " 2> /dev/null && printf "
                     "'V\\t300101000000Z\\t\\t77\\tunknown\\t/O=Test/CN=named\\n' >> ca.index"));
    for (const bool isAsked : {true, false}) {
        SCOPED_TRACE(isAsked);
        Configure(R"("ocsp":{"enabled":true,"useCertificateResponders":)" +
                  std::string(isAsked ? "true" : "false") +
                  R"(},"policies":{"signing":{"revocation":"required"}},)");
        Put("user/Root/root.crl", Pki("root.crl"));  // tells of the authority
        EXPECT_EQ(Judge("named"), isAsked ? 16200U : 16207U) << m_said;
    }
}

// OCSP first, lists for what it leaves open; revoked is revoked, whoever says so.
TEST_F(OcspTest, ActsTogetherWithLists) {
    Put("user/Root/root.crl", Pki("root.crl"));
    Put("user/CA/ca.crl", Pki("ca.crl"));
    m_answer = Always("");
    Use(kOn, kOfCa, "true");
    EXPECT_EQ(Judge("bob"), 16200U) << m_said;
    EXPECT_THAT(m_said, HasSubstr("one of a failure; revocation list of "));
    EXPECT_EQ(Judge("revoked"), 16203U) << m_said;
    std::filesystem::remove(Store("CA/ca.crl"));
    EXPECT_EQ(Judge("bob"), 16207U) << m_said;
    m_answer = By(kDelegate);
    EXPECT_EQ(Judge("bob"), 16200U) << m_said;
    EXPECT_EQ(Judge("revoked"), 16203U) << m_said;
    // Nobody asks on behalf of what is not trusted.
    std::filesystem::remove(Store("Root/root.crt"));
    Use(kOn, kOfCa, "true");
    const std::size_t asked = m_server.Requests().size();
    EXPECT_EQ(Judge("bob"), 16220U) << m_said;
    EXPECT_EQ(m_server.Requests().size(), asked);
}

TEST_F(OcspTest, TakesAnswersFromWhatIsJudged) {
    Configure(R"("policies":{"signing":{"revocation":"required"}},)");
    Put("user/Root/root.crl", Pki("root.crl"));
    const std::string good = AnswerOf("ca", kDelegate, QuestionAbout("bob"));
    const std::string bad = AnswerOf("ca", kDelegate, QuestionAbout("revoked"));
    const auto pem = [](const std::string& der) {
        return "-----BEGIN OCSP RESPONSE-----\n" + Base64(der) + "\n-----END OCSP RESPONSE-----\n";
    };
    EXPECT_EQ(Judge("bob"), 16207U);
    EXPECT_EQ(Judge("bob", "", pem(good)), 16200U) << m_said;
    EXPECT_THAT(m_said, HasSubstr(", from the message"));
    EXPECT_EQ(Judge("bob", "", pem(bad)), 16207U) << m_said;
    EXPECT_EQ(Judge("revoked", "", pem(good) + pem(bad)), 16203U) << m_said;

    const std::string message = Theirs("bob", "-nodetach -md sha256");
    const std::string revoked = Theirs("revoked", "-nodetach -md sha256");
    EXPECT_EQ(Verify(message), "16200/16207 ");
    for (const auto with : {&WithInformation, &WithValues}) {
        EXPECT_EQ(Verify(with(message, good)), "16200/16200 ");
        EXPECT_EQ(Verify(with(message, bad)), "16200/16207 ");
        EXPECT_EQ(Verify(with(revoked, bad)), "16200/16203 ");
    }
}
