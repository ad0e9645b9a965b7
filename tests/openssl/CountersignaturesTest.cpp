#include "tests/openssl/SignaturesFixture.h"

#include <openssl/cms.h>

namespace {

using CmsPtr = std::unique_ptr<CMS_ContentInfo, decltype(&CMS_ContentInfo_free)>;

/// "signature/certificate" of each signature, those on it in brackets.
std::string Tree(const rapidjson::Value& signatures) {
    std::string text;
    for (const auto& each : signatures.GetArray()) {
        const auto& codes = each["VerifyResultEx"];
        text += std::to_string(codes["SignatureVerifyResult"].GetUint()) + '/' +
                std::to_string(codes["CertificateVerifyResult"].GetUint());
        if (each.HasMember("CoSigners") && !each["CoSigners"].Empty()) {
            text += '(' + Tree(each["CoSigners"]) + ')';
        }
        text += ' ';
    }
    return text.substr(0, text.size() - 1);
}

class CountersignaturesTest : public SignaturesTest {
  protected:
    static std::string Over(int index) { return R"(,"signerIndex":)" + std::to_string(index); }
    std::string Countersign(const std::string& message, const std::string& members) {
        return Make(28, message, members + Over(0));
    }
    std::string TreeOf(const std::string& message) {
        const Answer answer = Ask(15, message);
        EXPECT_EQ(answer.Code(), 0U) << answer.text;
        return answer.Code() == 0 ? Tree(answer.json["signInfo"]) : "";
    }
    /// The first SignerInfo of a message: the last member of its SignedData begins with it.
    static std::string SignerOf(const std::string& message) {
        const auto* at = reinterpret_cast<const unsigned char*>(message.data());
        const unsigned char* const end = at + message.size();
        const auto enter = [&] {
            long length = 0;
            int tag = 0;
            int kind = 0;
            ASN1_get_object(&at, &length, &tag, &kind, end - at);
            return length;
        };
        enter();        // ContentInfo
        at += enter();  // its type
        enter();        // [0]
        enter();        // SignedData
        for (long length = enter(); at + length != end; length = enter()) {
            at += length;
        }
        const unsigned char* const signer = at;
        at += enter();
        return {reinterpret_cast<const char*>(signer), static_cast<std::size_t>(at - signer)};
    }
    /// A message whose only signer is the one on the first signature of `message`.
    static std::string Inner(const std::string& message) {
        const CmsPtr read = Read(message);
        const void* const value = CMS_unsigned_get0_data_by_OBJ(
            sk_CMS_SignerInfo_value(CMS_get0_SignerInfos(read.get()), 0),
            OBJ_nid2obj(NID_pkcs9_countersignature), -1, V_ASN1_SEQUENCE);
        const auto* const signer = static_cast<const ASN1_STRING*>(value);
        const std::string octets(reinterpret_cast<const char*>(ASN1_STRING_get0_data(signer)),
                                 static_cast<std::size_t>(ASN1_STRING_length(signer)));
        const std::string head("\2\1\3\x31\0\x30\x0B\6\x09\x2A\x86\x48\x86\xF7\x0D\1\7\1", 18);
        const std::string type("\6\x09\x2A\x86\x48\x86\xF7\x0D\1\7\2", 11);
        return Wrap(0x30, type + Wrap(0xA0, Wrap(0x30, head + Wrap(0x31, octets))));
    }
    /// The message with one more signature on its first one.
    static std::string With(const std::string& message, const std::string& signer) {
        const CmsPtr read = Read(message);
        CMS_unsigned_add1_attr_by_NID(sk_CMS_SignerInfo_value(CMS_get0_SignerInfos(read.get()), 0),
                                      NID_pkcs9_countersignature, V_ASN1_SEQUENCE, signer.data(),
                                      static_cast<int>(signer.size()));
        unsigned char* octets = nullptr;
        const int size = i2d_CMS_ContentInfo(read.get(), &octets);
        std::string text(reinterpret_cast<char*>(octets), static_cast<std::size_t>(size));
        OPENSSL_free(octets);
        return text;
    }

  private:
    static CmsPtr Read(const std::string& message) {
        const auto* at = reinterpret_cast<const unsigned char*>(message.data());
        return {d2i_CMS_ContentInfo(nullptr, &at, static_cast<long>(message.size())),
                &CMS_ContentInfo_free};
    }
    static std::string Wrap(int tag, const std::string& content) {
        const std::size_t size = content.size();
        return std::string{static_cast<char>(tag), '\x82', static_cast<char>(size >> 8U),
                           static_cast<char>(size)} +
               content;
    }
};

}  // namespace

