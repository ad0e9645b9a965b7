// The JSON dump of a tree of blocks.

#include "asn1/Asn1Block.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Text.h"
#include "asn1/OidTable.h"
#include "asn1/TagNames.h"
#include "common/Encode.h"
#include "common/Hex.h"
#include "common/Lazy.h"
#include "common/Lng.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

// An output stream of rapidjson in one malloc buffer that can be handed over without a copy.
class JsonOutput {
  public:
    using Ch = char;

    void Put(char c) { *Push(1) = c; }
    void Flush() {}

    void Reserve(std::size_t count) {
        if (m_room - m_size < count) {
            Grow(count);
        }
    }
    char* Push(std::size_t count) {
        Reserve(count);
        char* pushed = m_text + m_size;
        m_size += count;
        return pushed;
    }

    std::size_t GetSize() const { return m_size; }
    const char* GetText() const { return m_text; }
    ca::BytePtr Detach() {
        *Push(1) = '\0';
        m_text = nullptr;
        m_size = m_room = 0;
        return std::move(m_buffer);
    }

  private:
    void Grow(std::size_t count) {
        const std::size_t room = std::max(m_room + m_room / 2 + kFirstRoom, m_size + count);
        ca::CJsonAllocator allocator;
        auto* grown = static_cast<unsigned char*>(allocator.Realloc(m_buffer.Get(), m_room, room));
        m_buffer.Detach();  // realloc has taken the old buffer
        m_buffer.Attach(grown);
        m_text = reinterpret_cast<char*>(grown);
        m_room = room;
    }

    static constexpr std::size_t kFirstRoom = 1024;

    ca::BytePtr m_buffer;
    char* m_text = nullptr;
    std::size_t m_size = 0;
    std::size_t m_room = 0;
};

// Writes text that needs no escapes as it is, the rest through rapidjson's writer.
class DumpWriter {
  public:
    explicit DumpWriter(JsonOutput& text) : m_text(text), m_strings(text) {}

    void Raw(std::string_view text) {
        std::memcpy(m_text.Push(text.size()), text.data(), text.size());
    }
    void Number(std::uint32_t number) {
        char digits[10];
        const char* end = std::to_chars(digits, digits + sizeof digits, number).ptr;
        Raw({digits, end});
    }
    void String(std::string_view text) {
        m_strings.Reset(m_text);
        m_strings.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    }
    // A string of `size` characters that the caller writes to where this points.
    char* PlainOfSize(std::size_t size) {
        char* out = m_text.Push(size + 2);
        out[0] = '"';
        out[size + 1] = '"';
        return out + 1;
    }
    void Plain(std::string_view text) {
        std::memcpy(PlainOfSize(text.size()), text.data(), text.size());
    }

  private:
    using StringWriter =
        rapidjson::Writer<JsonOutput, rapidjson::UTF8<>, rapidjson::UTF8<>, ca::CJsonAllocator>;

    JsonOutput& m_text;
    StringWriter m_strings;
};

// "30(CONSTRUCTED)", "02 INTEGER(PRIMITIVE)", "80 (PRIMITIVE, CONTEXT)"
std::string DumpTagText(unsigned char tag) {
    const bool constructed = (tag & 0x20U) != 0;
    std::string text;
    ca::AddHex({&tag, 1}, text, ca::kUpperHexDigits);
    if (!constructed) {
        text += ' ';
        text += Asn1TagName(tag);
    }
    text += constructed ? "(CONSTRUCTED" : "(PRIMITIVE";
    text += (tag & 0x80U) != 0 ? ", CONTEXT)" : ")";
    return text;
}

// How the objects of the blocks of each tag begin.
ca::CLazy<std::array<std::string, 256>> openings([] {
    // A tree has millions of blocks and 256 tags.
    std::array<std::string, 256> all;
    for (std::size_t tag = 0; tag < all.size(); ++tag) {
        all[tag] = R"("structure":{"tag":)" + std::to_string(tag) + R"(,"tagString":")" +
                   DumpTagText(static_cast<unsigned char>(tag)) + '"';
    }
    return all;
});

// Reads the same under every text type. A NUL would end the text.
bool IsPlainAscii(unsigned char octet) {
    return octet != 0 && octet < 0x80;
}

// Writes trees; keeps what is needed once a dump.
class TreeDump {
  public:
    TreeDump(CAsn1Block& root, DumpWriter& writer)
        : m_root(root), m_writer(writer), m_openings(openings.Get()) {}

    void Write() {
        struct Level {
            CAsn1Block* const* next;
            CAsn1Block* const* end;
            bool isFirst;
        };
        std::vector<Level> open;
        const auto enter = [&](CAsn1Block& block) {
            WriteMembers(block);
            const auto children = block.GetInnerBlocks();
            // An empty child is closed at once; the braces round the root are the caller's.
            if (children.empty() && !open.empty()) {
                m_writer.Raw("]}}");
            } else {
                open.push_back({children.data(), children.data() + children.size(), true});
            }
        };
        enter(m_root);
        for (;;) {
            Level& level = open.back();
            if (level.next != level.end) {
                CAsn1Block& child = **level.next;
                m_writer.Raw(level.isFirst ? "{" : ",{");
                level.isFirst = false;
                ++level.next;
                enter(child);
                continue;
            }
            open.pop_back();
            m_writer.Raw("]}");
            if (open.empty()) {
                return;
            }
            m_writer.Raw("}");
        }
    }

