#include "providers/openssl/Algorithms.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "providers/openssl/ProviderWords.h"

#include <algorithm>

namespace {

// "SHA-256" and "SHA256" are one name; identifiers are taken as they are.
std::string NameOf(const std::wstring& text) {
    std::string name = ca::u16u8(text);
    std::erase_if(name, [](char c) { return c == ' ' || c == '_'; });
    return name;
}

// Keys of GOST R 34.10-2012 go with the digest of their length alone (RFC 9215, 2); null for others.
const char* GostDigest(const EVP_PKEY* key) {
    switch (EVP_PKEY_get_id(key)) {
        case NID_id_GostR3410_2012_256:
            return SN_id_GostR3411_2012_256;
        case NID_id_GostR3410_2012_512:
            return SN_id_GostR3411_2012_512;
        default:
            return nullptr;
    }
}

const char* DefaultDigest(const EVP_PKEY* key) {
    if (key != nullptr && ca::SignsWholeMessage(key)) {
        return "SHA512";
    }
    if (const char* const gost = key != nullptr ? GostDigest(key) : nullptr) {
        return gost;
    }
    const bool isCurve = key != nullptr && EVP_PKEY_is_a(key, "EC") == 1;
    const int bits = isCurve ? EVP_PKEY_get_bits(key) : 0;
    return bits > 384 ? "SHA512" : bits > 256 ? "SHA384" : "SHA256";
}

}  // namespace

namespace ca {

bool SignsWholeMessage(const EVP_PKEY* key) {
    return EVP_PKEY_is_a(key, "ED25519") == 1 || EVP_PKEY_is_a(key, "ED448") == 1;
}

DigestPtr ChooseDigest(const COpenSslLibrary& library, const PkiAlgorithms& allowed,
                       const std::wstring& name, const EVP_PKEY* key) {
    DigestPtr digest = library.FindDigest(name.empty() ? DefaultDigest(key) : NameOf(name));
    const std::wstring oid = Dotted(OBJ_nid2obj(EVP_MD_get_type(digest.get())));
    if (!IsDigestAllowed(allowed, oid)) {
        throw Exception(kErrParameters, Say(Words::kAlgorithmNotAllowed) + oid);
    }
    return digest;
}

bool IsDigestAllowed(const PkiAlgorithms& allowed, const std::wstring& oid) {
    return std::ranges::find(allowed.digests, oid) != allowed.digests.end();
}

bool IsSignatureAllowed(const PkiAlgorithms& allowed, const std::wstring& oid) {
    return std::ranges::find(allowed.signatures, oid) != allowed.signatures.end();
}

std::wstring SignatureOf(const EVP_PKEY* key, int digest, bool isPss) {
    int signature = EVP_PKEY_get_id(key);  // of Ed25519 and RSASSA-PSS keys it is the same one
    if (isPss) {
        signature = NID_rsassaPss;
    } else if (!SignsWholeMessage(key) && EVP_PKEY_is_a(key, "RSA-PSS") != 1) {
        const int family = signature;
        signature = NID_undef;
        OBJ_find_sigid_by_algs(&signature, digest, family);
    }
    return Dotted(OBJ_nid2obj(signature));
}

void RequireSignature(const PkiAlgorithms& allowed, const EVP_PKEY* key, const EVP_MD* digest,
                      bool isPss) {
    const std::wstring oid = SignatureOf(key, EVP_MD_get_type(digest), isPss);
    if (!IsSignatureAllowed(allowed, oid)) {
        throw Exception(kErrParameters, Say(Words::kAlgorithmNotAllowed) + oid);
    }
}

// Other families have one size only.
bool IsKeyAllowed(const PkiAlgorithms& allowed, const EVP_PKEY* key) {
    const int bits = EVP_PKEY_get_bits(key);
    if (EVP_PKEY_is_a(key, "RSA") == 1 || EVP_PKEY_is_a(key, "RSA-PSS") == 1) {
        return bits >= allowed.minRsaBits;
    }
    return EVP_PKEY_is_a(key, "EC") != 1 || bits >= allowed.minEcBits;
}

std::wstring Dotted(const ASN1_OBJECT* oid) {
    char text[128] = "";
    OBJ_obj2txt(text, sizeof text, oid, /*no_name=*/1);
    return u8u16(text);
}

}  // namespace ca
