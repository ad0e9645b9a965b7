#include "records/scan/CertificateCursor.h"

#include "asn1/BerHeader.h"
#include "asn1/Elements.h"
#include "records/scan/LooksLike.h"

#include <algorithm>

namespace {

// Octets that may be looked at, for each one given: candidates overlap, and each is read whole.
constexpr std::size_t kWorkPerOctet = 8;
constexpr std::size_t kWorkAlways = 64 << 10;

// A SEQUENCE of definite length, as a certificate and its first member are.
struct Extent {
    std::size_t content = 0;  // 0 for anything else
    std::size_t end = 0;
};

Extent SequenceAt(std::span<const unsigned char> octets, std::size_t at) {
    constexpr std::size_t kMostOctets = 4;  // of a length
    CBerHeader header;
    if (at >= octets.size() || octets[at] != kAsn1Sequence || !header.Read(octets.subspan(at)) ||
        header.IsIndefinite() || header.LengthOctets().size() > kMostOctets) {
        return {};
    }
    const std::size_t content = at + header.Size();
    const auto length = static_cast<std::size_t>(header.Length());
    return length <= octets.size() - content ? Extent{content, content + length} : Extent{};
}

// How long what may be a certificate is; 0 for what is not one, as a glance at it tells.
std::size_t SizeOfCandidate(std::span<const unsigned char> octets, std::size_t at) {
    const Extent whole = SequenceAt(octets, at);
    const Extent tbs = whole.content < whole.end ? SequenceAt(octets, whole.content) : Extent{};
    const bool isCandidate =
        tbs.content < tbs.end && tbs.end <= whole.end &&
        (octets[tbs.content] == ca::ContextConstructed(0) || octets[tbs.content] == kAsn1Integer);
    return isCandidate ? whole.end - at : 0;
}

}  // namespace

namespace ca {

CCertificateCursor::CCertificateCursor(std::span<const unsigned char> octets)
    : m_cursor(octets), m_work(kWorkPerOctet * octets.size() + kWorkAlways) {}

// What is damaged hides nothing after it: after octets that are not an element the next certificate
// is looked for.
bool CCertificateCursor::Next(CAsn1Element& element) {
    if (m_cursor.AtEnd()) {
        return false;
    }
    if (m_cursor.Next(element) == Asn1Fault::kNone) {
        return true;
    }
    const std::span<const unsigned char> rest = m_cursor.Rest();
    // Until a place is found where it may go on.
    m_cursor = {};
    std::size_t at = 1;
    for (; at < rest.size() && m_work != 0; ++at) {
        const std::size_t size = SizeOfCandidate(rest, at);
        if (size == 0) {
            continue;
        }
        // The work ends the search, not the octets: a hostile file has a candidate at every place.
        m_work -= std::min(m_work, size);
        if (LooksLikeCertificate(rest.subspan(at))) {
            m_cursor = CAsn1Cursor(rest.subspan(at));
            break;
        }
    }
    // The first gap is told; the others are its consequences as a rule.
    if (m_unread.empty()) {
        m_unread = m_cursor.AtEnd() ? rest : rest.first(at);
    }
    return !m_cursor.AtEnd() && m_cursor.Next(element) == Asn1Fault::kNone;
}

}  // namespace ca
