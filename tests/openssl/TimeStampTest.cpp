#include "tests/asn1/DerWriter.h"
#include "tests/common/HttpTestServer.h"
#include "tests/openssl/SignaturesFixture.h"

#include <gmock/gmock.h>
#include <openssl/cms.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

using testing::HasSubstr;
using testing::Not;

namespace {

using CmsPtr = std::unique_ptr<CMS_ContentInfo, Freer<CMS_ContentInfo_free>>;

const std::string kStamp = R"(,"extInitParams":"TSP_STAMP=1")";
constexpr const char* kUnknownIsFine = R"("policies":{"timeStamping":{"revocation":"none"}},)";

CmsPtr Read(const std::string& message) {
    const BioPtr memory(BIO_new_mem_buf(message.data(), static_cast<int>(message.size())));
    return CmsPtr(d2i_CMS_bio(memory.get(), nullptr));
}
CMS_SignerInfo* FirstSigner(CMS_ContentInfo* message) {
    return sk_CMS_SignerInfo_value(CMS_get0_SignerInfos(message), 0);
}
std::string StampOf(const std::string& message) {
    const CmsPtr read = Read(message);
    const auto* const value = static_cast<ASN1_STRING*>(CMS_unsigned_get0_data_by_OBJ(
        FirstSigner(read.get()), OBJ_nid2obj(NID_id_smime_aa_timeStampToken), -3, V_ASN1_SEQUENCE));
    return value == nullptr ? std::string()
                            : std::string(reinterpret_cast<const char*>(value->data),
                                          static_cast<std::size_t>(value->length));
}
std::string WithStamp(const std::string& message, const std::string& token) {
    const CmsPtr read = Read(message);
    CMS_unsigned_add1_attr_by_NID(FirstSigner(read.get()), NID_id_smime_aa_timeStampToken,
                                  V_ASN1_SEQUENCE, token.data(), static_cast<int>(token.size()));
    return Der<CMS_ContentInfo>(read.get(), &i2d_CMS_ContentInfo);
}

/// With "openssl ts" behind a server of this process.
class TimeStampTest : public SignaturesTest {
  protected:
    using Answering = std::function<std::string(std::string question)>;

    TimeStampTest()
        : m_server([this](ca_test::Connection& connection, const ca_test::Request& request) {
              const Answering answer = m_answer;  // the test may go on before a slow one ends
              connection.Write(ca_test::Ok(answer(request.body)));
          }) {}

    std::string Reply(const std::string& question, const std::string& options = "") {
        const std::string name = "query" + std::to_string(++m_count);
        Put(name, question);
        EXPECT_EQ(0, Run("openssl ts -reply -config " + PkiPath("tsa.cnf") +
                         " -section tsa_config -queryfile " + Scratch(name) + " -signer " +
                         PkiPath("tsa.crt") + " -inkey " + PkiPath("tsa.key") + " -out " +
                         Scratch(name + ".tsr") + ' ' + options + " 2> /dev/null"));
        return TemporaryDir::Read(Scratch(name + ".tsr"));
    }
    /// What OpenSSL would not do: a stamp by a certificate for something else.
    std::string ReplyByBob(const std::string& question) {
        Put("token", Reply(question, "-token_out"));
        EXPECT_EQ(
            0, Run("openssl cms -verify -noverify -inform DER -in " + Scratch("token") + " -out " +
                   Scratch("info") + " 2> /dev/null && openssl cms -sign -binary " +
                   "-nodetach -econtent_type 1.2.840.113549.1.9.16.1.4 -cades -outform DER " +
                   "-in " + Scratch("info") + " -out " + Scratch("token") + " -signer " +
                   PkiPath("bob.crt") + " -inkey " + PkiPath("bob.key")));
        const Octets response = Tlv(
            0x30, {Tlv(0x30, Tlv(0x02, Octets{0})), Text(TemporaryDir::Read(Scratch("token")))});
        return {response.begin(), response.end()};
    }
    /// \param server  members of the server's settings, each after a comma.
    void Use(const std::string& server = "", const std::string& settings = kUnknownIsFine,
             const std::string& others = "") {
        Configure(settings + R"("tsp":{"servers":[)" + others + R"({"url":")" +
                  ca_test::Narrow(m_server.Url()) + '"' + server + "}]},");
    }
    /// The verdicts; what is said of the first certificate is kept.
    std::string Judge(const std::string& message, const std::string& members = "") {
        const Answer answer = Ask(15, message, members);
        m_said = answer.json["signInfo"][0]["VerifyResultEx"]["CertificateVerifyResultString"]
                     .GetString();
        return Verdicts(answer);
    }