TEST_F(CountersignaturesTest, SignSignatures) {
    const std::string message = Theirs("bob", "-nodetach -md sha256");
    for (const char* const members : {"alice", "bob", "ed", "pss"}) {
        SCOPED_TRACE(members);
        const std::string both = Countersign(message, By(members));
        EXPECT_EQ(TreeOf(both), "16200/16200(16200/16200)");
        EXPECT_TRUE(OpenSslAccepts(both, ""));
        const std::string twice = Countersign(both, By("alice"));
        EXPECT_EQ(TreeOf(twice), "16200/16200(16200/16200 16200/16200)");
    }
    const std::string pss = By("alice") + R"(,"extInitParams":"RSA_PADDING=PSS")";
    EXPECT_EQ(TreeOf(Countersign(message, pss)), "16200/16200(16200/16200)");
    EXPECT_EQ(TreeOf(Countersign(Theirs("bob", "-md sha256"), By("alice"))),
              "16199/16199(16200/16200)")
        << "only the content is missing";
    EXPECT_EQ(Ask(28, message, By("alice") + Over(1)).Code(), 16268U);
    EXPECT_EQ(Ask(28, message, By("encipher") + Over(0)).Code(), 16205U);
    const std::string second = Make(28, message, By("alice"));
    EXPECT_EQ(TreeOf(Make(28, second, By("ed") + Over(1))), "16200/16200 16200/16200(16200/16200)");
}

TEST_F(CountersignaturesTest, AreJudgedByThemselves) {
    const std::string message = Theirs("bob", "-nodetach -md sha256");
    const std::string both = Countersign(message, By("alice") + R"(,"certInclude":1)");
    const std::string inner = Inner(both);
    // On a signature, on another one, and on one that it was not made for.
    const std::string nested = SignerOf(Countersign(inner, By("ed")));
    EXPECT_EQ(TreeOf(With(message, nested)), "16200/16200(16200/16200(16200/16200))");
    EXPECT_EQ(TreeOf(With(Theirs("alice", "-nodetach"), nested)),
              "16200/16200(16109/16200(16200/16200))");
    EXPECT_EQ(TreeOf(With(message, SignerOf(Sign(By("alice"))))), "16200/16200(16109/16200)");
    EXPECT_EQ(TreeOf(With(message, std::string("0\0", 2))), "16200/16200(16199/16199)")
        << "no SignerInfo";

    std::filesystem::remove(Store("CA/ca.crt"));
    std::filesystem::remove(Store("MY/alice.crt"));
    EXPECT_EQ(TreeOf(both), "16200/16220(16200/16220)");
    EXPECT_EQ(TreeOf(With(message, SignerOf(inner))), "16200/16220(16199/16199)")
        << "whose certificate is nowhere";
}

TEST_F(CountersignaturesTest, NoChangedOctetVerifies) {
    std::string message = Countersign(Theirs("bob", "-nodetach -nocerts -md sha256"),
                                      By("ed") + R"(,"certInclude":0)");
    const std::string original = TreeOf(message);
    ASSERT_EQ(original, "16200/16200(16200/16200)");
    const std::string inner = SignerOf(Inner(message));
    const std::size_t from = message.find(inner);
    ASSERT_NE(from, std::string::npos);
    for (std::size_t i = from; i < from + inner.size(); ++i) {
        message[i] = static_cast<char>(message[i] ^ 1);
        const Answer answer = Ask(15, message);
        message[i] = static_cast<char>(message[i] ^ 1);
        const bool isSame = answer.Code() == 0 && Tree(answer.json["signInfo"]) == original;
        EXPECT_TRUE(!isSame || i - from < 8) << i - from << ": only the version may differ";
    }
}

TEST_F(CountersignaturesTest, AddSignerIsForTheMessageThatIsThere) {
    const std::string content = kContent;
    const std::string first = Make(14, content, By("alice"));
    const std::string beside = R"(,"addSigner":true,"sendSignData":")" + Base64(first) + '"';
    const std::string both = Make(14, content, By("bob") + beside);
    EXPECT_EQ(VerifyApart(both, content), "16200/16200 16200/16200 ");
    const std::string byHash = Make(56, Make(50, content), By("bob") + beside);
    EXPECT_EQ(VerifyApart(byHash, content), "16200/16200 16200/16200 ");
    const std::string whole = Make(14, Sign(By("alice")), By("bob") + R"(,"addSigner":true)");
    EXPECT_EQ(Verify(whole), "16200/16200 16200/16200 ");
    EXPECT_EQ(Ask(14, content, By("bob") + R"(,"addSigner":true)").Code(), 16308U);
    EXPECT_EQ(Ask(56, content, By("bob") + R"(,"addSigner":true)").Code(), 16118U);
}

TEST_F(CountersignaturesTest, TellTheIssuersOfTheirSigners) {
    const std::string message = Countersign(Sign(By("bob")), By("alice"));
    const Answer answer = Ask(15, message);
    const auto issuers = [](const rapidjson::Value& signature) {
        std::string text;
        const rapidjson::Value* at = &signature["SignCert"];
        for (; at->HasMember("IssuerCert"); at = &(*at)["IssuerCert"]) {
            text += std::string((*at)["IssuerCert"]["Id"].GetString()) + ' ';
        }
        return text;
    };
    const auto& outer = answer.json["signInfo"][0];
    const std::string expected = Id("ca.crt") + ' ' + Id("root.crt") + ' ';
    EXPECT_EQ(issuers(outer), expected);
    EXPECT_EQ(issuers(outer["CoSigners"][0]), expected);
}
