#pragma once

// What the ASN.1 benchmarks read: made here or taken from the system's certificates.

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

using Octets = std::vector<unsigned char>;

/// One element: the tag, the shortest length, the content.
Octets Element(unsigned char tag, const Octets& content);

/// The system's certificates in DER, one after another and over again up to `size` octets; empty
/// when there are none.
Octets Certificates(std::size_t size);

/// A CertificateList (RFC 5280, 5.1) of `entries`, every fourth with a reason; some 35 octets each.
Octets Crl(std::size_t entries);

/// A ContentInfo with one SignedData of `size` octets of content (RFC 5652, 5.1), in DER or in the
/// indefinite form with segments of 1000 octets.
Octets SignedData(std::size_t size, bool indefinite);

/// 30 80 `depth` times; closed: with an element inside and all ends.
Octets Nested(std::size_t depth, bool closed);

/// Parents of two octets whose children show most of the buffer again.
Octets Overruns(std::size_t count);

struct Asn1Input {
    const char* name;
    std::function<Octets()> make;
    bool peers;      // shallow enough for peers that recurse, and strict enough for them
    bool quadratic;  // small enough for a peer that is quadratic
};

/// All that the ASN.1 benchmarks read, the same octets in every run.
const std::vector<Asn1Input>& Asn1Inputs();