    Answering m_answer = [this](const std::string& question) { return Reply(question); };
    std::string m_said;
    std::atomic<int> m_count = 0;
    ca_test::HttpTestServer m_server;
};

std::string In(int days) {
    return R"(,"extInitParams":"VERIFY_TIME=)" + std::to_string(std::time(nullptr) + days * 86400) +
           '"';
}

}  // namespace

TEST_F(TimeStampTest, AsksServersForStamps) {
    // Changes the octet after a pattern of the question.
    const auto replace = [this](const std::string& pattern, std::size_t after) {
        return [=, this](std::string question) {
            const std::size_t at = question.find(pattern);
            EXPECT_NE(at, std::string::npos);
            question[at + pattern.size() + after] ^= 4;
            return Reply(question);
        };
    };
    const Answering good = m_answer;
    const Answering slow = [=](const std::string& question) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1500));
        return good(question);
    };
    std::string first;
    const Answering stale = [&](const std::string& question) {
        first = first.empty() ? Reply(question) : first;
        return first;
    };
    const std::string dead = R"({"url":")" + ca_test::Narrow(ca_test::ClosedPort().Url()) + "\"},";
    struct Case {
        const char* what;
        Answering answer;
        std::string server;
        const char* fault;  // null: a stamp comes
        std::string others = "";
    };
    const Case cases[] = {
        {"good", good, "", nullptr},
        {"the next server", good, "", nullptr, dead},
        {"policy", good, R"(,"policy":"1.2.3.4.5")", nullptr},
        {"unknown policy", good, R"(,"policy":"1.2.3.9")", "refused, status 2"},
        {"other policy", replace(std::string("\x06\x04\x2A\x03\x04", 5), 0),
         R"(,"policy":"1.2.3.4.5")", "its policy is not"},
        {"digest", good, R"(,"digest":"2.16.840.1.101.3.4.2.3")", nullptr},
        {"digest that is not accepted", good, R"(,"digest":"1.3.14.3.2.26")", "refused, status 2"},
        {"imprint", replace(std::string("\x05\x00\x04\x20", 4), 3), "", "it is of something else"},
        {"nonce", stale, "", nullptr},
        {"nonce", stale, "", "its nonce is not"},
        {"no certificate", good, R"(,"requestCertificate":false)", "neither in the message nor"},
        {"purpose", [this](const std::string& question) { return ReplyByBob(question); }, "",
         "may not stamp"},
        {"timeout", slow, R"(,"timeout":200)", "no answer"},
        {"timeout", slow, R"(,"timeout":9000)", nullptr},
        {"no answer", [](const std::string&) { return "none"; }, "", "is no time stamp"},
        {"large", [](const std::string&) { return std::string(2U << 20, 'x'); }, "", "no answer"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        m_answer = c.answer;
        Use(c.server, kUnknownIsFine, c.others);
        const Answer answer = Ask(14, kContent, R"(,"isAttached":true)" + By("bob") + kStamp);
        EXPECT_EQ(answer.Code(), c.fault != nullptr ? 16403U : 0U);
        if (c.fault != nullptr) {
            EXPECT_THAT(answer.text, HasSubstr(c.fault));
            EXPECT_THAT(answer.text, Not(HasSubstr("%s")));
        }
    }
    m_answer = good;
    Put("user/AddressBook/tsa.crt", Pki("tsa.crt"));
    Use(R"(,"requestCertificate":false)");
    EXPECT_NE(StampOf(Sign(By("bob") + kStamp)), "");
    EXPECT_EQ(StampOf(Sign(By("bob"))), "") << "nobody asked for one";
    Configure("");
    EXPECT_THAT(Ask(14, kContent, By("bob") + kStamp).text, HasSubstr("no time-stamp server"));
    const std::string url = ca_test::Narrow(m_server.Url());
    const std::string named = R"(,"extInitParams":"TSP_STAMP=1;TSP_URL=)" + url + '"';
    EXPECT_NE(StampOf(Sign(By("bob") + named)), "");
}

