#include "providers/openssl/SignedAttributes.h"

#include "asn1/Elements.h"
#include "common/ErrorCodes.h"
#include "providers/openssl/OpenSslLibrary.h"

#include <openssl/rsa.h>

#include <algorithm>
#include <ctime>

namespace {

using Encoding = std::vector<unsigned char>;
using TimePtr = ca::Owned<ASN1_TIME, &ASN1_TIME_free>;

}  // namespace

namespace ca {

std::vector<unsigned char> EncodedAttributes(const CMS_SignerInfo* signer) {
    std::vector<Encoding> attributes;
    std::size_t size = 0;
    for (int i = 0; i < CMS_signed_get_attr_count(signer); ++i) {
        unsigned char* octets = nullptr;
        const int length =
            Require(i2d_X509_ATTRIBUTE(CMS_signed_get_attr(signer, i), &octets), kErrExecution);
        const OctetsPtr owner(octets);
        attributes.emplace_back(octets, octets + length);
        size += attributes.back().size();
    }
    if (attributes.empty()) {
        return {};
    }
    // X.690, 11.6: as octet strings.
    std::ranges::sort(attributes, {}, [](const Encoding& each) { return AsText(each); });
    Encoding set(static_cast<std::size_t>(
        ASN1_object_size(/*constructed=*/1, static_cast<int>(size), V_ASN1_SET)));
    unsigned char* at = set.data();
    ASN1_put_object(&at, /*constructed=*/1, static_cast<int>(size), V_ASN1_SET, V_ASN1_UNIVERSAL);
    for (const Encoding& attribute : attributes) {
        at = std::ranges::copy(attribute, at).out;
    }
    return set;
}

void AddContentAttributes(CMS_SignerInfo* signer, const ASN1_OBJECT* contentType,
                          std::span<const unsigned char> digest) {
    Require(
        CMS_signed_add1_attr_by_NID(signer, NID_pkcs9_contentType, V_ASN1_OBJECT, contentType, -1),
        kErrExecution);
    AddDigestAttribute(signer, digest);
}

void AddDigestAttribute(CMS_SignerInfo* signer, std::span<const unsigned char> digest) {
    Require(CMS_signed_add1_attr_by_NID(signer, NID_pkcs9_messageDigest, V_ASN1_OCTET_STRING,
                                        digest.data(), static_cast<int>(digest.size())),
            kErrExecution);
}

void SignAttributes(CMS_SignerInfo* signer, EVP_PKEY* key, const EVP_MD* digest, bool isPss) {
    const TimePtr now(Require(ASN1_TIME_set(nullptr, std::time(nullptr)), kErrExecution));
    Require(CMS_signed_add1_attr_by_NID(signer, NID_pkcs9_signingTime, now->type, now.get(), -1),
            kErrExecution);
    const Encoding attributes = EncodedAttributes(signer);
    const DigestContextPtr context(Require(EVP_MD_CTX_new(), kErrExecution));
    EVP_PKEY_CTX* parameters = nullptr;
    Require(EVP_DigestSignInit(context.get(), &parameters, digest, nullptr, key), kErrExecution);
    if (isPss) {
        Require(EVP_PKEY_CTX_set_rsa_padding(parameters, RSA_PKCS1_PSS_PADDING), kErrExecution);
        Require(EVP_PKEY_CTX_set_rsa_pss_saltlen(parameters, RSA_PSS_SALTLEN_DIGEST),
                kErrExecution);
    }
    std::size_t size = 0;
    Require(EVP_DigestSign(context.get(), nullptr, &size, attributes.data(), attributes.size()),
            kErrExecution);
    Encoding signature(size);
    Require(EVP_DigestSign(context.get(), signature.data(), &size, attributes.data(),
                           attributes.size()),
            kErrExecution);
    Require(ASN1_STRING_set(CMS_SignerInfo_get0_signature(signer), signature.data(),
                            static_cast<int>(size)),
            kErrExecution);
    if (digest != nullptr) {
        return;  // the algorithm was said when the signer was added
    }
    X509_ALGOR* algorithm = nullptr;
    CMS_SignerInfo_get0_algs(signer, nullptr, nullptr, nullptr, &algorithm);
    Require(X509_ALGOR_set0(algorithm, OBJ_nid2obj(EVP_PKEY_get_id(key)), V_ASN1_UNDEF, nullptr),
            kErrExecution);
}

bool VerifyWhole(CMS_SignerInfo* signer, EVP_PKEY* key, std::span<const unsigned char> octets) {
    const DigestContextPtr context(Require(EVP_MD_CTX_new(), kErrExecution));
    const ASN1_OCTET_STRING* const signature = CMS_SignerInfo_get0_signature(signer);
    return EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key) == 1 &&
           EVP_DigestVerify(context.get(), ASN1_STRING_get0_data(signature),
                            static_cast<std::size_t>(ASN1_STRING_length(signature)), octets.data(),
                            octets.size()) == 1;
}

}  // namespace ca
