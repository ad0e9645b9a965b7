#include "tests/openssl/OpenSslFixture.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <sys/resource.h>
#include <thread>

using testing::HasSubstr;

namespace {

constexpr const char* kTemporary = R"(,"clientId":"ann","storeAddress":{"name":"ZORNATempStore"})";

std::size_t Files(const std::string& directory) {
    const std::filesystem::directory_iterator entries(directory);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

}  // namespace

TEST_F(OpenSslTest, TakesAKeyStoreApart) {
    EXPECT_EQ(Add(Pki("alice.p12")).Code(), 16402U);
    EXPECT_EQ(Add(Pki("alice.p12"), R"(,"extInitParams":"KEY_PASSWORD=other")").Code(), 16268U);
    EXPECT_FALSE(std::filesystem::exists(Store("")));
    for (int i = 0; i < 2; ++i) {  // nothing is written twice
        ASSERT_EQ(Add(Pki("alice.p12"), kPassword).Code(), 0U);
        EXPECT_EQ(Ids(""), Id("alice.crt") + ' ');
        EXPECT_EQ(Ids(Address("ca")), Id("ca.crt") + ' ');
        EXPECT_EQ(Files(Store("MY")), 2U);
    }
    const std::string key = Store("MY/") + Id("alice.crt") + ".key";
    EXPECT_EQ(std::filesystem::status(key).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(0, Run("openssl pkey -inform DER -noout -passin pass:secret -in " + key));
    EXPECT_NE(0, Run("openssl pkey -inform DER -noout -passin pass: -in " + key + " 2> /dev/null"));

    const Answer info = Call(R"({"mode":34,"senderCertId":")" + Id("alice.crt") + "\"}");
    EXPECT_TRUE(info.json["certInfo"]["HasPrivateKey"].GetBool());
    EXPECT_STREQ(info.json["certInfo"]["Description"].GetString(), "O=Test, CN=alice");
    EXPECT_EQ(Call(R"({"mode":34,"senderCertId":"00"})").Code(), 16102U);
}

TEST_F(OpenSslTest, AddsAllOrNothing) {
    Put("user/MY/x", "");  // the directory is there
    const std::string both = Pki("bob.crt") + Pki("bob.key") + Pki("alice.key");
    EXPECT_EQ(Add(both).Code(), 16113U);  // a key without its certificate
    EXPECT_EQ(Files(Store("MY")), 1U);
    const std::string blocked = Store("MY/") + Id("bob.crt");
    Put("user/AddressBook", "a file where a directory should be");
    EXPECT_EQ(Add(Pki("bob.crt") + Pki("bob.key") + Pki("alice.crt")).Code(), 16102U);
    EXPECT_FALSE(std::filesystem::exists(blocked + ".key"));
    EXPECT_FALSE(std::filesystem::exists(blocked + ".cer"));
    EXPECT_EQ(Add(Pki("bob.crt") + Pki("bob.key")).Code(), 0U);
    EXPECT_TRUE(std::filesystem::exists(blocked + ".key"));
}

// A disk that is full after the key was written and before its certificate is.
TEST_F(OpenSslTest, KeepsAStoreThatCannotBeWritten) {
    Put("user/MY/old.crt", Pki("alice.crt"));
    const std::string both = Pki("bob.crt") + Pki("bob.key");
    rlimit former{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &former), 0);
    const auto handler = ::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{250, former.rlim_max};  // octets: between the two
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const unsigned code = Add(both).Code();
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &former), 0);
    ::signal(SIGXFSZ, handler);
    EXPECT_EQ(code, 16102U);
    EXPECT_EQ(Files(Store("MY")), 1U);
    EXPECT_EQ(Ids(""), Id("alice.crt") + ' ');
    EXPECT_EQ(Add(both).Code(), 0U);
    EXPECT_EQ(Files(Store("MY")), 3U);
}

TEST_F(OpenSslTest, GuardsKeysAndTrustFromTheService) {
    struct Case {
        std::string octets;
        std::string address;
        unsigned code;
    };
    const Case cases[] = {
        {Pki("bob.crt"), "", 0},
        {Pki("bob.crt"), Address("ROOT"), 50},
        {Pki("bob.crt"), Address("Other", "sslm"), 50},
        {Pki("bob.crt") + Pki("bob.key"), "", 50},
        {Pki("bob.crt"), Address("../MY"), 16252},
        {Pki("bob.crt"), Address(".MY"), 16252},
        {Pki("bob.crt"), R"(,"storeAddress":{"location":"sslm","address":"srv","name":"MY"})",
         16252},
        {Pki("bob.key"), "", 16113},
        {Pki("ca.crl"), "", 16113},
        {Pki("bob.crt"), kTemporary, 0},
        {Pki("bob.crt") + Pki("bob.key"), kTemporary, 16268},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.address);
        EXPECT_EQ(Add(c.octets, c.address, /*gate=*/false).Code(), c.code);
    }
}

