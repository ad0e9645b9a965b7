#include "providers/openssl/Countersignature.h"

#include "asn1/Elements.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/SignedAttributes.h"

#include <openssl/rsa.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace {

using Encoding = std::vector<unsigned char>;
using PssPtr = ca::Owned<RSA_PSS_PARAMS, &RSA_PSS_PARAMS_free>;

constexpr int kOnceOnly = -3;            // an attribute that stands there twice says nothing
constexpr long kDefaultSaltLength = 20;  // RFC 4055, 3.1

// version 3, no digest algorithms, content of type "data" that stands apart (RFC 5652, 5.1)
constexpr unsigned char kEmptyMessage[] = {0x02, 0x01, 0x03, 0x31, 0x00, 0x30, 0x0B, 0x06, 0x09,
                                           0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x07, 0x01};
constexpr unsigned char kSignedData[] = {0x06, 0x09, 0x2A, 0x86, 0x48, 0x86,
                                         0xF7, 0x0D, 0x01, 0x07, 0x02};

// The octets of `first` and `second` in an element around them.
Encoding Wrap(int tag, int tagClass, std::span<const unsigned char> first,
              std::span<const unsigned char> second) {
    const int size = static_cast<int>(first.size() + second.size());
    Encoding whole(static_cast<std::size_t>(ASN1_object_size(/*constructed=*/1, size, tag)));
    unsigned char* at = whole.data();
    ASN1_put_object(&at, /*constructed=*/1, size, tag, tagClass);
    at = std::ranges::copy(first, at).out;
    std::ranges::copy(second, at);
    return whole;
}

const char* NameOf(const X509_ALGOR* digest, const char* otherwise) {
    return digest != nullptr ? OBJ_nid2sn(OBJ_obj2nid(digest->algorithm)) : otherwise;
}

// Takes over what the signature says of itself (RFC 4055, 3.1): digest, mask and salt.
bool SetPss(EVP_PKEY_CTX* context, const X509_ALGOR* algorithm, const char* digest) {
    const PssPtr pss(static_cast<RSA_PSS_PARAMS*>(
        ASN1_TYPE_unpack_sequence(ASN1_ITEM_rptr(RSA_PSS_PARAMS), algorithm->parameter)));
    // Another digest in it than beside it would be the choice of who forges (RFC 4056, 3).
    if (pss == nullptr || std::string(NameOf(pss->hashAlgorithm, SN_sha1)) != digest) {
        return false;
    }
    const X509_ALGOR* mask = nullptr;
    using AlgorithmPtr = ca::Owned<X509_ALGOR, &X509_ALGOR_free>;
    AlgorithmPtr held;
    if (pss->maskGenAlgorithm != nullptr) {
        held.reset(static_cast<X509_ALGOR*>(ASN1_TYPE_unpack_sequence(
            ASN1_ITEM_rptr(X509_ALGOR), pss->maskGenAlgorithm->parameter)));
        mask = held.get();
        if (OBJ_obj2nid(pss->maskGenAlgorithm->algorithm) != NID_mgf1 || mask == nullptr) {
            return false;
        }
    }
    const long salt =
        pss->saltLength != nullptr ? ASN1_INTEGER_get(pss->saltLength) : kDefaultSaltLength;
    return salt >= 0 && salt <= std::numeric_limits<int>::max() &&
           EVP_PKEY_CTX_set_rsa_padding(context, RSA_PKCS1_PSS_PADDING) > 0 &&
           EVP_PKEY_CTX_set_rsa_mgf1_md_name(context, NameOf(mask, SN_sha1), nullptr) > 0 &&
           EVP_PKEY_CTX_set_rsa_pss_saltlen(context, static_cast<int>(salt)) > 0;
}

}  // namespace

