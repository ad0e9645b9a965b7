#include "asn1/x509/SctList.h"

#include "asn1/Asn1Element.h"

namespace {

// Octets of what a stamp holds in a fixed size, in the encoding of TLS (RFC 6962, 3.2).
constexpr std::size_t kLogIdLength = 32;
constexpr std::size_t kTimestampLength = 8;
constexpr std::size_t kVectorLength = 2;  // octets that hold a vector's length

using Octets = std::span<const unsigned char>;

Octets TakeOctets(Octets& rest, std::size_t count) {
    if (rest.size() < count) {
        throw MakeAsn1Fault(Asn1Fault::kTruncated, "SignedCertificateTimestamp", 0);
    }
    const Octets taken = rest.first(count);
    rest = rest.subspan(count);
    return taken;
}

std::uint64_t TakeNumber(Octets& rest, std::size_t count) {
    std::uint64_t number = 0;
    for (const unsigned char octet : TakeOctets(rest, count)) {
        number = (number << 8) | octet;
    }
    return number;
}

Octets TakeVector(Octets& rest) {
    const auto length = static_cast<std::size_t>(TakeNumber(rest, kVectorLength));
    return TakeOctets(rest, length);
}

void ExpectEnd(Octets rest) {
    if (!rest.empty()) {
        throw MakeAsn1Fault(Asn1Fault::kMalformed, "SignedCertificateTimestamp", 0);
    }
}

}  // namespace

CSctList::CSctList(Octets list) {
    // SignedCertificateTimestampList: a vector of vectors (RFC 6962, 3.3).
    m_rest = TakeVector(list);
    ExpectEnd(list);
}

bool CSctList::Next(Octets& stamp) {
    if (m_rest.empty()) {
        return false;
    }
    stamp = TakeVector(m_rest);
    return true;
}

CSignedCertificateTimestamp CSctList::Read(Octets stamp) {
    CSignedCertificateTimestamp read;
    read.version = TakeOctets(stamp, 1)[0];
    // How another version goes on is not known.
    if (read.version != 0) {
        return read;
    }
    read.logId = TakeOctets(stamp, kLogIdLength);
    read.timestamp = TakeNumber(stamp, kTimestampLength);
    read.extensions = TakeVector(stamp);
    // The algorithms as TLS 1.2 numbers them (RFC 5246, 7.4.1.4.1).
    read.hashAlgorithm = TakeOctets(stamp, 1)[0];
    read.signatureAlgorithm = TakeOctets(stamp, 1)[0];
    read.signature = TakeVector(stamp);
    ExpectEnd(stamp);
    return read;
}
