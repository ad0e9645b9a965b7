#include "records/Payload.h"

#include "common/Encode.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

// RFC 7468, 2: the lines round a body.
constexpr std::string_view kBegin = "-----BEGIN ";
constexpr std::string_view kEnd = "-----END ";
constexpr std::string_view kDashes = "-----";
constexpr std::string_view kBoundary = "--";  // between the parts of a MIME message
constexpr std::string_view kBlanks = " \t\r\n\f\v";
// Characters; labels in use have some twenty.
constexpr std::size_t kMaxLabel = 64;

// One of kBlanks, without a search: it is asked of every character of a payload.
bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsBase64Character(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '/' || c == '=';
}

// Base64 and white space only, and some of the former.
bool IsBase64Text(std::string_view text) {
    bool hasAny = false;
    for (const char c : text) {
        if (IsBase64Character(c)) {
            hasAny = true;
        } else if (!IsBlank(c)) {
            return false;
        }
    }
    return hasAny;
}

// Tells a text from octets that happen to hold a PEM line somewhere: its first characters all
// print, in UTF-8 or in a character set of one octet each. A BER element of more than a few octets
// has its length, or the tag of its first member, there; none has a letter beyond ASCII in front of
// the octet 80 to BF that its length begins with.
bool IsTextStart(std::string_view text) {
    constexpr std::size_t kLookedAt = 8;
    constexpr unsigned char kFirstLetter = 0xC0;
    constexpr unsigned char kFirstContinuation = 0x80;
    bool isInCharacter = false;
    return std::ranges::all_of(text.substr(0, kLookedAt), [&](char c) {
        const auto octet = static_cast<unsigned char>(c);
        isInCharacter = octet >= kFirstLetter || (isInCharacter && octet >= kFirstContinuation);
        return isInCharacter || (octet >= 0x20 && octet < 0x7F) || IsBlank(c);
    });
}

// The decoded octets of a body; nothing for one that does not decode.
ca::PayloadItem DecodeBody(std::string_view body, std::string label) {
    ca::PayloadItem item;
    item.label = std::move(label);
    if (body.empty()) {
        return item;
    }
    // Three octets for four characters, the last group maybe not full.
    item.decoded = ca::BytePtr::Make(3 * (body.size() / 4 + 1));
    // The decoder passes over line ends only; blanks and tabs are taken out beforehand.
    std::string packed;
    if (body.find_first_of(" \t\f\v") != std::string_view::npos) {
        packed.reserve(body.size());
        std::copy_if(body.begin(), body.end(), std::back_inserter(packed),
                     [](char c) { return !IsBlank(c); });
        body = packed;
    }
    const Base64Run run = base64_decode_run(body.data(), body.size(), item.decoded.Get());
    item.octets = {item.decoded.Get(), run.written};
    return item;
}

// Index of the line after the first empty one; the size of the text when there is none.
std::size_t AfterBlankLine(std::string_view text) {
    for (std::size_t end = text.find('\n'); end != std::string_view::npos;
         end = text.find('\n', end + 1)) {
        for (const std::string_view blankLine : {"\n", "\r\n"}) {
            if (text.substr(end + 1).starts_with(blankLine)) {
                return end + 1 + blankLine.size();
            }
        }
    }
    return text.size();
}

// RFC 1421, 4.6: headers stand before the body, a blank line between them. Takes them off it.
std::string_view TakeHeaders(std::string_view& body) {
    const std::size_t colon = body.find(':');
    if (colon == std::string_view::npos) {
        return {};
    }
    const std::size_t after = colon + AfterBlankLine(body.substr(colon));
    if (after >= body.size()) {
        return {};
    }
    const std::string_view headers = body.substr(0, after);
    body.remove_prefix(after);
    return headers;
}

// The block that begins at the front of `text`; `text` is moved after its body.
ca::PayloadItem TakePemBlock(std::string_view& text) {
    text.remove_prefix(kBegin.size());
    // Looked for no further than a label may reach: a file of dashes is read once.
    const std::size_t labelEnd = text.substr(0, kMaxLabel + kDashes.size()).find(kDashes);
    if (labelEnd == std::string_view::npos) {
        return {};
    }
    std::string label(text.substr(0, labelEnd));
    text.remove_prefix(labelEnd + kDashes.size());
    const std::size_t bodyEnd = std::min(text.find(kDashes), text.size());
    std::string_view body = text.substr(0, bodyEnd);
    const std::string_view headers = TakeHeaders(body);
    // The end line's label is not compared: writers get it wrong, and the next block begins at its
    // own line.
    text.remove_prefix(bodyEnd);
    if (text.starts_with(kEnd)) {
        text.remove_prefix(kEnd.size());
    }
    ca::PayloadItem item = DecodeBody(body, std::move(label));
    item.headers = headers;
    return item;
}