TEST_F(TimeStampTest, StampsEveryKindOfSignature) {
    Use();
    for (const char* const signer : {"alice", "bob", "ed", "pss"}) {
        SCOPED_TRACE(signer);
        const std::string message = Sign(By(signer) + kStamp);
        EXPECT_EQ(Judge(message), "16200/16200 ");
        EXPECT_THAT(m_said, HasSubstr("from the time stamp of CN=tsa,O=Test"));
        const std::string both = Make(28, message, By("bob") + kStamp);
        EXPECT_EQ(Judge(both, In(200)), "16200/16200 16200/16200 ");
    }
    const std::string message = Sign(By("bob") + kStamp);
    EXPECT_TRUE(OpenSslAccepts(message, "-cades"));
    const CmsPtr read = Read(message);
    const ASN1_STRING* const value = CMS_SignerInfo_get0_signature(FirstSigner(read.get()));
    Put("signature", std::string(reinterpret_cast<const char*>(value->data),
                                 static_cast<std::size_t>(value->length)));
    Put("token", StampOf(message));
    EXPECT_EQ(0, Run("openssl ts -verify -token_in -in " + Scratch("token") + " -data " +
                     Scratch("signature") + " -CAfile " + PkiPath("root.crt") + " -untrusted " +
                     PkiPath("ca.crt") + " > " + Scratch("out") + " 2>&1"));
}

TEST_F(TimeStampTest, AGoodStampIsTheTimeOfTheVerdict) {
    Use();
    const std::string stamped = Sign(By("bob") + kStamp);
    const std::string bare = Sign(By("bob"));
    std::string damaged = StampOf(stamped);
    damaged.back() ^= 1;
    struct Case {
        const char* what;
        std::string message;
        std::string settings;
        const char* verdicts;
        const char* said;
    };
    const Case cases[] = {
        {"stamped", stamped, kUnknownIsFine, "16200/16200 ", "from the time stamp of CN=tsa"},
        {"bare", bare, kUnknownIsFine, "16200/16201 ", ", as asked"},
        {"state unknown", stamped, "", "16200/16201 ", "does not count: The revocation status"},
        {"usage", stamped,
         R"("policies":{"timeStamping":{"revocation":"none","extendedKeyUsage":["1.2.3"]}},)",
         "16200/16201 ", "does not count: The certificate"},
        {"other signature", WithStamp(bare, StampOf(stamped)), kUnknownIsFine, "16200/16201 ",
         "of something else"},
        {"damaged", WithStamp(bare, damaged), kUnknownIsFine, "16200/16201 ", "does not count"},
        {"none", WithStamp(bare, "\x30\x01\x05"), kUnknownIsFine, "16200/16201 ", "cannot be read"},
        {"digest", stamped, R"("algorithms":{"digests":["2.16.840.1.101.3.4.2.3"]},)",
         "16109/16201 ", "of something else"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Use("", c.settings);
        EXPECT_EQ(Judge(c.message, In(200)), c.verdicts);
        EXPECT_THAT(m_said, HasSubstr(c.said));
    }
    Use();
    EXPECT_EQ(Judge(stamped, In(-200)), "16200/16201 ");
    EXPECT_THAT(m_said, HasSubstr("of the future"));
}

// The list that revokes the signer is of after the stamp: it says nothing against the signature.
TEST_F(TimeStampTest, OutlivesTheSignersRevocation) {
    Use();
    const std::string stamped = Sign(By("bob") + kStamp);
    const std::string bare = Sign(By("bob"));
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    ASSERT_EQ(0,
              Run("cp -r " + PkiPath("") + " " + Scratch("later") + " && cd " + Scratch("later") +
                  " && cp ca.index index.txt && for step in '-revoke bob.crt' '-gencrl -out "
                  "ca.crl'; do openssl ca -config pki.cnf -cert ca.crt -keyfile ca.key $step 2> "
                  "/dev/null || exit 1; done"));
    Put("user/CA/ca.crl", TemporaryDir::Read(Scratch("later/ca.crl")));
    Put("user/Root/root.crl", Pki("root.crl"));
    Use("", R"("policies":{"signing":{"revocation":"required"}},)");
    EXPECT_EQ(Judge(bare), "16200/16203 ");
    EXPECT_THAT(m_said, HasSubstr(", now\n"));
    EXPECT_EQ(Judge(stamped), "16200/16200 ") << m_said;
}
