#include "providers/openssl/SignedMessage.h"

#include "asn1/Elements.h"
#include "asn1/views/MessageViews.h"
#include "common/DecimalText.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/HeapPtr.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/ProviderWords.h"
#include "providers/openssl/SignedAttributes.h"
#include "records/fill/SignInfoFill.h"

#include <openssl/core_names.h>
#include <openssl/params.h>
#include <openssl/rsa.h>

#include <limits>

namespace {

// The signature is made by Finish() or CMS_final(); capabilities of a mail reader mean nothing here.
constexpr unsigned kSignerFlags =
    CMS_PARTIAL | CMS_BINARY | CMS_NOSMIMECAP | CMS_NOCERTS | CMS_CADES;

bool IsPss(const ca::Signer& signer) {
    return signer.isPss || EVP_PKEY_is_a(signer.key.get(), "RSA-PSS") == 1;
}

// The algorithm with its parameters, which OpenSSL writes by itself only where it has the content.
void SetAlgorithm(CMS_SignerInfo* signer) {
    using AlgorithmPtr = ca::Owned<X509_ALGOR, &X509_ALGOR_free>;
    unsigned char octets[256];
    OSSL_PARAM wanted[] = {
        OSSL_PARAM_construct_octet_string(OSSL_SIGNATURE_PARAM_ALGORITHM_ID, octets, sizeof octets),
        OSSL_PARAM_construct_end()};
    ca::Require(EVP_PKEY_CTX_get_params(CMS_SignerInfo_get0_pkey_ctx(signer), wanted),
                ca::kErrExecution);
    const unsigned char* at = octets;
    const AlgorithmPtr made(ca::Require(
        d2i_X509_ALGOR(nullptr, &at, static_cast<long>(wanted[0].return_size)), ca::kErrExecution));
    X509_ALGOR* algorithm = nullptr;
    CMS_SignerInfo_get0_algs(signer, nullptr, nullptr, nullptr, &algorithm);
    ca::Require(X509_ALGOR_copy(algorithm, made.get()), ca::kErrExecution);
}

}  // namespace

