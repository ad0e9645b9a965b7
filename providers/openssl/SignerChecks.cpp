#include "providers/openssl/SignerChecks.h"

#include "providers/openssl/Algorithms.h"
#include "providers/openssl/GostEngine.h"
#include "providers/openssl/ProviderWords.h"

#include <openssl/ess.h>

#include <algorithm>

namespace {

// A message without attributes, whose content type is not "data", is not signed as such
// (RFC 5652, 5.3); attributes may stand there once only.
constexpr int kOnceOnly = -3;

template <class T, auto read>
T* ReadAttribute(const CMS_SignerInfo* signer, int nid) {
    const auto* const value = static_cast<const ASN1_STRING*>(
        CMS_signed_get0_data_by_OBJ(signer, OBJ_nid2obj(nid), kOnceOnly, V_ASN1_SEQUENCE));
    if (value == nullptr) {
        return nullptr;
    }
    const unsigned char* at = ASN1_STRING_get0_data(value);
    return read(nullptr, &at, ASN1_STRING_length(value));
}

}  // namespace

namespace ca {

bool IsTypeRight(const CMS_SignerInfo* signer, const ASN1_OBJECT* contentType) {
    const void* const found = CMS_signed_get0_data_by_OBJ(
        signer, OBJ_nid2obj(NID_pkcs9_contentType), kOnceOnly, V_ASN1_OBJECT);
    return found != nullptr && OBJ_cmp(static_cast<const ASN1_OBJECT*>(found), contentType) == 0;
}

std::wstring SignatureOid(const X509_ALGOR* digest, const X509_ALGOR* signature,
                          const EVP_PKEY* key) {
    const bool isPss = OBJ_obj2nid(signature->algorithm) == NID_rsassaPss;
    return SignatureOf(key, OBJ_obj2nid(digest->algorithm), isPss);
}

bool FitsKey(const X509_ALGOR* signature, const EVP_PKEY* key) {
    const int named = OBJ_obj2nid(signature->algorithm);
    if (named == NID_rsassaPss) {
        return EVP_PKEY_is_a(key, "RSA") == 1 || EVP_PKEY_is_a(key, "RSA-PSS") == 1;
    }
    int family = named;  // one may name the family alone (RFC 3370, 3.2)
    int digest = NID_undef;
    OBJ_find_sigid_algs(named, &digest, &family);
    return family == EVP_PKEY_get_id(key);
}

bool IsCertificateMeant(const CMS_SignerInfo* signer, X509* certificate,
                        const STACK_OF(X509) * others, const std::vector<X509Ptr>& chain) {
    using FirstPtr = Owned<ESS_SIGNING_CERT, &ESS_SIGNING_CERT_free>;
    using SecondPtr = Owned<ESS_SIGNING_CERT_V2, &ESS_SIGNING_CERT_V2_free>;
    const bool hasFirst =
        CMS_signed_get_attr_by_NID(signer, NID_id_smime_aa_signingCertificate, -1) >= 0;
    const bool hasSecond =
        CMS_signed_get_attr_by_NID(signer, NID_id_smime_aa_signingCertificateV2, -1) >= 0;
    const FirstPtr first(ReadAttribute<ESS_SIGNING_CERT, &d2i_ESS_SIGNING_CERT>(
        signer, NID_id_smime_aa_signingCertificate));
    const SecondPtr second(ReadAttribute<ESS_SIGNING_CERT_V2, &d2i_ESS_SIGNING_CERT_V2>(
        signer, NID_id_smime_aa_signingCertificateV2));
    if ((hasFirst && first == nullptr) || (hasSecond && second == nullptr)) {
        return false;  // one that cannot be read says nothing good
    }
    // The first one that it names is the signer's; the others, issuers, are to be among these.
    const CertificatesPtr known(sk_X509_new_null());
    X509_up_ref(certificate);
    sk_X509_push(known.get(), certificate);
    const auto add = [&](X509* each) {
        X509_up_ref(each);
        sk_X509_push(known.get(), each);
    };
    for (int i = 0; i < sk_X509_num(others); ++i) {
        add(sk_X509_value(others, i));
    }
    std::ranges::for_each(chain, add, &X509Ptr::get);
    return OSSL_ESS_check_signing_certs(first.get(), second.get(), known.get(),
                                        /*require_signing_cert=*/0) > 0;
}

const wchar_t* WhyNoKey(const X509* certificate) {
    X509_ALGOR* algorithm = nullptr;
    X509_PUBKEY_get0_param(nullptr, nullptr, nullptr, &algorithm,
                           X509_get_X509_PUBKEY(certificate));
    const bool isGost = CGostEngine::IsNamedIn(
        {OBJ_get0_data(algorithm->algorithm), OBJ_length(algorithm->algorithm)});
    return Say(isGost && !CGostEngine::Load() ? Words::kGostMissing : Words::kKeyUnknown);
}

}  // namespace ca
