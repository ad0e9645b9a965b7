#include "host/Asn1Listing.h"

#include "asn1/BlockText.h"
#include "asn1/EnclosedBlocks.h"
#include "common/Encode.h"
#include "host/StandardStreams.h"
#include "host/Terminal.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kIndent = 2;
// Deeper blocks stay at this indentation and tell their depth instead.
constexpr std::size_t kIndentedLevels = 20;
// Strings in strings whose content is listed; each one takes memory while it is open.
constexpr std::size_t kMaxEnclosed = 64;

// The place and the lengths stand in columns, whose widths suit files of up to 99 MB.
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
    if (const std::wstring value = host::Harmless(ca::BlockText(block, width));
        !value.empty() && room != 0) {
        text += " " + ca::u16u8(host::CutToWidth(value, room));
    }
    return text + "\n";
}

// Writes the lines of a tree and keeps its own stack: strangers choose the depth.
class CListing {
  public:
    CListing(const unsigned char* base, std::size_t width, std::FILE* stream)
        : m_base(base), m_width(width), m_stream(stream) {}

    void List(const CAsn1Block& root) {
        Visit(root);
        while (!m_open.empty()) {
            Level& level = m_open.back();
            if (level.left.empty()) {
                // Parsers of enclosed encodings go with the level that they opened.
                m_enclosures -= level.parser != nullptr ? 1 : 0;
                m_open.pop_back();
                continue;
            }
            const CAsn1Block& child = *level.left.front();
            level.left = level.left.subspan(1);
            Visit(child);
        }
    }

  private:
    struct Level {
        std::span<CAsn1Block* const> left;
        std::unique_ptr<CCryptAsn1Parser> parser;  // of what a string encloses
    };

    void Visit(const CAsn1Block& block) {
        host::Put(LineText(block, m_open.size(), m_base, m_width), m_stream);
        if (block.GetInnerBlockCount() != 0) {
            m_open.push_back({block.GetInnerBlocks(), nullptr});
        } else if (m_enclosures < kMaxEnclosed) {
            Open(ca::EnclosedEncoding(block));
        }
    }

    void Open(std::span<const unsigned char> encoding) {
        if (!encoding.empty()) {
            ++m_enclosures;
            auto parser = ca::ParseEnclosed(encoding);
            const std::span<CAsn1Block* const> roots = parser->GetRoots();
            m_open.push_back({roots, std::move(parser)});
        }
    }

    const unsigned char* m_base;
    std::size_t m_width;
    std::FILE* m_stream;
    std::vector<Level> m_open;
    std::size_t m_enclosures = 0;
};

}  // namespace

namespace host {

void ListAsn1(const CAsn1Block& root, const unsigned char* base, std::size_t width,
              std::FILE* stream) {
    CListing(base, width, stream).List(root);
}

}  // namespace host
