#pragma once

#include "asn1/OidIndex.h"
#include "common/Lng.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

namespace ca {

/// What an object identifier names.
enum class OidKind : std::uint8_t {
    kNameAttribute,      ///< Attribute type of distinguished names (X.520, RFC 4519).
    kAttribute,          ///< Attribute of requests, directories, key stores, devices.
    kAcAttribute,        ///< Attribute of attribute certificates (RFC 5755, 4.4).
    kCmsAttribute,       ///< Signed or unsigned attribute of a message (RFC 5652, 11).
    kExtension,          ///< Certificate extension (RFC 5280, 4.2).
    kAcExtension,        ///< Attribute certificate extension (RFC 5755, 4.3).
    kCrlExtension,       ///< CRL extension (RFC 5280, 5.2).
    kCrlEntryExtension,  ///< CRL entry extension (RFC 5280, 5.3).
    kOcspExtension,      ///< OCSP request or response extension (RFC 6960, 4.4).
    kKeyPurpose,         ///< Extended key usage (RFC 5280, 4.2.1.12).
    kPolicy,             ///< Certificate policy.
    kPolicyQualifier,    ///< Policy qualifier.
    kStatement,          ///< Qualified certificate statement (RFC 3739, 3.2.6).
    kAccessMethod,       ///< Access method of an information access extension.
    kOtherName,          ///< Type of an otherName (RFC 5280, 4.2.1.6).
    kRecipient,          ///< Kind of another recipient of a message (RFC 5652, 6.2.5).
    kContentType,        ///< Content type of a message, bag or response.
    kCommitment,         ///< Commitment of a signer (RFC 5126, 5.11.1).
    kSignature,          ///< Signature algorithm, with or without its digest.
    kDigest,             ///< Digest algorithm.
    kKey,                ///< Public key algorithm.
    kKeyAgreement,       ///< Key agreement algorithm.
    kKeyWrap,            ///< Key wrapping algorithm.
    kKeyDerivation,      ///< Key derivation function.
    kCipher,             ///< Content encryption algorithm.
    kMac,                ///< Message authentication code.
    kCompression,        ///< Compression algorithm.
    kCurve,              ///< Named elliptic curve.
    kParameters,         ///< Parameter set, or a value inside parameters or an extension.
};

/// The content octets of an identifier of the table, or of a text somebody asks for.
struct OidOctets {
    static constexpr std::size_t kMost = 16;  ///< octets of the longest row, and some room

    unsigned char octets[kMost] = {};
    unsigned char size = 0;  ///< 0: no identifier, or one longer than any row
};

/// One row of the table of object identifiers.
struct OidInfo {
    const wchar_t* dotted;  ///< "1.2.840.113549.1.1.1"
    const char* shortName;  ///< "CN", "INN", "rsaEncryption"; unique, never empty.
    const wchar_t* english;
    const wchar_t* russian;
    OidOctets encoded;
    OidKind kind;

    /// Its readable name in the current language.
    const wchar_t* Name() const noexcept { return IsRussian() ? russian : english; }
    /// Its content octets.
    std::span<const unsigned char> Octets() const noexcept {
        return {encoded.octets, encoded.size};
    }
};

/// All rows, ordered by the arcs of the identifier.
std::span<const OidInfo> AllOids() noexcept;

/// Index of a row of the table in AllOids().
std::size_t RowOf(const OidInfo& row) noexcept;

/// The row of an identifier given by its content octets, as encoded (without tag and length).
/// \return null when the table has no row; static otherwise.
/// Constant time, no allocation, any thread. This is the look-up for everything read from outside:
/// equal octets mean equal identifiers, which texts whose arcs wrapped do not.
const OidInfo* FindOid(std::span<const unsigned char> encoded) noexcept;

/// The row of an identifier given by its dotted text, "2.5.4.3"; null when there is none.
const OidInfo* FindOidByText(std::wstring_view dotted) noexcept;

/// The row with this short name, for names that come from outside; those in code are COid. Letter
/// case counts. Null when there is none.
const OidInfo* FindOidByShortName(std::string_view shortName) noexcept;

/// The readable name in the current language, the dotted text (OidText) when there is no row.
/// Throws only std::bad_alloc.
std::wstring OidName(std::span<const unsigned char> encoded);

/// The dotted text of any content octets, for display: base 128 throughout, arcs of any size exact.
/// Octets that are not a whole identifier (none at all, or the last arc unfinished) and those
/// longer than 256 give "#" and their hexadecimal digits, cut after 256 octets with "...".
/// (CAsn1ObjectIdentifier keeps its own rule: it sums the first arc and wraps at 32 bits.)
/// Throws only std::bad_alloc.
std::wstring OidText(std::span<const unsigned char> encoded);

/// The short names of all rows, for the compiler to find rows by.
inline constexpr std::string_view kOidShortNames[] = {
#define CA_OID(oid, kind, shortName, english, russian) shortName,
#include "common/OidTable.inc"
#undef CA_OID
};
inline constexpr std::size_t kOidCount = std::size(kOidShortNames);
inline constexpr auto kOidShortNameOf = [](std::size_t row) { return kOidShortNames[row]; };
inline constexpr COidIndex kOidsByShortName(kOidCount, kOidShortNameOf);

/// The rows themselves; AllOids() at run time.
extern const OidInfo kOidRows[kOidCount];

}  // namespace ca
