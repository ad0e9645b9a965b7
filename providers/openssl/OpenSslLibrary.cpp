#include "providers/openssl/OpenSslLibrary.h"

#include "asn1/views/MessageViews.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "providers/openssl/GostEngine.h"

#include <openssl/cmserr.h>
#include <openssl/err.h>
#include <openssl/evperr.h>
#include <openssl/pkcs12err.h>
#include <openssl/proverr.h>
#include <openssl/x509err.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <mutex>
#include <new>

namespace {

constexpr std::size_t kRecentCertificates = 256;
constexpr std::size_t kMaxRecentCertificate = 8192;  // octets; larger ones are parsed each time
constexpr std::size_t kRecentKeys = 16;

struct FaultRow {
    int library;
    int reason;
    std::uint32_t code;
};

constexpr FaultRow kFaults[] = {
#define CA_OPENSSL_FAULT(library, reason, code) {library, reason, ca::code},
#include "providers/openssl/OpenSslFaultTable.inc"
#undef CA_OPENSSL_FAULT
};

}  // namespace

namespace ca {

// Deliberate: nothing is initialised by OPENSSL_init_crypto(). Its options are the process's, once
// for all: to go without a configuration file here would leave the host without its own.
COpenSslLibrary::COpenSslLibrary()
    : m_context(OSSL_LIB_CTX_new()),
      m_default(nullptr),
      m_legacy(nullptr),
      m_gost(nullptr),
      m_certificates(kRecentCertificates),
      m_keys(kRecentKeys) {
    const CErrorScope scope;
    if (m_context == nullptr) {
        throw std::bad_alloc();
    }
    m_default = OSSL_PROVIDER_load(m_context, "default");
    if (m_default == nullptr) {
        OSSL_LIB_CTX_free(m_context);
        throw Exception(kErrPkcs11Load);
    }
    // Old PKCS #12 files are encrypted with RC2 and the like; where it is not installed they stay
    // closed, which is told when one is opened.
    m_legacy = OSSL_PROVIDER_load(m_context, "legacy");
}

COpenSslLibrary::~COpenSslLibrary() {
    m_certificates.Clear();  // they use the context
    m_keys.Clear();
    if (m_legacy != nullptr) {
        OSSL_PROVIDER_unload(m_legacy);  // its own context goes with it, not with ours
    }
    if (m_gost != nullptr) {
        OSSL_PROVIDER_unload(m_gost);
    }
    OSSL_PROVIDER_unload(m_default);
    OSSL_LIB_CTX_free(m_context);
}

bool COpenSslLibrary::PrepareFor(std::span<const unsigned char> octets) const {
    return !CGostEngine::IsNamedIn(octets) || LoadGost();
}

bool COpenSslLibrary::LoadGost() const {
    const CErrorScope scope;
    if (!CGostEngine::Load()) {
        return false;
    }
    const std::lock_guard lock(m_mutex);
    if (m_gost == nullptr) {
        m_gost = OSSL_PROVIDER_load(m_context, "gostprov");  // comes with the engine
    }
    return m_gost != nullptr;
}

X509Ptr COpenSslLibrary::ReadCertificate(std::span<const unsigned char> der) const {
    const std::string source(der.begin(), der.end());
    if (X509Ptr known = m_certificates.Find(source)) {
        return known;
    }
    PrepareFor(der);
    X509* fresh = Require(X509_new_ex(m_context, nullptr), kErrExecution);
    const unsigned char* at = der.data();
    // d2i frees what it was given when it fails.
    X509Ptr certificate(d2i_X509(&fresh, &at, static_cast<long>(der.size())));
    if (certificate == nullptr || at != der.data() + der.size()) {
        ThrowOpenSsl(kErrCertificate);
    }
    if (source.size() <= kMaxRecentCertificate) {
        m_certificates.Add(source, certificate.get());
    }
    return certificate;
}

CrlPtr COpenSslLibrary::ReadCrl(std::span<const unsigned char> der) const {
    X509_CRL* fresh = Require(X509_CRL_new_ex(m_context, nullptr), kErrExecution);
    const unsigned char* at = der.data();
    return CrlPtr(d2i_X509_CRL(&fresh, &at, static_cast<long>(der.size())));
}

OcspAnswerPtr COpenSslLibrary::ReadOcspAnswer(std::span<const unsigned char> der) {
    const unsigned char* at = der.data();
    const auto size = static_cast<long>(der.size());
    if (CAsn1OcspResponseView(FirstElement(der)).IsBasic()) {
        return OcspAnswerPtr(d2i_OCSP_BASICRESP(nullptr, &at, size));
    }
    const Owned<OCSP_RESPONSE, &OCSP_RESPONSE_free> response(d2i_OCSP_RESPONSE(nullptr, &at, size));
    const bool isAnswer = response != nullptr &&
                          OCSP_response_status(response.get()) == OCSP_RESPONSE_STATUS_SUCCESSFUL;
    return OcspAnswerPtr(isAnswer ? OCSP_response_get1_basic(response.get()) : nullptr);
}

DigestPtr COpenSslLibrary::FindDigest(const std::string& name) const {
    DigestPtr digest(EVP_MD_fetch(m_context, name.c_str(), nullptr));
    if (digest == nullptr) {
        LoadGost();
        digest.reset(EVP_MD_fetch(m_context, name.c_str(), nullptr));
    }
    if (digest == nullptr) {
        throw Exception(kErrModeNotSupported, u8u16("digest " + name));
    }
    return digest;
}

CErrorScope::CErrorScope() noexcept {
    ERR_set_mark();
}

CErrorScope::~CErrorScope() {
    ERR_pop_to_mark();
}

void ThrowOpenSsl(std::uint32_t code, const char* file, long line) {
    const char* data = nullptr;
    int flags = 0;
    const unsigned long error = ERR_peek_last_error_data(&data, &flags);
    if (ERR_GET_REASON(error) == ERR_R_MALLOC_FAILURE) {
        throw std::bad_alloc();
    }
    const auto* const row = std::ranges::find_if(kFaults, [&](const FaultRow& each) {
        return each.library == ERR_GET_LIB(error) && each.reason == ERR_GET_REASON(error);
    });
    char text[256] = "";
    if (error != 0) {
        ERR_error_string_n(error, text, sizeof text);
    }
    std::string words = text;
    if (data != nullptr && (flags & ERR_TXT_STRING) != 0 && *data != '\0') {
        words.append(": ").append(data);
    }
    throw Exception(row != std::end(kFaults) ? row->code : code, u8u16(words), file, line);
}

BioPtr ReadingBio(std::span<const unsigned char> octets) {
    if (octets.size() > std::numeric_limits<int>::max()) {
        throw Exception(kErrParameters);
    }
    static constexpr unsigned char kNothing = 0;  // null is an error there
    const unsigned char* const from = octets.empty() ? &kNothing : octets.data();
    return BioPtr(Require(BIO_new_mem_buf(from, static_cast<int>(octets.size())), kErrExecution));
}

}  // namespace ca
