#include "common/Base64Paths.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/HeapPtr.h"
#include "common/Lng.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <string_view>

const std::string base64_chars = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

namespace {

// The tables are built by the compiler: they are there before any constructor runs.
constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::uint32_t kNotInAlphabet = 0x80000000;

using SextetTable = std::array<std::uint32_t, 256>;

// The value of each character, moved to its place in the 24 bits of a group.
constexpr SextetTable MakeSextets(unsigned shift) {
    SextetTable table{};
    table.fill(kNotInAlphabet);
    for (std::uint32_t i = 0; i < kAlphabet.size(); ++i) {
        table[static_cast<unsigned char>(kAlphabet[i])] = i << shift;
    }
    return table;
}

constexpr SextetTable kSextets[4] = {MakeSextets(18), MakeSextets(12), MakeSextets(6),
                                     MakeSextets(0)};

// Two characters for each twelve bits: an encoder of one look-up for every two characters.
using PairTable = std::array<std::array<char, 2>, 4096>;

constexpr PairTable MakePairs() {
    PairTable pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        pairs[i] = {kAlphabet[i / 64], kAlphabet[i % 64]};
    }
    return pairs;
}

constexpr PairTable kPairs = MakePairs();

// Characters that _IsBase64String() accepts.
constexpr std::array<bool, 256> MakeAccepted() {
    std::array<bool, 256> accepted{};
    for (const char c : kAlphabet) {
        accepted[static_cast<unsigned char>(c)] = true;
    }
    for (const char c : {'=', '\r', '\n'}) {
        accepted[static_cast<unsigned char>(c)] = true;
    }
    return accepted;
}

constexpr std::array<bool, 256> kAccepted = MakeAccepted();

constexpr bool IsLineBreak(char c) {
    return c == '\r' || c == '\n';
}

std::uint32_t Sextet(int place, char c) {
    return kSextets[place][static_cast<unsigned char>(c)];
}

void PutOctets(unsigned char* out, std::uint32_t group, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = static_cast<unsigned char>(group >> (16 - 8 * i));
    }
}

char* PutPair(char* out, std::uint32_t bits) {
    // Copied as two characters: the table has them side by side.
    std::memcpy(out, kPairs[bits].data(), 2);
    return out + 2;
}

std::size_t EncodedLength(std::size_t length) {
    return (length + 2) / 3 * 4;
}

void EncodeTo(const unsigned char* in, std::size_t length, char* out) {
    const unsigned char* const wholeEnd = in + length / 3 * 3;
    for (; in != wholeEnd; in += 3) {
        const std::uint32_t group = std::uint32_t{in[0]} << 16 | std::uint32_t{in[1]} << 8 | in[2];
        out = PutPair(out, group >> 12);
        out = PutPair(out, group & 0xFFF);
    }
    const std::size_t rest = length % 3;
    if (rest == 0) {
        return;
    }
    const std::uint32_t group =
        std::uint32_t{in[0]} << 16 | (rest == 2 ? std::uint32_t{in[1]} << 8 : 0);
    out = PutPair(out, group >> 12);
    PutPair(out, group & 0xFFF);
    // RFC 4648, 4: "=" fills up the last group.
    std::fill_n(out + rest - 1, 3 - rest, '=');
}

// The text ends at the length or at a NUL before it.
bool IsBase64Text(const char* text, std::size_t length) {
    const char* const end = text + length;
    const char* const stop = std::find_if_not(
        text, end, [](char c) { return kAccepted[static_cast<unsigned char>(c)]; });
    return stop == end || *stop == '\0';
}

// base64_decode_run() into a buffer of its own; the scan ends at a NUL as at any other character.
unsigned DecodeText(const char* text, std::size_t length, unsigned char** out,
                    unsigned& outLength) {
    if (length == 0 || *text == '\0') {
        outLength = 0;
        return 0;
    }
    ca::BytePtr buffer;
    try {
        buffer = ca::BytePtr::Make((length + 3) / 4 * 3);
    } catch (const std::bad_alloc&) {
        throw ca::Exception(ca::kErrExecution);
    }
    const Base64Run run = base64_decode_run(text, length, buffer.Get());
    if (run.written == 0) {
        throw ca::Exception(ca::kErrNoArgumentData, SetZORNAMessage(kMsgNotBase64));
    }
    if (run.written > std::numeric_limits<unsigned>::max()) {
        throw ca::Exception(ca::kErrExecution);
    }
    *out = buffer.Detach();  // the caller frees it
    outLength = static_cast<unsigned>(run.written);
    return outLength;
}

}  // namespace

