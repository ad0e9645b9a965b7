// The JSON dump of a tree of blocks.

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Text.h"
#include "asn1/CryptAsn1Parser.h"
#include "asn1/OidTable.h"
#include "common/Encode.h"
#include "common/Lng.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

namespace {

// An output stream of rapidjson in one malloc buffer that can be handed over without a copy.
class JsonText {
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

using TextWriter =
    rapidjson::Writer<JsonText, rapidjson::UTF8<>, rapidjson::UTF8<>, ca::CJsonAllocator>;

// rapidjson's writer with a short way for text that needs no escapes.
class DumpWriter : public TextWriter {
  public:
    explicit DumpWriter(JsonText& text) : TextWriter(text), m_text(text) {}

    void Plain(std::string_view text) {
        char* out = PlainOfSize(text.size());
        std::memcpy(out, text.data(), text.size());
    }

    // A string of `size` characters that the caller writes to where this points.
    char* PlainOfSize(std::size_t size) {
        Prefix(rapidjson::kStringType);
        char* out = m_text.Push(size + 2);
        out[0] = '"';
        out[size + 1] = '"';
        return out + 1;
    }

  private:
    JsonText& m_text;
};

// "30(CONSTRUCTED)", "02 INTEGER(PRIMITIVE)", "80 (PRIMITIVE, CONTEXT)"
std::string TagText(unsigned char tag) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const bool constructed = (tag & 0x20U) != 0;
    std::string text{kDigits[tag >> 4], kDigits[tag & 0xF]};
    if (!constructed) {
        text += ' ';
        text += Asn1TagName(tag);
    }
    text += constructed ? "(CONSTRUCTED" : "(PRIMITIVE";
    text += (tag & 0x80U) != 0 ? ", CONTEXT)" : ")";
    return text;
}

const std::array<std::string, 256>& TagTexts() {
    static const auto texts = [] {
        std::array<std::string, 256> all;
        for (std::size_t tag = 0; tag < all.size(); ++tag) {
            all[tag] = TagText(static_cast<unsigned char>(tag));
        }
        return all;
    }();
    return texts;
}

// Reads the same under every text type. A NUL would end the text.
bool IsPlainAscii(unsigned char octet) {
    return octet != 0 && octet < 0x80;
}

// Writes trees; keeps what is needed once a dump.
class TreeDump {
  public:
    TreeDump(CAsn1Block& root, DumpWriter& writer)
        : m_root(root), m_writer(writer), m_tagTexts(TagTexts()) {
        // Octets of a tree that is well formed are shown once. Overrunning children can bring the
        // same octets up again and again; past a second time over, nodes stay without text.
        m_octetsLeft = root.start != nullptr ? std::uint64_t{root.GetAvailable()} * 2 : UINT64_MAX;
    }

    void Write() {
        struct Level {
            CAsn1Block* const* next;
            CAsn1Block* const* end;
        };
        std::vector<Level> open;
        const auto enter = [&](CAsn1Block& block) {
            WriteMembers(block);
            const auto children = block.GetInnerBlocks();
            open.push_back({children.data(), children.data() + children.size()});
        };
        enter(m_root);
        for (;;) {
            Level& level = open.back();
            if (level.next != level.end) {
                m_writer.StartObject();
                enter(**level.next++);
                continue;
            }
            m_writer.EndArray();
            m_writer.EndObject();
            open.pop_back();
            if (open.empty()) {
                return;
            }
            m_writer.EndObject();
        }
    }

  private:
    // All up to the open array of children.
    void WriteMembers(CAsn1Block& block) {
        m_writer.Plain("structure");
        m_writer.StartObject();
        m_writer.Plain("tag");
        m_writer.Uint(block.tag);
        m_writer.Plain("tagString");
        m_writer.Plain(m_tagTexts[block.tag]);
        if (block.tag == kAsn1ObjectIdentifier) {
            m_writer.Plain("description");
            m_writer.String(Description(block));
        }
        if (!block.IsConstructed()) {
            m_writer.Plain("formattedStringValue");
            WriteText(block);
        }
        m_writer.Plain("length");
        m_writer.Uint(block.totalLength);
        m_writer.Plain("offset");
        m_writer.Uint(block.offset);
        m_writer.Plain("isUnknownLength");
        m_writer.Bool(block.isUnknownLength);
        m_writer.Plain("corrupted");
        m_writer.Bool(block.corrupted);
        m_writer.Plain("innerBlocks");
        m_writer.StartArray();
    }

    const std::string& Description(CAsn1Block& block) {
        const ca::OidInfo* row = ca::FindOid(block.GetRawContent());
        const ZornaMessage id = row != nullptr ? row->messageId : kMsgUnknownOid;
        std::string& text = m_descriptions[static_cast<std::size_t>(id)];
        if (text.empty()) {
            text = ca::u16u8(SetZORNAMessage(id));
        }
        return text;
    }

    // The value as its typed object shows it. The forms that make up most of a tree are written
    // straight from the octets.
    void WriteText(CAsn1Block& block) {
        auto content = block.GetRawContent();
        if (content.size() > m_octetsLeft) {
            m_writer.Plain("");
            return;
        }
        m_octetsLeft -= content.size();
        switch (block.tag) {
            case kAsn1BitString:
                content = CAsn1BitString::ClearUnusedBits(content);
                [[fallthrough]];
            case kAsn1OctetString:
                ca::WriteHex(content, m_writer.PlainOfSize(content.size() * 2));
                return;
            case kAsn1Integer:
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
                    m_writer.String(reinterpret_cast<const char*>(content.data()),
                                    static_cast<rapidjson::SizeType>(content.size()));
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
    const std::array<std::string, 256>& m_tagTexts;
    std::array<std::string, kMessageCount> m_descriptions;
    std::string m_scratch;
    std::uint64_t m_octetsLeft;
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
    JsonText text;
    DumpWriter members(text);
    members.StartObject();
    TreeDump(*this, members).Write();
    members.EndObject();
    constexpr std::string_view kOpening = "{\"structure\":";
    writer.Key("structure");
    writer.RawValue(text.GetText() + kOpening.size(), text.GetSize() - kOpening.size() - 1,
                    rapidjson::kObjectType);
}

ca::BytePtr CAsn1Block::ToJson(std::size_t* length) {
    JsonText text;
    DumpWriter writer(text);
    writer.StartObject();
    TreeDump(*this, writer).Write();
    if (totalLength != 0 && start != nullptr) {
        writer.Plain("data");
        if (corrupted) {
            writer.Plain("[Данные повреждены]");
        } else {
            WriteBase64(GetRawEncoding(), writer);
        }
    }
    writer.EndObject();
    if (length != nullptr) {
        *length = text.GetSize();
    }
    return text.Detach();
}
