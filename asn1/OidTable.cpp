#include "asn1/OidTable.h"

#include "common/DecimalText.h"
#include "common/Hex.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace ca {

namespace {

// Appends one arc, base 128; false when there is no room.
constexpr bool AppendArc(OidOctets& out, std::uint64_t arc) {
    // Seven bits a group, as few as hold the arc.
    unsigned groups = 1;
    for (std::uint64_t rest = arc >> 7U; rest != 0; rest >>= 7U) {
        ++groups;
    }
    if (out.size + groups > OidOctets::kMost) {
        return false;
    }
    for (unsigned left = groups; left-- > 0;) {
        const auto group = static_cast<unsigned char>((arc >> (7U * left)) & 0x7FU);
        out.octets[out.size++] = static_cast<unsigned char>(group | (left != 0 ? 0x80U : 0U));
    }
    return true;
}

// Takes the digits of one arc off the text; false when they are not an arc of 32 bits in its usual
// form.
constexpr bool TakeArc(std::wstring_view& text, std::uint64_t& arc) {
    arc = 0;
    std::size_t used = 0;
    for (; used < text.size() && text[used] >= L'0' && text[used] <= L'9'; ++used) {
        arc = arc * 10 + static_cast<std::uint64_t>(text[used] - L'0');
        if (arc > UINT32_MAX) {
            return false;
        }
    }
    // One text for one identifier: 1.02 is not another spelling of 1.2.
    const bool padded = used > 1 && text[0] == L'0';
    text.remove_prefix(used);
    return used != 0 && !padded;
}

constexpr bool TakeDot(std::wstring_view& text) {
    if (text.empty() || text[0] != L'.') {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

// The encoding of a dotted text; of size 0 when it is not one or longer than any row.
constexpr OidOctets EncodeOid(std::wstring_view text) {
    OidOctets out;
    std::uint64_t root = 0;
    std::uint64_t arc = 0;
    // Under the first two roots arcs go up to 39: the first octets hold root * 40 + arc (X.690,
    // 8.19.4).
    if (!TakeArc(text, root) || root > 2 || !TakeDot(text) || !TakeArc(text, arc) ||
        (root < 2 && arc > 39) || !AppendArc(out, root * 40 + arc)) {
        return {};
    }
    while (!text.empty()) {
        if (!TakeDot(text) || !TakeArc(text, arc) || !AppendArc(out, arc)) {
            return {};
        }
    }
    return out;
}

}  // namespace

constexpr OidInfo kOidRows[kOidCount] = {
#define CA_OID(oid, kind, shortName, en, ru) \
    {L##oid, shortName, en, ru, EncodeOid(L##oid), OidKind::kind},
#include "common/OidTable.inc"
#undef CA_OID
};

namespace {

// The encodings alone, a third of the rows: what look-ups compare stays in the processor's cache.
constexpr auto kEncodings = [] {
    std::array<OidOctets, kOidCount> all;
    std::ranges::transform(kOidRows, all.begin(), &OidInfo::encoded);
    return all;
}();
constexpr auto kEncodingOf = [](std::size_t i) {
    return std::span<const unsigned char>(kEncodings[i].octets, kEncodings[i].size);
};
constexpr COidIndex kByEncoding(kOidCount, kEncodingOf);
// Long chains would make look-ups slow; a new row that makes one shows at once.
static_assert(kByEncoding.IsEven() && kOidsByShortName.IsEven());

const OidInfo* RowAt(std::size_t index) noexcept {
    return index != COidIndex::kNone ? &kOidRows[index] : nullptr;
}

// It also keeps the cost of decimal digits small, which grows with the square of an arc's octets.
constexpr std::size_t kMaxShown = 256;  // octets of an identifier that is shown

std::wstring HexText(std::span<const unsigned char> octets) {
    std::wstring text = L"#";
    ca::AddHex(octets.first(std::min(octets.size(), kMaxShown)), text);
    if (octets.size() > kMaxShown) {
        text += L"...";
    }
    return text;
}

// A number of any size, least significant part first, nine decimal digits a part.
// Arcs may have any size: those made of a UUID, under 2.25, have 128 bits (X.667).
class DecimalNumber {
  public:
    void Append7Bits(unsigned bits) {
        std::uint64_t carry = bits;
        for (std::uint32_t& part : m_parts) {
            carry += static_cast<std::uint64_t>(part) * 128;
            part = static_cast<std::uint32_t>(carry % kBase);
            carry /= kBase;
        }
        if (carry != 0) {
            m_parts.push_back(static_cast<std::uint32_t>(carry));
        }
    }

    bool IsBelow(std::uint32_t limit) const {
        return m_parts.empty() || (m_parts.size() == 1 && m_parts[0] < limit);
    }

    // The number is not below `amount`.
    void Subtract(std::uint32_t amount) {
        for (std::uint32_t& part : m_parts) {
            const bool borrow = part < amount;
            part = static_cast<std::uint32_t>(part + (borrow ? kBase : 0) - amount);
            amount = borrow ? 1 : 0;
        }
    }

    std::wstring Text() const {
        std::size_t i = m_parts.size();
        while (i > 1 && m_parts[i - 1] == 0) {
            --i;
        }
        std::wstring text = i == 0 ? L"0" : ca::DecimalText(m_parts[i - 1]);
        while (i-- > 1) {
            const std::wstring digits = ca::DecimalText(m_parts[i - 1]);
            text.append(9 - digits.size(), L'0').append(digits);
        }
        return text;
    }

  private:
    static constexpr std::uint64_t kBase = 1000000000;

    std::vector<std::uint32_t> m_parts;
};

}  // namespace

std::span<const OidInfo> AllOids() noexcept {
    return kOidRows;
}

std::size_t RowOf(const OidInfo& row) noexcept {
    return static_cast<std::size_t>(&row - kOidRows);
}

const OidInfo* FindOid(std::span<const unsigned char> encoded) noexcept {
    if (encoded.empty() || encoded.size() > OidOctets::kMost) {
        return nullptr;
    }
    return RowAt(kByEncoding.Find(encoded, kEncodingOf));
}

const OidInfo* FindOidByText(std::wstring_view dotted) noexcept {
    const OidOctets encoded = EncodeOid(dotted);
    return FindOid({encoded.octets, encoded.size});
}

const OidInfo* FindOidByShortName(std::string_view shortName) noexcept {
    return RowAt(kOidsByShortName.Find(shortName, kOidShortNameOf));
}

std::wstring OidName(std::span<const unsigned char> encoded) {
    const OidInfo* row = FindOid(encoded);
    return row != nullptr ? row->Name() : OidText(encoded);
}

std::wstring OidText(std::span<const unsigned char> encoded) {
    if (const OidInfo* const row = FindOid(encoded)) {
        return row->dotted;
    }
    if (encoded.empty() || encoded.size() > kMaxShown || (encoded.back() & 0x80U) != 0) {
        return HexText(encoded);
    }
    std::wstring text;
    DecimalNumber arc;
    for (const unsigned char octet : encoded) {
        arc.Append7Bits(octet & 0x7FU);
        if ((octet & 0x80U) != 0) {
            continue;
        }
        if (text.empty()) {
            // X.690, 8.19.4: the first two arcs share a number, root * 40 + second arc.
            const std::uint32_t root = arc.IsBelow(40) ? 0 : arc.IsBelow(80) ? 1 : 2;
            arc.Subtract(root * 40);
            text = ca::DecimalText(root);
        }
        text.append(1, L'.').append(arc.Text());
        arc = DecimalNumber();
    }
    return text;
}

}  // namespace ca
