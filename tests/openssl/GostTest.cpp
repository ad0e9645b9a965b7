#include "tests/openssl/SignaturesFixture.h"

#include <gmock/gmock.h>

// Keys of GOST R 34.10-2012, which OpenSSL's engine has.
class GostTest : public SignaturesTest {
  protected:
    GostTest() {
        for (const char* name : {"gost256", "gost512"}) {
            Put(std::string("user/MY/") + name + ".crt", Pki(std::string(name) + ".crt"));
            Put(std::string("user/MY/") + name + ".key", Pki(std::string(name) + ".key"));
            std::filesystem::permissions(Store(std::string("MY/") + name + ".key"),
                                         std::filesystem::perms(0600));
        }
    }
};

TEST_F(GostTest, BothWaysWithOpenSsl) {
    for (const std::string bits : {"256", "512"}) {
        SCOPED_TRACE(bits);
        const std::string name = "gost" + bits;
        const std::string attached = Sign(By(name));
        EXPECT_EQ(Verify(attached), "16200/16200 ");
        std::string theirs;
        {
            const ScopedVariable settings("OPENSSL_CONF", PkiPath("gost.cnf").c_str());
            EXPECT_TRUE(OpenSslAccepts(attached, "-cades")) << TemporaryDir::Read(Scratch("error"));
            theirs = Theirs(name, "-nodetach -md md_gost12_" + bits);
        }
        EXPECT_EQ(Verify(theirs), "16200/16200 ");
        theirs[theirs.find(kContent)] = 'd';
        EXPECT_EQ(Verify(theirs), "16109/16200 ");
        EXPECT_EQ(Make(50, kContent, R"(,"hashAlg":"id-tc26-gost3411-12-)" + bits + '"').size(),
                  std::stoul(bits) / 8);
        const std::string raw = Make(51, kContent, By(name));
        const Answer checked =
            Ask(52, kContent, By(name) + R"(,"sendSignData":")" + Base64(raw) + '"');
        EXPECT_THAT(checked.text, testing::HasSubstr(R"("SignatureVerifyResult":16200)"));
    }
}
