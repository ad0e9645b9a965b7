// What the loaded library says about the envelopes that OpenSSL makes.

#include "tests/module/ModuleLibrary.h"
#include "tests/module/OpenSslObjects.h"

#include <openssl/cms.h>
#include <openssl/ec.h>
#include <openssl/rsa.h>

namespace {

constexpr unsigned kNoData = 16118;
constexpr unsigned kHidden = 16253;
constexpr unsigned kBadData = 16306;

using CmsPtr = std::unique_ptr<CMS_ContentInfo, Freer<CMS_ContentInfo_free>>;

struct Recipient {
    std::string issuer;
    std::string serial;
    std::string algorithm;
    std::string parameters;
    bool isNamed;

    bool operator==(const Recipient&) const = default;
};
void PrintTo(const Recipient& who, std::ostream* out) {
    *out << who.issuer << '|' << who.serial << '|' << who.algorithm << '|' << who.parameters << '|'
         << who.isNamed;
}

class DescribeEnvelopesTest : public LibraryTest {
  protected:
    Answer Describe(const std::string& message) { return CallRaw("\"mode\":41", message); }

    // What the answer says of each recipient; its list of ids must be that of the named ones.
    static std::vector<Recipient> RecipientsOf(const Answer& answer) {
        std::vector<Recipient> recipients;
        std::vector<std::string> ids;
        for (const auto& info : answer.json["certInfos"].GetArray()) {
            const std::string id = info["Id"].GetString();
            EXPECT_EQ(16199U, info["ValidityNumber"].GetUint());
            EXPECT_STREQ("", info["Error"].GetString());
            recipients.push_back({info["Issuer"].GetString(), info["Serial"].GetString(),
                                  info["PublicKeyAlg"].GetString(),
                                  info["PublicKeyParams"].GetString(), !id.empty()});
            if (!id.empty()) {
                EXPECT_EQ(40U, id.size());
                ids.push_back(id);
            }
        }
        std::vector<std::string> listed;
        for (const auto& id : answer.json["certificates"].GetArray()) {
            listed.emplace_back(id.GetString());
        }
        EXPECT_EQ(ids, listed);
        return recipients;
    }

    // An envelope for nobody yet.
    static CmsPtr Envelope() {
        return CmsPtr(CMS_encrypt(nullptr, nullptr, EVP_aes_256_cbc(), CMS_PARTIAL));
    }
    static void AddKey(const CmsPtr& envelope, const std::string& id) {
        auto* key = static_cast<unsigned char*>(OPENSSL_zalloc(16));
        auto* name = static_cast<unsigned char*>(OPENSSL_memdup(id.data(), id.size()));
        ASSERT_NE(nullptr, CMS_add0_recipient_key(envelope.get(), NID_undef, key, 16, name,
                                                  id.size(), nullptr, nullptr, nullptr));
    }
    static void AddPassword(const CmsPtr& envelope) {
        auto* password = reinterpret_cast<unsigned char*>(OPENSSL_strdup("secret"));
        ASSERT_NE(nullptr, CMS_add0_recipient_password(envelope.get(), 1000, NID_undef, NID_undef,
                                                       password, -1, nullptr));
    }
    // The whole message; of definite lengths, or streamed and so of indefinite ones.
    static std::string Finish(const CmsPtr& envelope, bool isStreamed) {
        const BioPtr data(BIO_new_mem_buf("text", -1));
        const BioPtr out(BIO_new(BIO_s_mem()));
        if (isStreamed) {
            i2d_CMS_bio_stream(out.get(), envelope.get(), data.get(), CMS_STREAM);
        } else {
            CMS_final(envelope.get(), data.get(), nullptr, 0);
            i2d_CMS_bio(out.get(), envelope.get());
        }
        char* text = nullptr;
        const long size = BIO_get_mem_data(out.get(), &text);
        return {text, static_cast<std::size_t>(size)};
    }

    const KeyPtr m_rsa{EVP_RSA_gen(2048)};
    const KeyPtr m_curve{EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256")};
};

TEST_F(DescribeEnvelopesTest, NamesRecipientsOfEveryKindInOrder) {
    const X509Ptr anna = Issue("Anna", "Authority, One", m_rsa.get(), m_rsa.get());
    const X509Ptr boris = Issue("Boris", "Two", m_curve.get(), m_rsa.get());
    for (const bool isStreamed : {false, true}) {
        SCOPED_TRACE(isStreamed);
        const CmsPtr envelope = Envelope();
        CMS_add1_recipient_cert(envelope.get(), anna.get(), 0);
        AddKey(envelope, "\xC0\xFF\xEE");
        AddPassword(envelope);
        CMS_add1_recipient_cert(envelope.get(), boris.get(), 0);
        const Answer answer = Describe(Finish(envelope, isStreamed));
        ASSERT_EQ(0U, answer.Code());
        std::vector<Recipient> recipients = RecipientsOf(answer);
        std::ranges::sort(recipients, {}, &Recipient::algorithm);  // a SET has no order
        EXPECT_EQ((std::vector<Recipient>{
                      {"", "c0ffee", "AES-128 key wrap", "", true},
                      {"CN=Two", "07", "ECDH with SHA-1 KDF", "AES-256 key wrap", true},
                      {"", "", "Password-based key wrap", "AES-256 (CBC)", false},
                      {"CN=\"Authority, One\"", "07", "RSA", "", true},
                  }),
                  recipients);
    }
}

TEST_F(DescribeEnvelopesTest, RefusesWhatNamesNobody) {
    const CmsPtr envelope = Envelope();
    AddPassword(envelope);
    EXPECT_EQ(kHidden, Describe(Finish(envelope, /*isStreamed=*/false)).Code());
    const X509Ptr certificate = Issue("A", "A", m_curve.get(), m_curve.get());
    EXPECT_EQ(kBadData, Describe(DerOf(certificate.get())).Code());
    EXPECT_EQ(kNoData, Call("{\"mode\":41}").Code());
}

}  // namespace