std::size_t CountOf(std::string_view word, std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string_view::npos;) {
        ++count;
        at += word.size();
    }
    return count;
}

std::vector<ca::PayloadItem> DecodePem(std::string_view text) {
    std::vector<ca::PayloadItem> items;
    // Counted first, so that the items are not moved: they own what was decoded.
    items.reserve(CountOf(kBegin, text));
    for (std::size_t at = text.find(kBegin); at != std::string_view::npos; at = text.find(kBegin)) {
        text.remove_prefix(at);
        items.push_back(TakePemBlock(text));
    }
    return items;
}

// Index of the first `word`, which is in lower case, in whatever case; npos when there is none.
std::size_t FindWord(std::string_view text, std::string_view word) {
    const auto isSame = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; };
    const auto found = std::search(text.begin(), text.end(), word.begin(), word.end(), isSame);
    return found == text.end() ? std::string_view::npos
                               : static_cast<std::size_t>(found - text.begin());
}

// The next body of a MIME entity sent as Base64 (RFC 2045, 6.8), from which `text` goes on; "" when
// there is none.
std::string_view TakeMimeBody(std::string_view& text) {
    constexpr std::string_view kHeader = "content-transfer-encoding:";
    std::size_t at = FindWord(text, kHeader);
    for (; at != std::string_view::npos; at = FindWord(text, kHeader)) {
        text.remove_prefix(at);
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(line.size());
        if (FindWord(line, "base64") != std::string_view::npos) {
            text.remove_prefix(AfterBlankLine(text));
            // The parts of a message end with a boundary, which begins with two dashes (RFC 2046,
            // 5.1.1).
            const std::string_view body = text.substr(0, text.find(kBoundary));
            text.remove_prefix(body.size());
            return body;
        }
    }
    return {};
}

// The objects in a MIME message. A signed mail holds its text beside the signature (RFC 8551
// 3.5.3): what does not begin as a SEQUENCE does is none.
std::vector<ca::PayloadItem> DecodeMime(std::string_view text) {
    constexpr unsigned char kSequence = 0x30;
    std::vector<ca::PayloadItem> items;
    for (auto body = TakeMimeBody(text); !body.empty(); body = TakeMimeBody(text)) {
        ca::PayloadItem item = DecodeBody(body, {});
        if (!item.octets.empty() && item.octets.front() == kSequence) {
            items.push_back(std::move(item));
        }
    }
    return items;
}

}  // namespace

namespace ca {

std::vector<PayloadItem> DecodePayload(std::span<unsigned char> data) {
    const std::string_view text(reinterpret_cast<const char*>(data.data()), data.size());
    std::vector<PayloadItem> items;
    // A byte-order mark is the editor's, not the object's.
    std::string_view inner = WithoutByteOrderMark(text);
    const std::size_t first = inner.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return items;
    }
    // Cheapest first: most payloads are encodings, which are not searched for lines.
    const bool isText = IsTextStart(inner.substr(first));
    if (isText && text.find(kBegin) != std::string_view::npos) {
        return DecodePem(inner);
    }
    if (IsBase64Text(inner)) {
        items.push_back(DecodeBody(inner, {}));
    } else if (isText) {
        items = DecodeMime(inner);
    }
    if (items.empty()) {
        items.emplace_back().octets = data;
    }
    return items;
}

std::size_t OctetsHeld(const std::vector<PayloadItem>& items) {
    // What the heap keeps beside each block, rounded up.
    constexpr std::size_t kHeapBlock = 32;
    std::size_t octets = items.capacity() * sizeof(PayloadItem);
    for (const PayloadItem& item : items) {
        octets += item.decoded.Get() != nullptr ? item.octets.size() + kHeapBlock : 0;
    }
    return octets;
}

}  // namespace ca