  private:
    // All up to the open array of children.
    void WriteMembers(CAsn1Block& block) {
        m_writer.Raw(m_openings[block.tag]);
        if (block.tag == kAsn1ObjectIdentifier) {
            m_writer.Raw(R"(,"description":)");
            m_writer.String(Description(block));
        }
        if (!block.IsConstructed()) {
            m_writer.Raw(R"(,"formattedStringValue":)");
            WriteText(block);
        }
        m_writer.Raw(R"(,"length":)");
        m_writer.Number(block.totalLength);
        m_writer.Raw(R"(,"offset":)");
        m_writer.Number(block.offset);
        m_writer.Raw(R"(,"isUnknownLength":)");
        m_writer.Raw(block.isUnknownLength ? "true" : "false");
        m_writer.Raw(R"(,"corrupted":)");
        m_writer.Raw(block.corrupted ? "true" : "false");
        m_writer.Raw(R"(,"innerBlocks":[)");
    }

    const std::string& Description(CAsn1Block& block) {
        // Each name is converted once a dump, however often its identifier occurs.
        const ca::OidInfo* row = ca::FindOid(block.GetRawContent());
        std::string& text = row != nullptr ? m_names[ca::RowOf(*row)] : m_noName;
        if (text.empty()) {
            text = ca::u16u8(row != nullptr ? row->Name() : SetZORNAMessage(kMsgUnknownOid));
        }
        return text;
    }

    // The value as its typed object shows it. The forms that make up most of a tree are written
    // straight from the octets.
    void WriteText(CAsn1Block& block) {
        auto content = block.GetRawContent();
        switch (block.tag) {
            case kAsn1BitString:
                content = CAsn1BitString::ClearUnusedBits(block);
                [[fallthrough]];
            case kAsn1OctetString:
                ca::WriteHex(content, m_writer.PlainOfSize(content.size() * 2));
                return;
            case kAsn1Integer:
                // Of four octets or fewer a number, of more their hex digits: serial numbers and
                // key parts.
                m_scratch.clear();
                ca::AppendInteger(content, 0, m_scratch);
                m_writer.Plain(m_scratch);
                return;
            case kAsn1ObjectIdentifier:
                m_writer.Plain(CAsn1ObjectIdentifier::GetDottedText(content));
                return;
            case kAsn1UtcTime:
                m_scratch.clear();
                if (ca::AppendPlainUtcTime(content, m_scratch)) {
                    m_writer.Plain(m_scratch);
                    return;
                }
                break;
            case kAsn1Utf8String:
            case kAsn1NumericString:
            case kAsn1PrintableString:
            case kAsn1TeletexString:
            case kAsn1Ia5String:
                if (std::all_of(content.begin(), content.end(), IsPlainAscii)) {
                    m_writer.String(
                        {reinterpret_cast<const char*>(content.data()), content.size()});
                    return;
                }
                break;
            default:
                break;
        }
        m_writer.String(ObjectText(block));
    }

    static std::string ObjectText(CAsn1Block& block) {
        const std::unique_ptr<CAsn1Object> object(CreatePrimitiveObject(&block, nullptr));
        try {
            object->Decode();
        } catch (const std::logic_error&) {
            return {};  // a time whose digits do not convert
        }
        return ca::u16u8(object->GetFormattedString(0));
    }

    CAsn1Block& m_root;
    DumpWriter& m_writer;
    const std::array<std::string, 256>& m_openings;
    std::vector<std::string> m_names{ca::AllOids().size()};  // by row of the table
    std::string m_noName;
    std::string m_scratch;
};

// The Base64 text, encoded in place; in runs, since the encoder counts in 32 bits.
void WriteBase64(std::span<const unsigned char> octets, DumpWriter& writer) {
    constexpr std::size_t kRun = 3 << 20;
    char* out = writer.PlainOfSize((octets.size() + 2) / 3 * 4);
    while (!octets.empty()) {
        const auto run = octets.first(std::min(octets.size(), kRun));
        unsigned written = 0;
        base64_encode(run.data(), static_cast<unsigned>(run.size()), out, written);
        out += written;
        octets = octets.subspan(run.size());
    }
}

}  // namespace

void CAsn1Block::ToJson(ca::JsonWriter& writer) {
    JsonOutput text;
    DumpWriter members(text);
    TreeDump(*this, members).Write();
    constexpr std::string_view kKey = R"("structure":)";
    writer.Key("structure");
    writer.RawValue(text.GetText() + kKey.size(), text.GetSize() - kKey.size(),
                    rapidjson::kObjectType);
}

ca::BytePtr CAsn1Block::ToJson(std::size_t* length) {
    JsonOutput text;
    DumpWriter writer(text);
    writer.Raw("{");
    TreeDump(*this, writer).Write();
    // A block that was built instead of parsed has no octets of its own.
    if (totalLength != 0 && start != nullptr) {
        writer.Raw(R"(,"data":)");
        if (corrupted) {
            writer.Plain("[Данные повреждены]");
        } else {
            WriteBase64(GetRawEncoding(), writer);
        }
    }
    writer.Raw("}");
    if (length != nullptr) {
        *length = text.GetSize();
    }
    return text.Detach();
}