namespace ca {

std::vector<unsigned char> DigestOf(const EVP_MD* digest, std::span<const unsigned char> octets) {
    std::vector<unsigned char> value(EVP_MAX_MD_SIZE);
    unsigned size = 0;
    Require(EVP_Digest(octets.data(), octets.size(), value.data(), &size, digest, nullptr),
            kErrExecution);
    value.resize(size);
    return value;
}

CSignedMessage::CSignedMessage(const COpenSslLibrary& library)
    : m_message(
          Require(CMS_sign_ex(nullptr, nullptr, nullptr, nullptr,
                              CMS_PARTIAL | CMS_BINARY | CMS_DETACHED, library.Context(), nullptr),
                  kErrExecution)) {}

CSignedMessage::CSignedMessage(const COpenSslLibrary& library,
                               std::span<const unsigned char> message) {
    CMS_ContentInfo* fresh =
        Require(CMS_ContentInfo_new_ex(library.Context(), nullptr), kErrExecution);
    const unsigned char* at = message.data();
    m_message.reset(d2i_CMS_ContentInfo(&fresh, &at, static_cast<long>(message.size())));
    if (m_message == nullptr) {
        ThrowOpenSsl(kErrNoSignedData);
    }
    if (OBJ_obj2nid(CMS_get0_type(m_message.get())) != NID_pkcs7_signed) {
        throw Exception(kErrNoSignedData);
    }
}

CSignedMessage::~CSignedMessage() {
    if (m_held != nullptr) {
        m_held->data = nullptr;
        m_held->length = 0;
    }
}

CMS_SignerInfo* CSignedMessage::NewSigner(const Signer& signer) {
    const bool isPss = IsPss(signer);
    CMS_SignerInfo* const added =
        Require(CMS_add1_signer(m_message.get(), signer.certificate.get(), signer.key.get(),
                                signer.digest.get(), kSignerFlags | (isPss ? CMS_KEY_PARAM : 0U)),
                kErrExecution);
    if (isPss) {
        EVP_PKEY_CTX* const context = CMS_SignerInfo_get0_pkey_ctx(added);
        Require(EVP_PKEY_CTX_set_rsa_padding(context, RSA_PKCS1_PSS_PADDING), kErrExecution);
        Require(EVP_PKEY_CTX_set_rsa_pss_saltlen(context, RSA_PSS_SALTLEN_DIGEST), kErrExecution);
    }
    m_latest = added;
    return added;
}

void CSignedMessage::AddCompanions(const Signer& signer) {
    for (const X509Ptr& each : signer.companions) {
        // One that is there already is no fault.
        CMS_add1_cert(m_message.get(), each.get());
    }
}

void CSignedMessage::SignContent(const Signer& signer, std::span<const unsigned char> content,
                                 bool isAttached) {
    if (content.size() > std::numeric_limits<int>::max()) {
        throw Exception(kErrParameters);
    }
    if (isAttached) {
        CMS_set_detached(m_message.get(), 0);
        m_held = *Require(CMS_get0_content(m_message.get()), kErrExecution);
        // A view, not a copy: the destructor takes it out before OpenSSL would free it.
        m_held->data = const_cast<unsigned char*>(content.data());
        m_held->length = static_cast<int>(content.size());
        m_held->flags &= ~ASN1_STRING_FLAG_CONT;  // nothing streams into it any more
    }
    Finish(NewSigner(signer), signer, DigestOf(signer.digest.get(), content));
}

void CSignedMessage::AddDigest(const Signer& signer, std::span<const unsigned char> digest) {
    if (digest.size() != static_cast<std::size_t>(EVP_MD_get_size(signer.digest.get()))) {
        throw Exception(kErrParameters);
    }
    Finish(NewSigner(signer), signer, digest);
}

void CSignedMessage::AddSignature(const Signer& signer,
                                  std::optional<std::span<const unsigned char>> content) {
    ASN1_OCTET_STRING** const held = CMS_get0_content(m_message.get());
    if (held != nullptr && *held != nullptr) {
        content = {ASN1_STRING_get0_data(*held),
                   static_cast<std::size_t>(ASN1_STRING_length(*held))};
    }
    if (!content) {
        throw Exception(kErrNeedMoreData);
    }
    Finish(NewSigner(signer), signer, DigestOf(signer.digest.get(), *content));
}

// Made as the signer of a message of its own, from where its encoding is taken.
void CSignedMessage::Countersign(const COpenSslLibrary& library, const Signer& signer,
                                 std::uint32_t index) {
    STACK_OF(CMS_SignerInfo)* const signers = CMS_get0_SignerInfos(m_message.get());
    if (signers == nullptr || index >= static_cast<std::uint32_t>(sk_CMS_SignerInfo_num(signers))) {
        throw Exception(kErrParameters, Say(Words::kNoSuchSignature) + DecimalText(index));
    }
    CMS_SignerInfo* const signedOne = sk_CMS_SignerInfo_value(signers, static_cast<int>(index));
    const ASN1_OCTET_STRING* const value = CMS_SignerInfo_get0_signature(signedOne);
    CSignedMessage own(library);
    CMS_SignerInfo* const added = own.NewSigner(signer);
    AddDigestAttribute(added, DigestOf(signer.digest.get(),
                                       {ASN1_STRING_get0_data(value),
                                        static_cast<std::size_t>(ASN1_STRING_length(value))}));
    const bool isWhole = SignsWholeMessage(signer.key.get());
    const bool isPss = IsPss(signer);
    if (!isWhole && CMS_SignerInfo_get0_pkey_ctx(added) != nullptr) {
        SetAlgorithm(added);
    }
    SignAttributes(added, signer.key.get(), isWhole ? nullptr : signer.digest.get(), isPss);
    FileData encoded;
    own.Write(encoded);
    const CAsn1SignedDataView written(
        FirstElement(FindSignedData({encoded.data(), encoded.size()})));
    const CAsn1Element made = FirstElement(written.SignerInfos().content);
    Require(CMS_unsigned_add1_attr_by_NID(signedOne, NID_pkcs9_countersignature, V_ASN1_SEQUENCE,
                                          made.raw.data(), static_cast<int>(made.raw.size())),
            kErrExecution);
    AddCompanions(signer);
}

void CSignedMessage::Finish(CMS_SignerInfo* added, const Signer& signer,
                            std::span<const unsigned char> digest) {
    AddCompanions(signer);
    AddContentAttributes(added, CMS_get0_eContentType(m_message.get()), digest);
    if (SignsWholeMessage(signer.key.get())) {
        SignAttributes(added, signer.key.get());
    } else {
        if (CMS_SignerInfo_get0_pkey_ctx(added) != nullptr) {
            SetAlgorithm(added);
        }
        Require(CMS_SignerInfo_sign(added), kErrExecution);
    }
}

std::span<const unsigned char> CSignedMessage::LatestSignature() const {
    return OctetsOf(CMS_SignerInfo_get0_signature(m_latest));
}

void CSignedMessage::AddTimeStamp(std::span<const unsigned char> token) {
    Require(CMS_unsigned_add1_attr_by_NID(m_latest, NID_id_smime_aa_timeStampToken, V_ASN1_SEQUENCE,
                                          token.data(), static_cast<int>(token.size())),
            kErrExecution);
}

void CSignedMessage::Write(FileData& encoded) const {
    const int size = Require(i2d_CMS_ContentInfo(m_message.get(), nullptr), kErrExecution);
    BytePtr block(
        static_cast<unsigned char*>(CCRTAllocator::Allocate(static_cast<std::size_t>(size))));
    unsigned char* at = block.Get();
    Require(i2d_CMS_ContentInfo(m_message.get(), &at), kErrExecution);
    encoded.Adopt(std::move(block), static_cast<std::uint32_t>(size));
}

}  // namespace ca
