#include "module/viewer/CrlIndex.h"

#include "asn1/Elements.h"
#include "asn1/crl/CertificateList.h"
#include "common/Hex.h"
#include "records/text/Decoded.h"

#include <algorithm>
#include <limits>
#include <string>

namespace {

constexpr ca::CrlPage kAll{
    .first = 0, .count = std::numeric_limits<std::size_t>::max(), .serial = {}};

}  // namespace

namespace ca {

CCrlIndex::CCrlIndex(std::span<const unsigned char> list) {
    const CPartlyDecoded<CAsn1CertificateList> decoded(list);
    const CAsn1TbsCertList* const tbs =
        decoded.Get() != nullptr ? decoded.Get()->TbsCertList() : nullptr;
    if (tbs == nullptr || tbs->RevokedCertificates() == nullptr) {
        return;
    }
    m_issuer = tbs->Issuer() != nullptr ? tbs->Issuer()->Raw() : std::span<const unsigned char>();
    const std::span<const unsigned char> entries = tbs->RevokedCertificates()->ContentOctets();
    for (CCrlWalk walk(entries, kAll); walk.Next(); ++m_count) {
        if (m_count % kStride == 0) {
            const CrlEntry& entry = walk.Entry();
            const auto offset = static_cast<std::size_t>(entry.raw.data() - entries.data());
            m_places.push_back({entries.subspan(offset), entry});
        }
    }
}

std::wstring CCrlIndex::Describe(std::size_t index, RevokedCert& record) const {
    const Place& place = PlaceAt(index);
    const CrlPage page{.first = index, .count = 1, .serial = {}};
    CCrlWalk walk(place.rest, page, place.entry);
    std::wstring faults;
    if (walk.Next()) {
        CCrlDescriber(m_issuer).Describe(walk.Entry(), record, faults);
    }
    return faults;
}

std::optional<std::size_t> CCrlIndex::Find(std::string_view digits, std::size_t from,
                                           std::size_t to) const {
    if (from >= std::min(to, m_count)) {
        return std::nullopt;
    }
    const Place& place = PlaceAt(from);
    std::string serial;
    for (CCrlWalk walk(place.rest, kAll, place.entry); walk.Next();) {
        const std::size_t index = walk.Entry().index;
        if (index >= to) {
            break;
        }
        serial.clear();
        AddHex(walk.Entry().Serial().content, serial);
        if (index >= from && serial.find(digits) != std::string::npos) {
            return index;
        }
    }
    return std::nullopt;
}

// Stretch by stretch from the end, the last one of each.
std::optional<std::size_t> CCrlIndex::FindLast(std::string_view digits, std::size_t from,
                                               std::size_t to) const {
    for (std::size_t end = std::min(to, m_count); end > from;) {
        const std::size_t begin = std::max((end - 1) / kStride * kStride, from);
        std::optional<std::size_t> last;
        for (auto at = Find(digits, begin, end); at; at = Find(digits, *at + 1, end)) {
            last = at;
        }
        if (last) {
            return last;
        }
        end = begin;
    }
    return std::nullopt;
}

}  // namespace ca
