#include "asn1/Asn1Element.h"

#include "common/DecimalText.h"
#include "common/ErrorCodes.h"
#include "common/Hex.h"
#include "common/Lng.h"

#include <string>
#include <utility>

namespace {

constexpr unsigned char kTagNumber = 0x1F;   // bits of the tag number; all set: more octets follow
constexpr unsigned char kLongLength = 0x80;  // alone: the indefinite form
constexpr unsigned char kReservedLength = 0xFF;  // X.690 8.1.3.5 c

struct Header {
    std::size_t size = 0;
    std::size_t contentLength = 0;  // 0 for the indefinite form
    bool indefinite = false;
};

// Reads identifier and length octets; the content is not looked at.
Asn1Fault ReadHeader(std::span<const unsigned char> octets, Header& header) {
    if (octets.size() < 2) {
        return Asn1Fault::kTruncated;
    }
    const unsigned char tag = octets[0];
    const unsigned char first = octets[1];
    header = {2, first, false};
    if (tag == 0 || (tag & kTagNumber) == kTagNumber || first == kReservedLength) {
        return Asn1Fault::kMalformed;
    }
    if (first < kLongLength) {
        return Asn1Fault::kNone;
    }
    if (first == kLongLength) {
        header = {2, 0, true};
        return (tag & kAsn1ConstructedBit) != 0 ? Asn1Fault::kNone : Asn1Fault::kMalformed;
    }
    header.size += first & 0x7FU;
    if (header.size > octets.size()) {
        return Asn1Fault::kTruncated;
    }
    std::uint64_t length = 0;
    for (const unsigned char octet : octets.subspan(2, header.size - 2)) {
        length = length << 8U | octet;
        if (length > octets.size()) {
            return Asn1Fault::kTruncated;
        }
    }
    header.contentLength = static_cast<std::size_t>(length);
    return Asn1Fault::kNone;
}

// Finds the end-of-contents pair that closes the content at the front of `octets`. Elements of
// definite length are stepped over; open ones of indefinite length are only counted.
Asn1Fault FindEndOfContents(std::span<const unsigned char> octets, std::size_t& contentLength) {
    std::size_t position = 0;
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
        if (const Asn1Fault fault = ReadHeader(rest, header); fault != Asn1Fault::kNone) {
            return fault;
        }
        if (header.contentLength > rest.size() - header.size) {
            return Asn1Fault::kTruncated;
        }
        position += header.size + header.contentLength;
        open += header.indefinite ? 1 : 0;
    }
}

// "Validity.notBefore: <what>, offset 12"
ca::Exception MakeFault(std::uint32_t code, std::string_view name, const std::wstring& what,
                        std::size_t offset) {
    std::wstring text(name.begin(), name.end());
    text.append(L": ").append(what);
    text.append(SetZORNAMessage(kMsgAsn1Offset)).append(ca::DecimalText(offset));
    return ca::Exception(code, std::move(text));
}

}  // namespace

Asn1Fault CAsn1Cursor::Next(CAsn1Element& element) noexcept {
    Header header;
    if (const Asn1Fault fault = ReadHeader(m_rest, header); fault != Asn1Fault::kNone) {
        return fault;
    }
    const auto body = m_rest.subspan(header.size);
    std::size_t contentLength = header.contentLength;
    if (header.indefinite) {
        const Asn1Fault fault = FindEndOfContents(body, contentLength);
        if (fault != Asn1Fault::kNone) {
            return fault;
        }
    } else if (contentLength > body.size()) {
        return Asn1Fault::kTruncated;
    }
    const std::size_t total = header.size + contentLength + (header.indefinite ? 2 : 0);
    element = {m_rest[0], header.indefinite, m_rest.first(total), body.first(contentLength)};
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
