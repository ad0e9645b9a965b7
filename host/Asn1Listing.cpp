#include "host/Asn1Listing.h"

#include "asn1/BlockText.h"
#include "common/Encode.h"
#include "host/StandardStreams.h"
#include "host/Terminal.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kIndent = 2;
// Deeper blocks stay at this indentation and tell their depth instead.
constexpr std::size_t kIndentedLevels = 20;

std::string PlaceText(const CAsn1Block& block, const unsigned char* base) {
    const auto offset = block.start != nullptr ? block.start - base : std::ptrdiff_t{0};
    const std::optional<std::uint32_t> length = ca::AnnouncedLength(block);
    char text[64];
    std::snprintf(text, sizeof text, "%8td %2zu+%-8s ", offset, ca::HeaderLength(block),
                  length                  ? std::to_string(*length).c_str()
                  : block.isUnknownLength ? "indef"
                                          : "?");
    return text;
}

std::string DepthText(std::size_t depth) {
    std::string text(kIndent * std::min(depth, kIndentedLevels), ' ');
    if (depth > kIndentedLevels) {
        text += "(" + std::to_string(depth) + ") ";
    }
    return text;
}

std::string LineText(const CAsn1Block& block, std::size_t depth, const unsigned char* base,
                     std::size_t width) {
    std::string text = PlaceText(block, base) + DepthText(depth) + ca::TagText(block.tag);
    if (block.IsConstructed()) {
        const std::size_t count = block.GetInnerBlockCount();
        text += " (" + std::to_string(count) + (count == 1 ? " element)" : " elements)");
    }
    if (block.corrupted) {
        text += " (damaged)";
    }
    // The text so far is ASCII.
    const std::size_t room = width > text.size() + 1 ? width - text.size() - 1 : 0;
    if (const std::wstring value = host::Visible(ca::BlockText(block, width));
        !value.empty() && room != 0) {
        text += " " + ca::u16u8(host::CutToWidth(value, room));
    }
    return text + "\n";
}

}  // namespace

namespace host {

void ListAsn1(const CAsn1Block& root, const unsigned char* base, std::size_t width,
              std::FILE* stream) {
    struct Level {
        const CAsn1Block* block;
        std::size_t next;
    };
    std::vector<Level> open{{&root, 0}};
    const auto write = [&](const CAsn1Block& block, std::size_t depth) {
        Put(LineText(block, depth, base, width), stream);
    };
    write(root, 0);
    while (!open.empty()) {
        const CAsn1Block* const child = open.back().block->GetInnerBlock(open.back().next++);
        if (child == nullptr) {
            open.pop_back();
            continue;
        }
        write(*child, open.size());
        open.push_back({child, 0});
    }
}

}  // namespace host
