#include "host/OtherKind.h"

#include "records/text/Elements.h"

#include <iterator>
#include <span>
#include <string>

namespace {

using ca::AsText;
using ca::Child;
using host::OtherKind;

constexpr OtherKind kPrivateKey = {{}, "privateKey", "a private key", "закрытый ключ"};
constexpr OtherKind kPublicKey = {{}, "publicKey", "a public key", "открытый ключ"};
constexpr OtherKind kRequest = {
    {}, "certificationRequest", "a certification request", "запрос на сертификат"};
constexpr OtherKind kOcspRequest = {{}, "ocspRequest", "an OCSP request", "запрос OCSP"};
constexpr OtherKind kPkcs12 = {{}, "pkcs12", "a PKCS #12 file", "файл PKCS #12"};

constexpr OtherKind With(std::string_view shape, OtherKind kind) {
    kind.shape = shape;
    return kind;
}

// Ends of PEM labels (RFC 7468).
constexpr OtherKind kLabels[] = {
    With("CERTIFICATE REQUEST", kRequest),
    With("PRIVATE KEY", kPrivateKey),
    With("PUBLIC KEY", kPublicKey),
    {"PARAMETERS", "parameters", "parameters of an algorithm", "параметры алгоритма"},
    {"MESSAGE", "pgp", "an OpenPGP message", "сообщение OpenPGP"},
};

// Content types (RFC 5652, RFC 3274) as encoded.
constexpr OtherKind kContentTypes[] = {
    {"\x2a\x86\x48\x86\xf7\x0d\x01\x07\x01", "data", "a message without protection",
     "сообщение без защиты"},
    {"\x2a\x86\x48\x86\xf7\x0d\x01\x07\x05", "digestedData", "a message with a digest",
     "сообщение с хэшем"},
    {"\x2a\x86\x48\x86\xf7\x0d\x01\x07\x06", "encryptedData",
     "a message encrypted without recipients", "сообщение, зашифрованное без получателей"},
    {"\x2a\x86\x48\x86\xf7\x0d\x01\x09\x10\x01\x09", "compressedData", "a compressed message",
     "сжатое сообщение"},
};

// How the members of an object begin: their identifier octets, those of a member's own members in
// parentheses. Behind a ")" no further member stands.
constexpr OtherKind kShapes[] = {
    // OCSPResponse (RFC 6960 4.2.1), with an answer or with the reason why there is none
    {"\x0a", "ocspResponse", "an OCSP response", "ответ OCSP"},
    // OCSPRequest (RFC 6960 4.1.1): lists of requests, each with an algorithm and two hashes
    With("\x30(\x30(\x30(\x30(\x30\x04\x04\x02", kOcspRequest),
    With("\x30(\xa1\x30(\x30(\x30(\x30\x04\x04\x02", kOcspRequest),
    With("\x30(\xa0\x30(\x30(\x30(\x30\x04\x04\x02", kOcspRequest),
    With("\x30(\xa0\xa1\x30(\x30(\x30(\x30\x04\x04\x02", kOcspRequest),
    // CertificationRequest (RFC 2986 4)
    With("\x30(\x02\x30\x30\xa0)\x30\x03", kRequest),
    With("\x30(\x02\x30\x30)\x30\x03", kRequest),
    // TimeStampReq, TimeStampResp without a token (RFC 3161 2.4)
    {"\x02\x30(\x30(\x06", "timeStampRequest", "a time-stamp request", "запрос метки времени"},
    {"\x30(\x02\x30(\x0c", "timeStampRefusal", "a time-stamp response without a token",
     "ответ службы меток времени без метки"},
    // PFX (RFC 7292 4): the version, a ContentInfo
    With("\x02\x30(\x06\xa0(\x04", kPkcs12),
    With("\x02\x30(\x06\xa0(\x24", kPkcs12),
    // PrivateKeyInfo (RFC 5208 5), RSAPrivateKey (RFC 8017 A.1.2), ECPrivateKey (RFC 5915 3)
    With("\x02\x30(\x06)\x04", kPrivateKey),
    With("\x02\x30(\x06\x06)\x04", kPrivateKey),
    With("\x02\x30(\x06\x05)\x04", kPrivateKey),
    With("\x02\x30(\x06\x30)\x04", kPrivateKey),
    With("\x02\x02\x02\x02\x02", kPrivateKey),
    With("\x02\x04\xa0", kPrivateKey),
    {"\x30(\x06\x30)\x04", "encryptedPrivateKey", "an encrypted private key",
     "зашифрованный закрытый ключ"},
    // RSAPublicKey (RFC 8017 A.1.1), SubjectPublicKeyInfo (RFC 5280 4.1) with what parameters it
    // has
    With("\x02\x02)", kPublicKey),
    With("\x30(\x06)\x03", kPublicKey),
    With("\x30(\x06\x05)\x03", kPublicKey),
    With("\x30(\x06\x06)\x03", kPublicKey),
    With("\x30(\x06\x30)\x03", kPublicKey),
};

// The rest of `shape` behind the ")" of the member that stands open in front of it.
std::string_view Behind(std::string_view shape) {
    std::size_t open = 1;
    std::size_t at = 0;
    for (; at < shape.size() && open != 0; ++at) {
        open += shape[at] == '(' ? 1U : 0U;
        open -= shape[at] == ')' ? 1U : 0U;
    }
    return shape.substr(at);
}

// True when the members begin as the shape says. Its depth is the shape's, not the object's.
bool HasShape(const CAsn1Element& parent, std::string_view shape) {
    CAsn1Cursor cursor(parent.IsConstructed() ? parent.content : std::span<unsigned char>());
    while (!shape.empty() && shape.front() != ')') {
        CAsn1Element member;
        if (cursor.AtEnd() || cursor.Next(member) != Asn1Fault::kNone ||
            member.tag != static_cast<unsigned char>(shape.front())) {
            return false;
        }
        shape.remove_prefix(1);
        if (shape.starts_with('(')) {
            shape.remove_prefix(1);
            if (!HasShape(member, shape)) {
                return false;
            }
            shape = Behind(shape);
        }
    }
    // A closed member has no others.
    return shape.empty() || cursor.AtEnd();
}

template <class Matches>
const OtherKind* FindRow(std::span<const OtherKind> rows, Matches matches) {
    for (const OtherKind& row : rows) {
        if (matches(row.shape)) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace

namespace host {

const OtherKind* FindOtherKind(std::string_view label, const CAsn1Element& root) {
    const auto type = AsText(ca::ContentIf(Child(root, 0), kAsn1ObjectIdentifier));
    const OtherKind* kind =
        FindRow(kLabels, [&](std::string_view end) { return label.ends_with(end); });
    if (kind == nullptr) {
        kind = FindRow(kContentTypes, [&](std::string_view each) { return each == type; });
    }
    if (kind == nullptr) {
        kind = FindRow(kShapes, [&](std::string_view shape) { return HasShape(root, shape); });
    }
    return kind;
}

}  // namespace host
