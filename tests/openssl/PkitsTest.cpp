#include "tests/openssl/OpenSslFixture.h"

#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace {

const std::string kFolder = MOD_FOO_TEST_DATA "/pkits/";

/// The suite's certificates and lists as PEM, by name.
std::map<std::string, std::string> Objects() {
    std::map<std::string, std::string> objects;
    std::ifstream file(kFolder + "objects.txt");
    std::string name;
    std::string base64;
    while (file >> name >> base64) {
        const std::string label = name.ends_with(".crl") ? "X509 CRL" : "CERTIFICATE";
        objects[name] =
            "-----BEGIN " + label + "-----\n" + base64 + "\n-----END " + label + "-----\n";
    }
    return objects;
}

std::string Parameters(const rapidjson::Value& c) {
    std::string params;
    const auto add = [&](const char* key, const char* name) {
        params += c[key].GetBool() ? std::string(name) + "=1;" : "";
    };
    add("explicitPolicy", "POLICY_EXPLICIT");
    add("policyMappingInhibited", "POLICY_INHIBIT_MAPPING");
    add("anyPolicyInhibited", "POLICY_INHIBIT_ANY");
    if (c["policies"].IsArray()) {
        std::string set;
        for (const auto& policy : c["policies"].GetArray()) {
            set += (set.empty() ? "" : ",") + std::string(policy.GetString());
        }
        params += "POLICY_SET=" + set + ';';
    }
    return params;
}

}  // namespace

TEST_F(OpenSslTest, JudgesThePathsOfPkits) {
    const std::map<std::string, std::string> objects = Objects();
    rapidjson::Document cases;
    cases.Parse(TemporaryDir::Read(kFolder + "cases.json").c_str());
    ASSERT_EQ(cases.Size(), 249U);
    // SHA-256 with RSA, and what 4.1.4 to 4.1.6 need.
    Configure(R"("policies":{"signing":{"revocation":"required","keyUsage":[]}},)"
              R"("algorithms":{"signatures":["1.2.840.113549.1.1.11","1.2.840.10040.4.3"]},)");
    Put("user/Root/anchor.crt", objects.at("TrustAnchorRootCertificate.crt"));
    const std::set<std::string> differing = {"4.1.5", "4.14.30"};  // see the data's README
    for (const auto& c : cases.GetArray()) {
        std::string payload = objects.at(c["end"].GetString());
        for (const char* key : {"certs", "crls"}) {
            for (const auto& name : c[key].GetArray()) {
                payload += objects.at(name.GetString());
            }
        }
        const Answer answer =
            CallRaw(R"("mode":25,"extInitParams":")" + Parameters(c) + '"', payload);
        ASSERT_EQ(answer.Code(), 0U) << c["id"].GetString();
        const auto& result = answer.json["verifyResult"];
        const bool isValid = result["CertificateVerifyResult"].GetUint() == 16200;
        const bool isExpected = c["valid"].GetBool() != differing.contains(c["id"].GetString());
        EXPECT_EQ(isValid, isExpected)
            << c["id"].GetString() << ' ' << c["name"].GetString() << ": "
            << result["CertificateVerifyResultString"].GetString();
    }
}
