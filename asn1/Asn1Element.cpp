#include "asn1/Asn1Element.h"

#include "asn1/BerHeader.h"
#include "common/DecimalText.h"
#include "common/ErrorCodes.h"
#include "common/Hex.h"
#include "common/Lng.h"

#include <string>
#include <utility>

namespace {

constexpr unsigned char kTagNumber = 0x1F;  // bits of the tag number; all set: more octets follow

// An element's header that was judged, and the length that it announces: 0 in the indefinite form.
struct Header : CBerHeader {
    std::size_t contentLength = 0;
};

// Judges a header; the content is looked at only for its length. Lengths in more octets than they
// need are taken: BER allows them.
inline Asn1Fault JudgeHeader(std::span<const unsigned char> octets, Header& header) {
    const bool isWhole = header.Read(octets);
    if (octets.size() < CBerHeader::kShortest) {
        return Asn1Fault::kTruncated;
    }
    // Tag 0 only ends contents, and tag numbers past 30 occur in no structure that is read here.
    if (header.Tag() == 0 || (header.Tag() & kTagNumber) == kTagNumber) {
        return Asn1Fault::kMalformed;
    }
    // Most elements are short: they go past the general way.
    if (header.IsShort()) {
        header.contentLength = octets[1];
        return header.contentLength <= octets.size() - CBerHeader::kShortest
                   ? Asn1Fault::kNone
                   : Asn1Fault::kTruncated;
    }
    // No length begins with 0xFF (X.690, 8.1.3.5); the indefinite form is for what is constructed
    // (8.1.3.2).
    if (header.IsReserved() || (header.IsIndefinite() && !header.IsConstructed())) {
        return Asn1Fault::kMalformed;
    }
    if (!isWhole) {
        return Asn1Fault::kTruncated;
    }
    const std::uint64_t length = header.Length();
    header.contentLength = static_cast<std::size_t>(length);
    return length <= octets.size() - header.Size() ? Asn1Fault::kNone : Asn1Fault::kTruncated;
}

// Finds the end-of-contents pair that closes the content at the front of `octets`. Elements of
// definite length are stepped over; open ones of indefinite length are only counted.
Asn1Fault FindEndOfContents(std::span<const unsigned char> octets, std::size_t& contentLength) {
    std::size_t position = 0;
    // Counted, not entered: the cost is one step an element, whatever the depth.
    for (std::size_t open = 1;;) {
        const auto rest = octets.subspan(position);
        if (rest.size() < 2) {
            return Asn1Fault::kTruncated;
        }
        if (rest[0] == 0 && rest[1] == 0) {
            if (--open == 0) {
                contentLength = position;
                return Asn1Fault::kNone;
            }
            position += 2;
            continue;
        }
        Header header;
        if (const Asn1Fault fault = JudgeHeader(rest, header); fault != Asn1Fault::kNone) {
            return fault;
        }
        position += header.Size() + header.contentLength;
        open += header.IsIndefinite() ? 1 : 0;
    }
}

// "Validity.notBefore: <what>, offset 12"
ca::Exception MakeFault(std::uint32_t code, std::string_view name, const std::wstring& what,
                        std::size_t offset) {
    // Names of types and members are ASCII.
    std::wstring text(name.begin(), name.end());
    text.append(L": ").append(what);
    text.append(SetZORNAMessage(kMsgAsn1Offset)).append(ca::DecimalText(offset));
    return ca::Exception(code, std::move(text));
}

}  // namespace

Asn1Fault CAsn1Cursor::Next(CAsn1Element& element) noexcept {
    Header header;
    if (const Asn1Fault fault = JudgeHeader(m_rest, header); fault != Asn1Fault::kNone) {
        return fault;
    }
    const auto body = m_rest.subspan(header.Size());
    std::size_t contentLength = header.contentLength;
    if (header.IsIndefinite()) {
        const Asn1Fault fault = FindEndOfContents(body, contentLength);
        if (fault != Asn1Fault::kNone) {
            return fault;
        }
    }
    // The end-of-contents pair belongs to the element, not to its content.
    const std::size_t total = header.Size() + contentLength + (header.IsIndefinite() ? 2 : 0);
    element = {header.Tag(), header.IsIndefinite(), m_rest.first(total), body.first(contentLength)};
    m_rest = m_rest.subspan(total);
    return Asn1Fault::kNone;
}

ca::Exception MakeAsn1Fault(Asn1Fault fault, std::string_view name, std::size_t offset) {
    return fault == Asn1Fault::kTruncated
               ? MakeFault(ca::kErrAsn1UnexpectedEnd, name, SetZORNAMessage(kMsgAsn1Truncated),
                           offset)
               : MakeFault(ca::kErrAsn1Corrupted, name, SetZORNAMessage(kMsgAsn1Malformed), offset);
}

ca::Exception MakeAsn1Missing(std::string_view name, std::size_t offset) {
    return MakeFault(ca::kErrAsn1Corrupted, name, SetZORNAMessage(kMsgAsn1Missing), offset);
}

ca::Exception MakeAsn1WrongTag(std::string_view name, unsigned char tag, std::size_t offset) {
    std::wstring what = SetZORNAMessage(kMsgAsn1Unexpected);
    ca::AddHex({&tag, 1}, what);
    return MakeFault(ca::kErrAsn1BadTag, name, what, offset);
}
