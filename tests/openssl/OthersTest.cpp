// Both ways with GnuTLS' certtool and GnuPG's gpgsm: what is signed here they accept, what they sign is
// accepted here.

#include "tests/openssl/SignaturesFixture.h"

#include <gmock/gmock.h>

namespace {

bool IsThere(const std::string& program) {
    return std::system(("command -v " + program + " > /dev/null").c_str()) == 0;
}

class OthersTest : public SignaturesTest {
  protected:
    static bool Succeeds(const std::string& command) { return Run(command + " 2> /dev/null") == 0; }
};

}  // namespace

TEST_F(OthersTest, CertToolBothWays) {
    if (!IsThere("certtool")) {
        GTEST_SKIP() << "certtool is not there";
    }
    struct Case {
        const char* signer;
        const char* members;
        const char* options;  // of theirs; null: it has no such messages
    };
    const Case cases[] = {
        {"alice", "", ""},
        {"alice", R"(,"extInitParams":"RSA_PADDING=PSS")", "--sign-params=RSA-PSS"},
        {"pss", "", ""},
        {"bob", "", ""},
        {"ed", "", nullptr},  // which it verifies, but does not sign with
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.signer) + c.members);
        const std::string verify = "certtool --p7-verify --inder --load-ca-certificate " +
                                   PkiPath("root.crt") + " --infile " + Scratch("message") + " > " +
                                   Scratch("said");
        Put("message", Sign(By(c.signer) + c.members));
        EXPECT_TRUE(Succeeds(verify)) << TemporaryDir::Read(Scratch("said"));
        Put("message", Make(14, kContent, By(c.signer) + c.members));
        EXPECT_TRUE(Succeeds(verify + " --load-data " + Scratch("content")));
        Put("other", kContent + ".");
        EXPECT_FALSE(Succeeds(verify + " --load-data " + Scratch("other")));
        if (c.options == nullptr) {
            continue;
        }
        const std::string name = PkiPath(c.signer);
        std::string sign = " --outder --hash sha256 --infile " + Scratch("content");
        sign += " --outfile " + Scratch("theirs") + " --load-certificate ";
        sign.append(name).append(".crt --load-privkey ").append(name).append(".key ");
        sign += c.options;
        ASSERT_TRUE(Succeeds("certtool --p7-sign" + sign));
        EXPECT_EQ(Verify(TemporaryDir::Read(Scratch("theirs"))), "16200/16200 ");
        ASSERT_TRUE(Succeeds("certtool --p7-detached-sign" + sign));
        const std::string apart = TemporaryDir::Read(Scratch("theirs"));
        EXPECT_EQ(VerifyApart(apart, kContent), "16200/16200 ");
        EXPECT_EQ(VerifyApart(apart, kContent + "."), "16109/16200 ");
    }
}

TEST_F(OthersTest, GpgsmBothWays) {
    if (!IsThere("gpgsm")) {
        GTEST_SKIP() << "gpgsm is not there";
    }
    const std::string home = Scratch("gnupg");
    std::filesystem::create_directory(home);
    std::filesystem::permissions(home, std::filesystem::perms::owner_all);
    // Revocation would need its daemon, and passwords a window.
    Put("gnupg/gpgsm.conf", "disable-crl-checks\nbatch\nno-tty\npinentry-mode loopback\n");
    Put("gnupg/gpg-agent.conf", "allow-loopback-pinentry\n");
    const std::string gpgsm = "gpgsm --homedir " + home + ' ';
    const std::string fingerprint =
        "openssl x509 -noout -fingerprint -sha1 -in " + PkiPath("root.crt") + " | cut -d= -f2";
    ASSERT_TRUE(Succeeds("echo \"$(" + fingerprint + ") S relax\" > " + home + "/trustlist.txt"));
    ASSERT_TRUE(Succeeds("openssl pkcs12 -export -legacy -passout pass:x -inkey " +
                         PkiPath("alice.key") + " -in " + PkiPath("alice.crt") + " -out " +
                         Scratch("alice.p12")));
    ASSERT_TRUE(Succeeds(gpgsm + "--import " + PkiPath("root.crt") + ' ' + PkiPath("ca.crt")));
    ASSERT_TRUE(
        Succeeds("echo x | " + gpgsm + "--passphrase-fd 0 --import " + Scratch("alice.p12")));
    for (const char* const signer : {"alice", "bob"}) {
        SCOPED_TRACE(signer);
        Put("message", Make(14, kContent, By(signer)));
        EXPECT_TRUE(Succeeds(gpgsm + "--verify " + Scratch("message") + ' ' + Scratch("content")));
        Put("message", Sign(By(signer)));
        EXPECT_TRUE(Succeeds(gpgsm + "--verify " + Scratch("message")));
    }
    for (const char* const form : {"sign", "detach-sign"}) {
        ASSERT_TRUE(Succeeds("echo x | " + gpgsm +
                             "--passphrase-fd 0 --local-user alice --output " + Scratch(form) +
                             " --" + form + ' ' + Scratch("content")));
    }
    EXPECT_EQ(Verify(TemporaryDir::Read(Scratch("sign"))), "16200/16200 ");
    EXPECT_EQ(VerifyApart(TemporaryDir::Read(Scratch("detach-sign")), kContent), "16200/16200 ");
    Run("gpgconf --homedir " + home + " --kill all");
}
