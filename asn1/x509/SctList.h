#pragma once

#include <cstdint>
#include <span>

// Lists of certificate transparency stamps. They are TLS structures (RFC 8446, 3), not ASN.1:
// lengths of a fixed number of octets in front of what they measure, the most significant octet
// first.

// struct {
//     Version sct_version;                     -- one octet, v1(0)
//     LogID id;                                -- opaque key_id[32]
//     uint64 timestamp;                        -- milliseconds since 1970
//     CtExtensions extensions;                 -- opaque <0..2^16-1>
//     digitally-signed struct { ... };         -- hash, signature, opaque <0..2^16-1>
// } SignedCertificateTimestamp;     RFC 6962, 3.2
struct CSignedCertificateTimestamp {
    unsigned char version = 0;
    std::span<const unsigned char> logId;
    std::uint64_t timestamp = 0;
    std::span<const unsigned char> extensions;
    unsigned char hashAlgorithm = 0;       // RFC 5246, 7.4.1.4.1
    unsigned char signatureAlgorithm = 0;  // the same
    std::span<const unsigned char> signature;
};

// struct {
//     SerializedSCT sct_list <1..2^16-1>;      -- each opaque <1..2^16-1>
// } SignedCertificateTimestampList;     RFC 6962, 3.3
class CSctList {
  public:
    /// \param list  outlives the object. Throws ca::Exception kErrAsn1Corrupted when its length is
    /// not that of the octets after it.
    explicit CSctList(std::span<const unsigned char> list);

    /// The next stamp's octets; false at the end. Throws kErrAsn1Corrupted for one that is cut off.
    bool Next(std::span<const unsigned char>& stamp);

    /// Reads one. Throws kErrAsn1Corrupted for octets that are not a stamp of version 1, for
    /// another version all but the version is left empty.
    static CSignedCertificateTimestamp Read(std::span<const unsigned char> stamp);

  private:
    std::span<const unsigned char> m_rest;
};
