// Each key of the configuration that speaks of trust, algorithms and policies changes a verdict.

#include "tests/openssl/SignaturesFixture.h"

#include <algorithm>

namespace {

const std::string kSystemRoots = "/etc/ssl/certs/ca-certificates.crt";

enum class Act : std::uint8_t {
    kVerify,       // a message of the signer's, as OpenSSL makes it
    kVerifyRaw,    // a signature that was made before
    kSign,         // sign as the signer
    kSignChecked,  // the same with CERT_FULL_CHECK
    kHash,
    kJudge,  // CertValidation of the signer's certificate alone
};

struct Case {
    const char* settings;
    Act act;
    const char* signer;
    const char* params;
    const char* expected;  // code of the answer where it is not 0, else the codes of the verdict
};

class PoliciesTest : public SignaturesTest {
  protected:
    std::string Said(const Case& c, const std::string& message, const std::string& raw) {
        const std::string params = std::string(R"(,"extInitParams":")") + c.params + '"';
        const std::string checked = R"(,"extInitParams":"CERT_FULL_CHECK=1")";
        switch (c.act) {
            case Act::kVerify:
                return Say(Ask(15, message, params));
            case Act::kVerifyRaw:
                return Say(
                    Ask(52, kContent, By(c.signer) + R"(,"sendSignData":")" + Base64(raw) + '"'));
            case Act::kSign:
                return Say(Ask(14, kContent, By(c.signer) + params));
            case Act::kSignChecked:
                return Say(Ask(14, kContent, By(c.signer) + checked));
            case Act::kHash:
                return Say(Ask(50, kContent));
            case Act::kJudge:
                return Say(Ask(25, Pki(std::string(c.signer) + ".crt"), params));
        }
        return {};
    }

    void Expect(const Case& c) {
        SCOPED_TRACE(std::string(c.settings) + ' ' + c.signer + ' ' + c.params);
        Configure("");
        const bool isVerified = c.act == Act::kVerify;
        const std::string message =
            isVerified ? Theirs(c.signer, "-nodetach -md sha256") : std::string();
        const std::string raw =
            c.act == Act::kVerifyRaw ? Make(51, kContent, By(c.signer)) : std::string();
        Configure(c.settings);
        EXPECT_EQ(Said(c, message, raw), c.expected);
    }

  private:
    static std::string Say(const Answer& answer) {
        if (answer.Code() != 0) {
            return std::to_string(answer.Code());
        }
        if (answer.json.HasMember("verifyResult")) {
            const auto& codes = answer.json["verifyResult"];
            return std::to_string(codes["SignatureVerifyResult"].GetUint()) + '/' +
                   std::to_string(codes["CertificateVerifyResult"].GetUint());
        }
        const std::string verdicts =
            answer.json.HasMember("signInfo") ? Verdicts(answer) : std::string("0 ");
        return verdicts.substr(0, verdicts.size() - 1);
    }
};

}  // namespace

TEST_F(PoliciesTest, ForAlgorithms) {
    constexpr const char* kOtherDigest = R"("algorithms":{"digests":["2.16.840.1.101.3.4.2.3"]},)";
    constexpr const char* kRsaOnly = R"("algorithms":{"signatures":["1.2.840.113549.1.1.11"]},)";
    constexpr const char* kPssOnly = R"("algorithms":{"signatures":["1.2.840.113549.1.1.10"]},)";
    const Case cases[] = {
        {kOtherDigest, Act::kVerify, "bob", "", "16109/16200"},
        {kOtherDigest, Act::kVerifyRaw, "bob", "", "16268"},
        {kOtherDigest, Act::kSign, "bob", "", "16268"},
        {kOtherDigest, Act::kHash, "bob", "", "16268"},
        {kRsaOnly, Act::kVerify, "bob", "", "16109/16204"},
        {kRsaOnly, Act::kVerify, "alice", "", "16200/16204"},  // its issuer signs with ECDSA
        {kRsaOnly, Act::kVerifyRaw, "bob", "", "16268"},
        {kRsaOnly, Act::kSign, "bob", "", "16268"},
        {kRsaOnly, Act::kSign, "alice", "", "0"},
        {kRsaOnly, Act::kSign, "alice", "RSA_PADDING=PSS", "16268"},
        {kPssOnly, Act::kSign, "alice", "RSA_PADDING=PSS", "0"},
        {kPssOnly, Act::kSign, "ed", "", "16268"},
        {kRsaOnly, Act::kJudge, "bob", "", "16199/16204"},
        {R"("algorithms":{"minEcBits":300},)", Act::kVerify, "bob", "", "16200/16204"},
        {R"("algorithms":{"minEcBits":300},)", Act::kSign, "bob", "", "16268"},
        {R"("algorithms":{"minRsaBits":3000},)", Act::kVerify, "alice", "", "16200/16204"},
        {R"("algorithms":{"minRsaBits":3000},)", Act::kSign, "alice", "", "16268"},
    };
    std::ranges::for_each(cases, [this](const Case& c) { Expect(c); });
}

TEST_F(PoliciesTest, ForSigning) {
    Put("user/CA/ca.crl", Pki("ca.crl"));
    constexpr const char* kAnyUsage = R"("policies":{"signing":{"keyUsage":[]}},)";
    constexpr const char* kAgreement = R"("policies":{"signing":{"keyUsage":["keyAgreement"]}},)";
    constexpr const char* kPurpose = R"("policies":{"signing":{"extendedKeyUsage":["1.2.3"]}},)";
    constexpr const char* kNamed = R"("policies":{"signing":{"certificatePolicies":["1.2.3"]}},)";
    constexpr const char* kRequired = R"("policies":{"signing":{"revocation":"required"}},)";
    constexpr const char* kNone = R"("policies":{"signing":{"revocation":"none"}},)";
    constexpr const char* kAnyTime = R"("policies":{"signing":{"checkTime":false}},)";
    constexpr const char* kSelf = R"("policies":{"signing":{"allowSelfSigned":true}},)";
    const Case cases[] = {
        {"", Act::kVerify, "revoked", "", "16200/16203"},
        {"", Act::kVerify, "bob", "", "16200/16200"},
        {R"("crl":{"enabled":false},)", Act::kVerify, "revoked", "", "16200/16200"},
        {kNone, Act::kVerify, "revoked", "", "16200/16200"},
        {kNone, Act::kSignChecked, "revoked", "", "0"},
        {kRequired, Act::kVerify, "bob", "", "16200/16207"},  // nothing tells of the authority
        {kRequired, Act::kSignChecked, "bob", "", "16207"},
        {"", Act::kVerify, "expired", "", "16200/16201"},
        {kAnyTime, Act::kVerify, "expired", "", "16200/16200"},
        {kAnyTime, Act::kSign, "expired", "", "0"},
        {"", Act::kVerify, "encipher", "", "16200/16205"},
        {kAnyUsage, Act::kVerify, "encipher", "", "16200/16200"},
        {kAnyUsage, Act::kSign, "encipher", "", "0"},
        {kAgreement, Act::kVerify, "bob", "", "16200/16205"},
        {kAgreement, Act::kSign, "bob", "", "16205"},
        {kPurpose, Act::kVerify, "bob", "", "16200/16205"},
        {kPurpose, Act::kSign, "bob", "", "16205"},
        {kNamed, Act::kVerify, "bob", "", "16200/16218"},
        {kNamed, Act::kSignChecked, "bob", "", "16218"},
        {kNamed, Act::kVerify, "bob", "POLICY_SET=1.2.4", "16268"},
        {"", Act::kVerify, "self", "", "16200/16206"},
        {kSelf, Act::kVerify, "self", "", "16200/16200"},
        {kSelf, Act::kSignChecked, "self", "", "0"},
    };
    std::ranges::for_each(cases, [this](const Case& c) { Expect(c); });
}

// The other usages are for those who ask: CertValidation judges by any of them.
TEST_F(PoliciesTest, ForOtherUsages) {
    Put("user/CA/ca.crl", Pki("ca.crl"));
    struct Row {
        const char* usage;
        const char* keys;
        const char* signer;
        const char* expected;
    };
    constexpr const char* kNoPurpose = R"("extendedKeyUsage":[],"revocation":"ifKnown")";
    const Row rows[] = {
        {"other", "", "bob", "16268"},
        {"encryption", "", "encipher", "16199/16200"},
        {"encryption", R"("keyUsage":["keyEncipherment"])", "bob", "16199/16205"},
        {"encryption", R"("checkTime":false)", "expired", "16199/16200"},
        {"encryption", R"("revocation":"none")", "revoked", "16199/16200"},
        {"encryption", R"("allowSelfSigned":true)", "self", "16199/16200"},
        {"encryption", R"("certificatePolicies":["1.2.3"])", "bob", "16199/16218"},
        {"timeStamping", "", "bob", "16199/16207"},
        {"timeStamping", R"("revocation":"none")", "bob", "16199/16205"},
        {"timeStamping", kNoPurpose, "bob", "16199/16200"},
        {"server", "", "bob", "16199/16205"},
        {"server", kNoPurpose, "bob", "16199/16200"},
        {"server", R"("extendedKeyUsage":["1.3.6.1.5.5.7.3.8"])", "bob", "16199/16205"},
    };
    for (const Row& row : rows) {
        const std::string settings =
            std::string(R"("policies":{")") + row.usage + R"(":{)" + row.keys + "}},";
        const std::string params = std::string("CERT_USAGE=") + row.usage;
        Expect({settings.c_str(), Act::kJudge, row.signer, params.c_str(), row.expected});
    }
}

TEST_F(PoliciesTest, ForTrust) {
    const std::string root =
        R"("trust":{"useSystemRoots":false,"stores":[")" + PkiPath("root.crt") + R"("]},)";
    const std::string helper =
        R"("trust":{"useSystemRoots":false,"intermediates":[")" + PkiPath("ca.crt") + R"("]},)";
    const std::string wrong =
        R"("trust":{"useSystemRoots":false,"intermediates":[")" + PkiPath("root.crt") + R"("]},)";
    const auto expect = [this](const std::string& settings, const char* expected) {
        Expect({settings.c_str(), Act::kJudge, "bob", "", expected});
    };
    expect(R"("trust":{"useSystemRoots":false,"maxPathLength":1},)", "16199/16200");
    expect(R"("trust":{"useSystemRoots":false,"maxPathLength":0},)", "16199/16211");
    std::filesystem::remove(Store("Root/root.crt"));
    expect("", "16199/16220");
    expect(wrong, "16199/16220");
    expect(root, "16199/16200");
    Put("user/Root/root.crt", Pki("root.crt"));
    std::filesystem::remove(Store("CA/ca.crt"));
    expect("", "16199/16220");
    expect(helper, "16199/16200");

    if (!std::filesystem::exists(kSystemRoots)) {
        GTEST_SKIP() << "no roots of this machine";
    }
    std::string system = TemporaryDir::Read(kSystemRoots);
    system.resize(system.find("-----END CERTIFICATE-----") + 26);
    const auto judge = [&](const char* isUsed) {
        Configure(std::string(R"("policies":{"signing":{"keyUsage":[]}},"algorithms":)"
                              R"({"signatures":["1.2.840.113549.1.1.5","1.2.840.113549.1.1.11",)"
                              R"("1.2.840.113549.1.1.12","1.2.840.10045.4.3.3"]},"trust":)"
                              R"({"useSystemRoots":)") +
                  isUsed + "},");
        return Ask(25, system).json["verifyResult"]["CertificateVerifyResult"].GetUint();
    };
    EXPECT_EQ(judge("true"), 16200U);
    EXPECT_EQ(judge("false"), 16206U);
}
