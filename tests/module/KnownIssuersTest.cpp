// Issuers that a record gets from where the PKI configuration says.

#include "tests/module/ModuleLibrary.h"
#include "tests/module/OpenSslObjects.h"

#include <sys/stat.h>

namespace {

KeyPtr MakeKey() {
    return KeyPtr(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
}

// The key identifiers of both sides, as OpenSSL derives them from the keys.
void AddKeyIdentifiers(X509* certificate, X509* issuer, EVP_PKEY* issuerKey) {
    X509V3_CTX context;
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    const std::pair<int, const char*> values[] = {{NID_subject_key_identifier, "hash"},
                                                  {NID_authority_key_identifier, "keyid:always"}};
    for (const auto& [nid, value] : values) {
        X509_EXTENSION* const extension = X509V3_EXT_conf_nid(nullptr, &context, nid, value);
        X509_add_ext(certificate, extension, -1);
        X509_EXTENSION_free(extension);
    }
    X509_sign(certificate, issuerKey, EVP_sha256());
}

class KnownIssuersTest : public LibraryTest {
  protected:
    // The configuration of these places, which lie in the test's own directory.
    void UsePlaces(const std::string& intermediates, const std::string& stores) {
        SetPkiConfig(R"({"trust":{"intermediates":[")" + m_files.File(intermediates) +
                     R"("],"stores":["/nowhere",")" + m_files.File(stores) + "\"]}}");
        Init();
    }
    // The subjects from the certificate to the last issuer, joined.
    std::string PathOf(X509* certificate) {
        const Answer answer = CallRaw("\"mode\":22", DerOf(certificate));
        EXPECT_EQ(answer.Code(), 0U);
        std::string path;
        const rapidjson::Value* at = &answer.json["certInfo"];
        for (;;) {
            path += (*at)["Description"].GetString();
            EXPECT_EQ((*at)["ValidityNumber"].GetUint(), 16199U) << "nothing is verified";
            const auto issuer = at->FindMember("IssuerCert");
            if (issuer == at->MemberEnd()) {
                return path;
            }
            path += ' ';
            at = &issuer->value;
        }
    }

    TemporaryDir m_files;
    const KeyPtr m_key = MakeKey();
    const KeyPtr m_otherKey = MakeKey();
};

}  // namespace

TEST_F(KnownIssuersTest, NestsTheIssuersThatLieInThePlaces) {
    const X509Ptr root = Issue("root", "root", m_key.get(), m_key.get());
    const X509Ptr middle = Issue("middle", "root", m_key.get(), m_key.get());
    const X509Ptr last = Issue("last", "middle", m_key.get(), m_key.get());
    const X509Ptr leaf = Issue("leaf", "last", m_key.get(), m_key.get());
    m_files.Write("cas/a.pem", "Of the office\n" + PemOf(middle.get()) + PemOf(last.get()));
    m_files.Write("cas/b", std::string("\x30\x84\xFF\xFF", 4));
    m_files.Write("cas/c.pem", "-----BEGIN CERTIFICATE-----\n!\n-----END CERTIFICATE-----\n");
    m_files.Write("cas/sub/root.der", "not looked at");
    m_files.Write("cas/large", std::string((1U << 20) + 1, '0'));
    ASSERT_EQ(0, ::mkfifo(m_files.File("cas/pipe").c_str(), 0600));
    m_files.Write("root.der", DerOf(root.get()));

    EXPECT_EQ(PathOf(leaf.get()), "CN=leaf");
    UsePlaces("cas", "root.der");
    EXPECT_EQ(PathOf(leaf.get()), "CN=leaf CN=last CN=middle CN=root");
    EXPECT_EQ(PathOf(root.get()), "CN=root");
    UsePlaces("cas", "none");
    EXPECT_EQ(PathOf(leaf.get()), "CN=leaf CN=last CN=middle");
    UsePlaces("root.der", "cas/b");
    EXPECT_EQ(PathOf(leaf.get()), "CN=leaf");
}

TEST_F(KnownIssuersTest, TakesNoIssuerThatMightBeAnother) {
    // The authority has changed its key and kept its name.
    const X509Ptr before = Issue("ca", "ca", m_key.get(), m_key.get());
    const X509Ptr after = Issue("ca", "root", m_otherKey.get(), m_key.get());
    AddKeyIdentifiers(before.get(), before.get(), m_key.get());
    AddKeyIdentifiers(after.get(), before.get(), m_key.get());
    m_files.Write("cas/after.der", DerOf(after.get()));
    m_files.Write("cas/before.der", DerOf(before.get()));
    m_files.Write("cas/again.pem", PemOf(before.get()));
    UsePlaces("cas", "cas");

    const X509Ptr unmarked = Issue("leaf", "ca", m_key.get(), m_key.get());
    EXPECT_EQ(PathOf(unmarked.get()), "CN=leaf");
    for (X509* const issuer : {before.get(), after.get()}) {
        const X509Ptr marked = Issue("leaf", "ca", m_key.get(), m_key.get());
        AddKeyIdentifiers(marked.get(), issuer, m_key.get());
        EXPECT_EQ(PathOf(marked.get()), "CN=leaf CN=ca");
    }
}

TEST_F(KnownIssuersTest, EndsWhereIssuersCertifyEachOther) {
    m_files.Write("cas/a", DerOf(Issue("a", "b", m_key.get(), m_key.get()).get()));
    m_files.Write("cas/b", DerOf(Issue("b", "a", m_key.get(), m_key.get()).get()));
    for (int i = 0; i < 40; ++i) {
        const X509Ptr next =
            Issue("c" + std::to_string(i), "c" + std::to_string(i + 1), m_key.get(), m_key.get());
        m_files.Write("cas/c" + std::to_string(i), DerOf(next.get()));
    }
    UsePlaces("cas", "none");
    EXPECT_EQ(PathOf(Issue("leaf", "a", m_key.get(), m_key.get()).get()), "CN=leaf CN=a CN=b");
    const std::string longest = PathOf(Issue("leaf", "c0", m_key.get(), m_key.get()).get());
    EXPECT_TRUE(longest.ends_with(" CN=c15")) << longest;
}