namespace ca::base64 {

// Whole groups of four, as long as no other character stands between them.
void Cursor::TakeUnbroken() {
    while (Left() >= 4) {
        // One test for four characters: the bit for "not in the alphabet" survives the or.
        const std::uint32_t group =
            Sextet(0, m_in[0]) | Sextet(1, m_in[1]) | Sextet(2, m_in[2]) | Sextet(3, m_in[3]);
        if ((group & kNotInAlphabet) != 0) {
            return;
        }
        PutOctets(m_out, group, 3);
        Advance(4);
    }
}

bool Cursor::TakeGroup() {
    std::uint32_t group = 0;
    int collected = 0;
    for (; collected < 4 && m_in != m_end; ++m_in) {
        const std::uint32_t value = Sextet(collected, *m_in);
        if (value != kNotInAlphabet) {
            group |= value;
            ++collected;
        } else if (!IsLineBreak(*m_in)) {
            // Line breaks may stand anywhere (RFC 2045, 6.8); any other character ends the text.
            break;
        }
    }
    // A single sextet is less than an octet.
    const std::size_t octets = collected > 1 ? static_cast<std::size_t>(collected - 1) : 0;
    PutOctets(m_out, group, octets);
    m_out += octets;
    return collected == 4;
}

Base64Run Cursor::TakeRest() {
    do {
        TakeUnbroken();
    } while (TakeGroup());
    return Result();
}

Base64Run DecodePlain(const char* in, std::size_t length, unsigned char* out) {
    return Cursor(in, length, out).TakeRest();
}

}  // namespace ca::base64

unsigned base64_encode(const unsigned char* in, unsigned length, char* out, unsigned& outLength) {
    outLength = 0;
    const std::size_t encoded = EncodedLength(length);
    if (encoded > std::numeric_limits<unsigned>::max()) {
        throw ca::Exception(ca::kErrExecution);
    }
    EncodeTo(in, length, out);
    outLength = static_cast<unsigned>(encoded);
    return outLength;
}

unsigned base64_decode(const char* in, unsigned length, unsigned char* out, unsigned& outLength) {
    outLength = static_cast<unsigned>(base64_decode_run(in, length, out).written);
    return outLength;
}

namespace {

// Found as the library is loaded. The plain way is as good before that.
const bool hasAvx2 = ca::base64::HasAvx2();

}  // namespace

Base64Run base64_decode_run(const char* in, std::size_t length, unsigned char* out) {
    return hasAvx2 ? ca::base64::DecodeAvx2(in, length, out)
                   : ca::base64::DecodePlain(in, length, out);
}

namespace ca {

unsigned Base64Decode(const char* text, unsigned char** out, unsigned& outLength) {
    return DecodeText(text, std::strlen(text), out, outLength);
}

void Base64Encode(const unsigned char* data, unsigned length, std::string& out) {
    std::string text(EncodedLength(length), '\0');
    EncodeTo(data, length, text.data());
    out = std::move(text);
}

bool _IsBase64String(const char* text, unsigned length) {
    return IsBase64Text(text, length != 0 ? length : std::strlen(text));
}

bool DecodeBase64IfNeeded(const unsigned char* data, unsigned length,
                          const std::vector<Base64Wrapper>& wrappers, unsigned char** out,
                          unsigned& outLength) {
    outLength = 0;
    *out = nullptr;
    const std::string_view whole(reinterpret_cast<const char*>(data), length);
    for (const auto& [prefix, suffix] : wrappers) {
        if (prefix.size() >= whole.size() || !whole.starts_with(prefix)) {
            continue;
        }
        std::string_view body = whole.substr(prefix.size());
        if (whole.ends_with(suffix)) {
            // The two may overlap in a short text: nothing is left then.
            body.remove_suffix(std::min(suffix.size(), body.size()));
        }
        if (DecodeText(body.data(), body.size(), out, outLength) != 0) {
            return true;
        }
        break;
    }
    // Not in an armour: plain Base64, or not Base64 at all, which is no fault here.
    if (IsBase64Text(whole.data(), whole.size())) {
        DecodeText(whole.data(), whole.size(), out, outLength);
    }
    return outLength != 0;
}

}  // namespace ca
