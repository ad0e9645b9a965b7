#include "records/text/AlgorithmText.h"

#include "asn1/Oid.h"
#include "common/Lazy.h"
#include "records/text/ParametersText.h"

namespace {

using ca::Octets;

// Digests by the signature or key algorithm they belong to.
struct DigestRow {
    ca::COid algorithm;
    ca::COid digest;
};
constexpr DigestRow kDigests[] = {
    {"sha256WithRSAEncryption", "id-sha256"},
    {"ecdsa-with-SHA256", "id-sha256"},
    {"sha384WithRSAEncryption", "id-sha384"},
    {"ecdsa-with-SHA384", "id-sha384"},
    {"sha512WithRSAEncryption", "id-sha512"},
    {"ecdsa-with-SHA512", "id-sha512"},
    {"sha1WithRSAEncryption", "id-sha1"},
    {"id-tc26-signwithdigest-gost3410-12-256", "id-tc26-gost3411-12-256"},
    {"id-tc26-signwithdigest-gost3410-12-512", "id-tc26-gost3411-12-512"},
    {"id-GostR3411-94-with-GostR3410-2001", "id-GostR3411-94"},
    {"id-GostR3411-94-with-GostR3410-94", "id-GostR3411-94"},
    {"id-tc26-gost3410-12-256", "id-tc26-gost3411-12-256"},
    {"id-tc26-gost3410-12-512", "id-tc26-gost3411-12-512"},
    {"id-GostR3410-2001", "id-GostR3411-94"},
    {"id-GostR3410-94", "id-GostR3411-94"},
    {"sha224WithRSAEncryption", "id-sha224"},
    {"sha512-224WithRSAEncryption", "id-sha512-224"},
    {"sha512-256WithRSAEncryption", "id-sha512-256"},
    {"ecdsa-with-SHA1", "id-sha1"},
    {"ecdsa-with-SHA224", "id-sha224"},
    {"id-dsa-with-sha1", "id-sha1"},
    {"id-dsa-with-sha256", "id-sha256"},
    {"id-Ed25519", "id-sha512"},
    {"id-Ed448", "id-shake256"},
    {"md5WithRSAEncryption", "md5"},
    {"md5WithRSA", "md5"},
    {"md2WithRSAEncryption", "md2"},
    {"md4WithRSAEncryption", "md4"},
    {"ecdsa-plain-SHA1", "id-sha1"},
    {"ecdsa-plain-SHA224", "id-sha224"},
    {"dsaWithSHA", "sha"},
    {"dsaWithSHA1", "id-sha1"},
    {"id-dsa-with-sha224", "id-sha224"},
    {"id-dsa-with-sha384", "id-sha384"},
    {"id-dsa-with-sha512", "id-sha512"},
    {"id-dsa-with-sha3-224", "id-sha3-224"},
    {"id-dsa-with-sha3-256", "id-sha3-256"},
    {"id-dsa-with-sha3-384", "id-sha3-384"},
    {"id-dsa-with-sha3-512", "id-sha3-512"},
    {"sha1WithRSA", "id-sha1"},
    {"rsaSignatureWithripemd160", "ripemd160"},
    {"ecdsa-plain-SHA256", "id-sha256"},
    {"ecdsa-plain-SHA384", "id-sha384"},
    {"ecdsa-plain-SHA512", "id-sha512"},
    {"id-ecdsa-with-sha3-224", "id-sha3-224"},
    {"id-ecdsa-with-sha3-256", "id-sha3-256"},
    {"id-ecdsa-with-sha3-384", "id-sha3-384"},
    {"id-ecdsa-with-sha3-512", "id-sha3-512"},
    {"id-rsassa-pkcs1-v1_5-with-sha3-224", "id-sha3-224"},
    {"id-rsassa-pkcs1-v1_5-with-sha3-256", "id-sha3-256"},
    {"id-rsassa-pkcs1-v1_5-with-sha3-384", "id-sha3-384"},
    {"id-rsassa-pkcs1-v1_5-with-sha3-512", "id-sha3-512"},
    {"id-RSASSA-PSS-SHAKE128", "id-shake128"},
    {"id-RSASSA-PSS-SHAKE256", "id-shake256"},
    {"id-ecdsa-with-shake128", "id-shake128"},
    {"id-ecdsa-with-shake256", "id-shake256"},
    {"id-hash-ml-dsa-44-with-sha512", "id-sha512"},
    {"SM2-with-SM3", "sm3"},
    {"RSA-SM3", "sm3"},
    {"bign-with-hbelt", "hbelt"},
    {"dstu4145le", "dstu34311"},
    {"gost34311-95-with-gost34310-2004", "gost34311-95"},
    {"gost34310-2004", "gost34311-95"},
    {"gost3411-2015-512-with-gost34310-2015-512", "gost3411-2015-512"},
};

// RFC 8017, A.2.3: the digest is in the parameters, so that no row of the table above can tell it.
constexpr ca::COid kPss = "id-RSASSA-PSS";

std::wstring NameOf(const ca::OidInfo* type, Octets oid) {
    if (type != nullptr) {
        return type->Name();
    }
    return oid.empty() ? std::wstring() : ca::OidText(oid);
}

// Looked up once a signature of a message: a table, built at the first one.
ca::CLazy<ca::COidMap<const ca::OidInfo*>> digestsByAlgorithm([] {
    ca::COidMap<const ca::OidInfo*> digests;
    for (const DigestRow& row : kDigests) {
        digests[*row.algorithm] = row.digest;
    }
    return digests;
});

}  // namespace

namespace ca {

const OidInfo* DigestOf(const OidInfo& algorithm) {
    return digestsByAlgorithm.Get().Find(&algorithm);
}

SignatureAlgorithmForms DescribeSignatureAlgorithm(const CAsn1AlgorithmView& algorithm) {
    const Octets oid = algorithm.Algorithm();
    const OidInfo* type = FindOid(oid);
    SignatureAlgorithmForms forms;
    forms.text = NameOf(type, oid);
    if (type == kPss) {
        ParametersForms params = DescribeParameters(algorithm);
        forms.text += params.text.empty() ? L"" : L", " + params.text;
        forms.digest = std::move(params.digest);
        forms.error = std::move(params.error);
        // Without parameters all of them have their defaults, the digest SHA-1 (RFC 8017, A.2.3).
        if (params.text.empty()) {
            forms.digest = COid("id-sha1")->Name();
        }
    } else if (const OidInfo* digest = type != nullptr ? DigestOf(*type) : nullptr) {
        forms.digest = digest->Name();
    }
    return forms;
}

std::wstring AlgorithmText(const CAsn1AlgorithmView& algorithm) {
    const Octets oid = algorithm.Algorithm();
    const OidInfo* type = FindOid(oid);
    return type == kPss ? DescribeSignatureAlgorithm(algorithm).text : NameOf(type, oid);
}

std::wstring SignerAlgorithmText(const CAsn1AlgorithmView& signature,
                                 const CAsn1AlgorithmView& digest) {
    const OidInfo* info = FindOid(signature.Algorithm());
    // Many signers name the algorithm of the key, where the digest stands elsewhere (RFC 5652,
    // 5.3).
    const bool isKeyAlone = info != nullptr && info->kind == OidKind::kKey;
    if (!isKeyAlone || digest.Algorithm().empty()) {
        return AlgorithmText(signature);
    }
    return info->Name() + std::wstring(L" ") + SetZORNAMessage(kMsgWith) + L' ' +
           OidName(digest.Algorithm());
}

}  // namespace ca