namespace ca {

CCountersignature::CCountersignature(const COpenSslLibrary& library,
                                     std::span<const unsigned char> signer)
    : m_library(library), m_signer(nullptr) {
    const Encoding signers = Wrap(V_ASN1_SET, V_ASN1_UNIVERSAL, signer, {});
    const Encoding signedData = Wrap(V_ASN1_SEQUENCE, V_ASN1_UNIVERSAL, kEmptyMessage, signers);
    const Encoding content = Wrap(0, V_ASN1_CONTEXT_SPECIFIC, signedData, {});
    const Encoding whole = Wrap(V_ASN1_SEQUENCE, V_ASN1_UNIVERSAL, kSignedData, content);
    CMS_ContentInfo* fresh =
        Require(CMS_ContentInfo_new_ex(library.Context(), nullptr), kErrExecution);
    const unsigned char* at = whole.data();
    m_message.reset(d2i_CMS_ContentInfo(&fresh, &at, static_cast<long>(whole.size())));
    STACK_OF(CMS_SignerInfo)* const read =
        m_message != nullptr ? CMS_get0_SignerInfos(m_message.get()) : nullptr;
    if (read == nullptr || sk_CMS_SignerInfo_num(read) != 1) {
        throw Exception(kErrNoSignedData);
    }
    m_signer = sk_CMS_SignerInfo_value(read, 0);
}

bool CCountersignature::HasDigestOf(std::span<const unsigned char> value) const {
    if (CMS_signed_get_attr_count(m_signer) <= 0) {
        return true;
    }
    const bool hasType = CMS_signed_get_attr_by_NID(m_signer, NID_pkcs9_contentType, -1) >= 0;
    const auto* const type = static_cast<const ASN1_OBJECT*>(CMS_signed_get0_data_by_OBJ(
        m_signer, OBJ_nid2obj(NID_pkcs9_contentType), kOnceOnly, V_ASN1_OBJECT));
    if (hasType && (type == nullptr || OBJ_obj2nid(type) != NID_pkcs7_data)) {
        return false;
    }
    const auto* const said = static_cast<const ASN1_OCTET_STRING*>(CMS_signed_get0_data_by_OBJ(
        m_signer, OBJ_nid2obj(NID_pkcs9_messageDigest), kOnceOnly, V_ASN1_OCTET_STRING));
    if (said == nullptr) {
        return false;
    }
    X509_ALGOR* digest = nullptr;
    CMS_SignerInfo_get0_algs(m_signer, nullptr, nullptr, &digest, nullptr);
    const DigestPtr known = m_library.FindDigest(u16u8(Dotted(digest->algorithm)));
    unsigned char made[EVP_MAX_MD_SIZE];
    unsigned size = 0;
    Require(EVP_Digest(value.data(), value.size(), made, &size, known.get(), nullptr),
            kErrExecution);
    return AsText({made, size}) == AsText({ASN1_STRING_get0_data(said),
                                           static_cast<std::size_t>(ASN1_STRING_length(said))});
}

bool CCountersignature::IsSignedBy(EVP_PKEY* key, std::span<const unsigned char> value) const {
    const Encoding attributes = EncodedAttributes(m_signer);
    const std::span<const unsigned char> octets =
        attributes.empty() ? value : std::span<const unsigned char>(attributes);
    if (SignsWholeMessage(key)) {
        return VerifyWhole(m_signer, key, octets);
    }
    X509_ALGOR* digest = nullptr;
    X509_ALGOR* algorithm = nullptr;
    CMS_SignerInfo_get0_algs(m_signer, nullptr, nullptr, &digest, &algorithm);
    const char* const name = NameOf(digest, "");
    const bool isPss = OBJ_obj2nid(algorithm->algorithm) == NID_rsassaPss;
    const DigestContextPtr context(Require(EVP_MD_CTX_new(), kErrExecution));
    EVP_PKEY_CTX* parameters = nullptr;
    const ASN1_OCTET_STRING* const signature = CMS_SignerInfo_get0_signature(m_signer);
    return EVP_DigestVerifyInit_ex(context.get(), &parameters, name, m_library.Context(), nullptr,
                                   key, nullptr) == 1 &&
           (!isPss || SetPss(parameters, algorithm, name)) &&
           EVP_DigestVerify(context.get(), ASN1_STRING_get0_data(signature),
                            static_cast<std::size_t>(ASN1_STRING_length(signature)), octets.data(),
                            octets.size()) == 1;
}

}  // namespace ca
