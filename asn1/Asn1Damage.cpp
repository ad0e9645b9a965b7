#include "asn1/Asn1Damage.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

using Octets = std::span<const unsigned char>;

constexpr std::size_t kUntilZeros = SIZE_MAX;

// Size of an element's header, and of its content where that has a length.
struct Header {
    std::size_t size = 2;
    std::size_t content = 0;
    bool isIndefinite = false;
};

// The header at the front of `octets`; what keeps it from being one.
Asn1Fault ReadHeader(Octets octets, Header& header) {
    if (octets.size() < 2) {
        return Asn1Fault::kTruncated;
    }
    const unsigned char first = octets[1];
    header.isIndefinite = first == 0x80;
    if (octets[0] == 0 || (header.isIndefinite && (octets[0] & kAsn1ConstructedBit) == 0)) {
        return Asn1Fault::kMalformed;
    }
    if (first < 0x80) {
        header.content = first;
    } else if (!header.isIndefinite) {
        const std::size_t count = first & 0x7FU;
        if (count > 4) {
            return Asn1Fault::kMalformed;
        }
        if (octets.size() < 2 + count) {
            return Asn1Fault::kTruncated;
        }
        header.size += count;
        for (const unsigned char octet : octets.subspan(2, count)) {
            header.content = (header.content << 8) | octet;
        }
    }
    return header.content <= octets.size() - header.size ? Asn1Fault::kNone : Asn1Fault::kTruncated;
}

// A constructed element whose end was not reached.
struct Open {
    std::size_t end;    // kUntilZeros for one of indefinite length
    std::size_t limit;  // of what holds it: no element may pass it
};

}  // namespace

namespace ca {

std::optional<Asn1Damage> FindAsn1Damage(Octets octets) {
    std::vector<Open> open;
    std::size_t limit = octets.size();
    std::size_t at = 0;
    const auto close = [&] {
        limit = open.back().limit;
        open.pop_back();
    };
    while (at < octets.size() || !open.empty()) {
        if (!open.empty() && open.back().end == at) {
            close();
            continue;
        }
        const Octets rest = octets.subspan(at, limit - at);
        const bool endsByZeros = !open.empty() && open.back().end == kUntilZeros;
        if (endsByZeros && rest.size() >= 2 && rest[0] == 0 && rest[1] == 0) {
            at += 2;
            close();
            continue;
        }
        Header header;
        if (const Asn1Fault fault = ReadHeader(rest, header); fault != Asn1Fault::kNone) {
            const unsigned char tag = rest.empty() ? 0 : rest[0];
            const std::size_t size = rest.size();
            return Asn1Damage{fault, at, tag, header.content, size - std::min(size, header.size)};
        }
        at += header.size;
        if ((rest[0] & kAsn1ConstructedBit) == 0) {
            at += header.content;
            continue;
        }
        open.push_back({header.isIndefinite ? kUntilZeros : at + header.content, limit});
        limit = header.isIndefinite ? limit : at + header.content;
    }
    return std::nullopt;
}

}  // namespace ca
