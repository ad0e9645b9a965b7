#include "asn1/Asn1Damage.h"

#include "asn1/BerHeader.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

using Octets = std::span<const unsigned char>;

constexpr std::size_t kUntilZeros = SIZE_MAX;

// Lengths of more octets than the block parser keeps count as damage, so that what is reported and
// what its tree shows agree; high tag numbers it reads like any other, and so are they here.
constexpr std::size_t kMaxLengthOctets = 4;

// What keeps the octets from beginning with an element.
Asn1Fault Judge(Octets octets, CBerHeader& header) {
    const bool isWhole = header.Read(octets);
    if (octets.size() < CBerHeader::kShortest) {
        return Asn1Fault::kTruncated;
    }
    if (header.Tag() == 0 || (header.IsIndefinite() && !header.IsConstructed()) ||
        header.LengthOctets().size() > kMaxLengthOctets) {
        return Asn1Fault::kMalformed;
    }
    // Subtracted, not added: an announced length could wrap a sum.
    return isWhole && header.Length() <= octets.size() - header.Size() ? Asn1Fault::kNone
                                                                       : Asn1Fault::kTruncated;
}

// What is known of the damaged element at the front of `rest`.
ca::Asn1Damage DamageOf(Asn1Fault fault, std::size_t at, Octets rest, const CBerHeader& header) {
    ca::Asn1Damage damage{fault, at, rest.empty() ? static_cast<unsigned char>(0) : rest[0], 0, 0};
    const bool hasLength =
        header.Size() <= rest.size() && header.LengthOctets().size() <= kMaxLengthOctets;
    damage.announced = hasLength ? static_cast<std::size_t>(header.Length()) : 0;
    const std::size_t known = hasLength ? header.Size() : CBerHeader::kShortest;
    damage.available = rest.size() - std::min(rest.size(), known);
    return damage;
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
    // `limit` is the end of the innermost element of definite length; what is of indefinite length
    // in it ends there at the latest.
    std::size_t limit = octets.size();
    std::size_t at = 0;
    const auto close = [&] {
        limit = open.back().limit;
        open.pop_back();
    };
    while (at < octets.size() || !open.empty()) {
        // Ends are taken off before anything is read: several elements may end at one place.
        if (!open.empty() && open.back().end == at) {
            close();
            continue;
        }
        // No element may pass the end of what holds it.
        const Octets rest = octets.subspan(at, limit - at);
        const bool endsByZeros = !open.empty() && open.back().end == kUntilZeros;
        if (endsByZeros && rest.size() >= 2 && rest[0] == 0 && rest[1] == 0) {
            at += 2;
            close();
            continue;
        }
        CBerHeader header;
        if (const Asn1Fault fault = Judge(rest, header); fault != Asn1Fault::kNone) {
            return DamageOf(fault, at, rest, header);
        }
        at += header.Size();
        const std::size_t end = at + static_cast<std::size_t>(header.Length());
        if (!header.IsConstructed()) {
            at = end;
            continue;
        }
        open.push_back({header.IsIndefinite() ? kUntilZeros : end, limit});
        limit = header.IsIndefinite() ? limit : end;
    }
    return std::nullopt;
}

}  // namespace ca
