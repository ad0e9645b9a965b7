#include "asn1/TruncatedObject.h"

#include "asn1/Asn1Element.h"
#include "asn1/Asn1Tags.h"
#include "asn1/BerHeader.h"

#include <cstddef>
#include <cstdint>

namespace {

// Elements in one another; the beginning that is kept ends where they are deeper.
constexpr std::size_t kMaxOpen = 64;

using Octets = std::span<const unsigned char>;

// An element that does not end in the octets.
struct OpenElement {
    std::size_t lengthAt = 0;      // its first length octet
    std::size_t lengthOctets = 0;  // after that one
    bool indefinite = false;

    std::size_t ContentAt() const { return lengthAt + 1 + lengthOctets; }
};

// Header of an element that is cut; its own octets may be cut too.
OpenElement ReadOpen(Octets octets, std::size_t at) {
    CBerHeader header;
    header.Read(octets.subspan(at));
    return {at + 1, header.LengthOctets().size(), header.IsIndefinite()};
}

// Finds the elements that are open at the end, and where what is whole in them ends.
class OpenWalk {
  public:
    explicit OpenWalk(Octets octets) : m_octets(octets) {}

    // False when the first element is whole.
    bool Run() {
        while (m_end < m_octets.size() && !m_isDone) {
            if (!Step()) {
                return false;
            }
        }
        return !m_open.empty();
    }

    std::size_t End() const { return m_end; }
    const std::vector<OpenElement>& Open() const { return m_open; }

  private:
    // False once nothing is open any more.
    bool Step() {
        const Octets rest = m_octets.subspan(m_end);
        m_isDone = rest.size() < 2;
        if (m_isDone) {
            return true;
        }
        if (rest[0] == 0 && rest[1] == 0 && !m_open.empty() && m_open.back().indefinite) {
            m_open.pop_back();
            m_end += 2;
            return !m_open.empty();
        }
        if ((rest[0] & kAsn1ConstructedBit) != 0 && rest[1] == CBerHeader::kIndefinite) {
            Enter();
            return true;
        }
        CAsn1Element element;
        const Asn1Fault fault = CAsn1Cursor(rest).Next(element);
        if (fault == Asn1Fault::kNone) {
            m_end += element.raw.size();
            return !m_open.empty();
        }
        if (fault == Asn1Fault::kTruncated) {
            TakeCut(rest);
        } else {  // what is malformed is for the reader to find
            m_end = m_octets.size();
        }
        return true;
    }

    void TakeCut(Octets rest) {
        const OpenElement cut = ReadOpen(m_octets, m_end);
        const std::size_t content = cut.ContentAt();
        if (content < m_octets.size() && (rest[0] & kAsn1ConstructedBit) != 0) {
            Enter();
        } else if (content < m_octets.size() && rest[0] == kAsn1OctetString &&
                   m_octets[content] == kAsn1Sequence) {
            // A cut string that holds an encoding is kept as far as it goes; other cut values are
            // left out, since half of them would mislead.
            m_open.push_back(cut);
            m_end = m_octets.size();
        } else {
            m_isDone = true;
        }
    }

    void Enter() {
        m_isDone = m_open.size() == kMaxOpen;
        if (!m_isDone) {
            m_open.push_back(ReadOpen(m_octets, m_end));
            m_end = m_open.back().ContentAt();
        }
    }

    Octets m_octets;
    std::vector<OpenElement> m_open;  // the outermost first
    std::size_t m_end = 0;
    bool m_isDone = false;
};

// Writes a length into the octets that the element has for it; false when they are too few.
bool SetLength(std::vector<unsigned char>& octets, const OpenElement& element,
               std::uint64_t length) {
    if (element.lengthOctets == 0) {
        octets[element.lengthAt] = static_cast<unsigned char>(length);
        return length < CBerHeader::kIndefinite;
    }
    for (std::size_t i = element.lengthOctets; i != 0; --i, length >>= 8U) {
        octets[element.lengthAt + i] = static_cast<unsigned char>(length);
    }
    return length == 0;
}

}  // namespace

std::optional<CAsn1Beginning> MendTruncated(Octets octets) {
    OpenWalk walk(octets);
    if (!walk.Run()) {
        return std::nullopt;
    }
    const Octets kept = octets.first(walk.End());
    CAsn1Beginning mended{{kept.begin(), kept.end()}, kept.size()};
    // The innermost first: the zeros that it gets count in the lengths round it.
    for (auto open = walk.Open().rbegin(); open != walk.Open().rend(); ++open) {
        if (open->indefinite) {
            mended.octets.insert(mended.octets.end(), 2, 0);
        } else if (!SetLength(mended.octets, *open, mended.octets.size() - open->ContentAt())) {
            return std::nullopt;
        }
    }
    return mended;
}