TEST_F(OpenSslTest, TheTemporaryStoreIsTheClients) {
    ASSERT_EQ(Add(Pki("bob.crt") + Pki("bob.crt"), kTemporary).Code(), 0U);
    EXPECT_EQ(Ids(kTemporary), Id("bob.crt") + ' ');
    EXPECT_EQ(Ids(R"(,"clientId":"bob","storeAddress":{"name":"ZORNATempStore"})"), "");
    const Answer found =
        Call(R"({"mode":35,"clientId":"ann","senderCertId":")" + Id("bob.crt") + "\"}");
    EXPECT_EQ(found.Code(), 0U) << found.text;
    EXPECT_EQ(Call(R"({"mode":61,"clientId":"ann"})").Code(), 0U);
    EXPECT_EQ(Ids(kTemporary), "");
    EXPECT_FALSE(std::filesystem::exists(Store("")));
}

TEST_F(OpenSslTest, NoticesWhatChangesInAStore) {
    EXPECT_EQ(Ids(Address("Own")), "");
    Put("user/Own/a.pem", "text around\n" + Pki("bob.crt") + Pki("ca.crt"));
    Put("user/Own/b.txt", "no certificate");
    EXPECT_EQ(Ids(Address("Own")), Id("bob.crt") + ' ' + Id("ca.crt") + ' ');
    Put("user/Own/0.pem", Pki("alice.crt"));
    EXPECT_EQ(Ids(Address("Own")),
              Id("alice.crt") + ' ' + Id("bob.crt") + ' ' + Id("ca.crt") + ' ');
    std::filesystem::remove(Store("Own/a.pem"));
    EXPECT_EQ(Ids(Address("Own")), Id("alice.crt") + ' ');
}

TEST_F(OpenSslTest, UsesKeyStoresThatLieInADirectory) {
    Put("user/MY/alice.p12", Pki("alice.p12"));
    std::filesystem::permissions(Store("MY/alice.p12"), std::filesystem::perms(0600));
    const std::string all = Id("alice.crt") + ' ' + Id("ca.crt") + ' ';
    const std::string other = R"(,"extInitParams":"KEY_PASSWORD=other")";
    const auto sign = [this](const std::string& members) {
        return Call(R"({"mode":14,"fileData":"MTIz")" + members + "}").Code();
    };
    LogRecorder::Take();
    EXPECT_EQ(Ids(""), "") << "all of it is encrypted";
    EXPECT_EQ(Ids(kPassword), all);
    EXPECT_EQ(Ids(other), "");
    const std::string byAlice = R"(,"senderCertId":")" + Id("alice.crt") + '"';
    EXPECT_EQ(sign(byAlice), 16104U);
    EXPECT_EQ(sign(byAlice + other), 16104U);
    EXPECT_EQ(sign(byAlice + kPassword), 0U);
    EXPECT_EQ(sign(kPassword), 0U) << "the only key that there is";
    EXPECT_EQ(Ids(""), "") << "nothing of it is kept";
    std::size_t told = 0;
    for (const LogLine& line : LogRecorder::Take()) {
        told += line.text.find(L"alice.p12") != std::wstring::npos ? 1 : 0;
        EXPECT_THAT(line.text, testing::Not(testing::HasSubstr(L"secret")));
    }
    EXPECT_GE(told, 2U) << "that it is closed, and that a password does not open it";

    // Whose certificates are not encrypted; written in place, when the directory was long at rest.
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    EXPECT_EQ(Ids(""), "");
    ASSERT_EQ(0, Run("openssl pkcs12 -export -certpbe NONE -passout pass:secret -inkey " +
                     PkiPath("alice.key") + " -in " + PkiPath("alice.crt") + " -out " +
                     Store("MY/alice.p12")));
    EXPECT_EQ(Ids(""), Id("alice.crt") + ' ');
    EXPECT_EQ(sign(byAlice), 16402U);
    EXPECT_EQ(sign(byAlice + other), 16268U);
    EXPECT_EQ(sign(byAlice + kPassword), 0U);
    std::filesystem::permissions(Store("MY/alice.p12"), std::filesystem::perms(0644));
    EXPECT_EQ(sign(byAlice + kPassword), 16102U) << "others may read it";
}
