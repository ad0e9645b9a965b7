#include "tests/host/HostProcess.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

/// A user with a key and a trusted root, in the home directory's stores.
class SigningCommandsTest : public HostProcessTest {
  protected:
    SigningCommandsTest() {
        m_directory.Write("QetCryptoSvcPKIConfig.json", R"({"trust":{"useSystemRoots":false}})");
        m_directory.Write("letter", "Dear Ann,\n");
        m_directory.Write("word", "hello");  // Base64, to the module
        m_directory.Write("pin", "secret\n");
        // A host's OpenSSL without any algorithm: the provider's own is another one.
        m_directory.Write("host.cnf",
                          "openssl_conf=a\n[a]\nproviders=b\n[b]\nnull=c\n[c]\nactivate=1\n");
    }
    ScopedVariable m_data{"XDG_DATA_HOME", nullptr};
};

}  // namespace

TEST_F(SigningCommandsTest, SignVerifyAndSayWhy) {
    ASSERT_EQ(RunScript("mkdir pki && " MOD_FOO_MAKE_PKI " pki").exitCode, 0);
    struct Case {
        const char* command;
        int exitCode;
        const char* said;
    };
    const Case cases[] = {
        {"store add pki/alice.p12 --silent", 1, "16402"},
        {"store add pki/alice.p12 pki/none --password-file pin", 2, "No such file"},
        {"store import pki/alice.p12 --password-file pin", 0, ""},
        {"store list", 0, "O=Test, CN=alice\n"},
        {"sign letter --silent", 1, "16402"},
        {"sign letter --attached --password-file pin", 0, "signed: letter.p7m"},
        {"verify letter.p7m", 1, "1. CN=alice,O=Test; valid from "},
        {"verify letter.p7m", 1, "its issuer's certificate was not found"},
        {"store add pki/root.crt --store Root", 0, ""},
        {"store list Root", 0, "  O=Test, CN=root\n"},
        {"verify letter.p7m -o content", 0, "Signature 1: VALID\n  O=Test, CN=alice, "},
        {"verify letter.p7m --at 2001-01-01", 1, "not valid yet"},
        {"verify letter.p7m --at yesterday", 2, "2026-06-30T12:00:00"},
        {"verify letter.p7m --language ru", 0, "Подпись 1: ДЕЙСТВИТЕЛЬНА"},
        {"sign letter --password-file pin --digest SHA-512", 0, "signed: letter.p7s"},
        {"sign letter --password-file pin --digest SHA-384 --add letter.p7s", 0, "letter.p7s"},
        {"verify letter.p7s --content letter", 0, "Signature 2: VALID"},
        {"verify letter.p7s --content pin", 1, "the content is not what was signed"},
        {"verify letter.p7s", 1, "the content that was signed is missing"},
        {"sign word --password-file pin", 0, "signed: word.p7s"},
        {"verify word.p7s --content word", 0, "Signature 1: VALID"},
        {"verify letter", 1, "16308"},
        {"store list --provider foo", 0, "FooCertId"},
        {"store list --provider ../foo", 2, "small letters"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.command);
        const std::string language =
            std::string(c.command).starts_with("verify") && !std::string(c.command).ends_with("ru")
                ? " --language en"
                : "";
        const HostResult result = RunScript(std::string("export HOME=$PWD MOD_FOO_PKI_CONFIG="
                                                        "$PWD/QetCryptoSvcPKIConfig.json "
                                                        "OPENSSL_CONF=$PWD/host.cnf; cmhost ") +
                                            c.command + language);
        EXPECT_EQ(result.exitCode, c.exitCode) << result.err;
        EXPECT_THAT(result.out + result.err, HasSubstr(c.said));
    }
    EXPECT_EQ(TemporaryDir::Read(m_directory.File("content")), "Dear Ann,\n");
}

TEST_F(SigningCommandsTest, RemoveWhatIsOneCertificatesAlone) {
    ASSERT_EQ(RunScript("mkdir pki && " MOD_FOO_MAKE_PKI
                        " pki && cat pki/bob.crt pki/bob.key > bob.pem && "
                        "openssl x509 -req -in pki/bob.csr -CA pki/ca.crt -CAkey pki/ca.key "
                        "-set_serial 5 -out renewed.crt")
                  .exitCode,
              0);
    struct Case {
        const char* script;
        int exitCode;
        const char* said;
    };
    // "id NAME" is the first certificate of that name in MY, "files" counts what is in there.
    const Case cases[] = {
        // Bob's key is not encrypted, so that it is known to be that of his renewed certificate too.
        {"cmhost store add pki/alice.p12 --password-file pin; cmhost store add bob.pem; files", 0,
         "4\n"},
        {"cmhost store remove $(id alice) < pin", 2, "--force"},
        {"cmhost store remove $(id alice) --force; files", 0, "2\n"},
        {"cmhost store remove 00 --force", 1, "not in a file of the store: 00"},
        {"cmhost store remove $(id bob) --store CA --force", 1, "not in a file"},
        {"cmhost store add renewed.crt --store MY; cmhost store remove $(id bob) --force; files", 0,
         "2\n"},
        {"cmhost store list", 0, "K "},  // the key is the other one's, too
        {"cat pki/alice.crt pki/ca.crt > data/ZORNA/stores/MY/two.pem; "
         "cmhost store remove $(id alice) --force",
         1, "two.pem"},
        {"files", 0, "3\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.script);
        const HostResult result = RunScript(
            std::string("export HOME=$PWD XDG_DATA_HOME=$PWD/data MOD_FOO_PKI_CONFIG="
                        "$PWD/QetCryptoSvcPKIConfig.json; "
                        "id() { cmhost store list | grep CN=$1 | head -1 | cut -c3-42; }; "
                        "files() { ls data/ZORNA/stores/MY | wc -l; }; ") +
            c.script);
        EXPECT_EQ(result.exitCode, c.exitCode) << result.err;
        EXPECT_THAT(result.out + result.err, HasSubstr(c.said));
    }
}
