#include "asn1/CryptAsn1Parser.h"

#include "asn1/Asn1BlockPool.h"
#include "asn1/Asn1BlockReader.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

namespace {

constexpr std::uint64_t kMaxLength = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t kFirstChildren = 4;  // room for children added one by one, doubled as needed

std::uint32_t CheckedLength(std::uint64_t length) {
    if (length > kMaxLength) {
        ca::LogError(L"CAsn1Block::GetTotalLength", CA_HERE, ca::kErrAsn1Corrupted,
                     /*throwIt=*/true);
    }
    return static_cast<std::uint32_t>(length);
}

// Octets round the content when written: identifier, length and end-of-contents.
std::uint64_t FrameLength(const CAsn1Block& block) {
    return block.isUnknownLength ? 4 : 2 + GetBytesCount(block.contentLength);
}

CAsn1Block* FindByPath(std::span<CAsn1Block* const> level, const std::wstring& path) {
    std::vector<std::wstring> items;
    ca::Split(path, L"/", items);
    std::vector<int> indices;
    for (const std::wstring& item : items) {
        indices.push_back(std::stoi(item));
    }
    CAsn1Block* found = nullptr;
    for (const int index : indices) {
        if (index < 0 || static_cast<std::size_t>(index) >= level.size()) {
            return nullptr;
        }
        found = level[static_cast<std::size_t>(index)];
        level = found->GetInnerBlocks();
    }
    return found;
}

// Writes blocks into a range that it never leaves.
class BlockWriter {
  public:
    BlockWriter(unsigned char* out, std::size_t room) : m_next(out), m_end(out + room) {}

    void Write(const CAsn1Block& root) {
        struct Level {
            const CAsn1Block* block;
            CAsn1Block* const* next;
            CAsn1Block* const* end;
        };
        std::vector<Level> open;
        const auto enter = [&](const CAsn1Block& block) {
            WriteHeader(block);
            const auto children = block.GetInnerBlocks();
            if (children.empty()) {
                WriteContent(block);
                WriteEnd(block);
            } else {
                open.push_back({&block, children.data(), children.data() + children.size()});
            }
        };
        enter(root);
        while (!open.empty()) {
            Level& level = open.back();
            if (level.next == level.end) {
                WriteEnd(*level.block);
                open.pop_back();
                continue;
            }
            const CAsn1Block& child = **level.next++;
            if (!child.excluded) {
                enter(child);
            }
        }
    }

    unsigned char* GetNext() const { return m_next; }

  private:
    void WriteHeader(const CAsn1Block& block) {
        constexpr std::size_t kLongest = 6;
        unsigned char header[kLongest] = {block.tag};
        const std::uint32_t length = block.contentLength;
        const unsigned count = block.isUnknownLength ? 0 : GetBytesCount(length);
        if (block.isUnknownLength) {
            header[1] = 0x80;
        } else if (count == 0) {
            header[1] = static_cast<unsigned char>(length);
        } else {
            header[1] = static_cast<unsigned char>(0x80U | count);
            for (unsigned i = 0; i < count; ++i) {
                header[2 + i] = static_cast<unsigned char>(length >> (8 * (count - 1 - i)));
            }
        }
        WriteOctets(header, 2 + count);
    }

    void WriteContent(const CAsn1Block& block) {
        const auto octets = block.GetRawContent();
        if (octets.size() != block.contentLength) {
            throw ca::Exception(ca::kErrAsn1Corrupted);
        }
        WriteOctets(octets.data(), octets.size());
    }

    void WriteEnd(const CAsn1Block& block) {
        if (block.isUnknownLength) {
            const unsigned char endOfContents[2] = {0, 0};
            WriteOctets(endOfContents, sizeof endOfContents);
        }
    }

    void WriteOctets(const unsigned char* octets, std::size_t count) {
        if (static_cast<std::size_t>(m_end - m_next) < count) {
            throw ca::Exception(ca::kErrAsn1Corrupted);
        }
        if (count != 0) {
            std::memcpy(m_next, octets, count);
            m_next += count;
        }
    }

    unsigned char* m_next;
    unsigned char* m_end;
};

}  // namespace

unsigned int GetBytesCount(unsigned int length) {
    return length < 128 ? 0 : (static_cast<unsigned>(std::bit_width(length)) + 7) / 8;
}

CAsn1Block::~CAsn1Block() {
    DeleteInnerBlocks();
}

void CAsn1Block::operator delete(CAsn1Block* block, std::destroying_delete_t) {
    CAsn1BlockPool::Destroy({&block, 1});
}

void CAsn1Block::Parse(unsigned char* data, unsigned int* pos, unsigned int* absoluteOffset,
                       unsigned int size, bool noThrow, bool continueOnLengthMismatch) {
    DeleteInnerBlocks();
    tag = 0;
    isUnknownLength = false;
    contentLength = totalLength = 0;
    CAsn1BlockReader reader(data, *pos, size, noThrow, continueOnLengthMismatch);
    reader.SetOffset(*absoluteOffset);
    reader.Read(*this);
    *pos = reader.GetPosition();
    *absoluteOffset = reader.GetOffset();
}

unsigned int CAsn1Block::GetTotalLength(bool recompute) {
    if (recompute && m_childCount != 0) {
        struct Level {
            CAsn1Block* block;
            std::size_t next;
            std::uint64_t length;
        };
        std::vector<Level> open{{this, 0, 0}};
        while (!open.empty()) {
            Level& level = open.back();
            CAsn1Block* child = level.block->GetInnerBlock(level.next);
            if (child == nullptr) {
                CAsn1Block& block = *level.block;
                block.contentLength = CheckedLength(level.length);
                block.totalLength = CheckedLength(level.length + FrameLength(block));
                open.pop_back();
                if (!open.empty()) {
                    open.back().length += block.totalLength;
                }
                continue;
            }
            ++level.next;
            if (child->excluded) {
                continue;
            }
            if (child->m_childCount != 0) {
                open.push_back({child, 0, 0});
            } else {
                level.length += child->GetTotalLength(false);
            }
        }
        return totalLength;
    }
    if (m_childCount == 0) {
        // Less than stated where a truncation ended the parse.
        contentLength = static_cast<std::uint32_t>(GetRawContent().size());
    }
    totalLength = CheckedLength(contentLength + FrameLength(*this));
    return totalLength;
}

void CAsn1Block::GetAsn1Data(unsigned char* out, unsigned int* pos) const {
    BlockWriter writer(out + *pos, totalLength);
    writer.Write(*this);
    *pos = static_cast<unsigned>(writer.GetNext() - out);
}

std::span<unsigned char> CAsn1Block::GetRawEncoding() const {
    return {start, start != nullptr ? std::min(totalLength, m_available) : 0};
}

void CAsn1Block::SetRawEncoding(std::span<unsigned char> encoding) {
    start = encoding.data();
    totalLength = static_cast<std::uint32_t>(encoding.size());
    m_available = totalLength;
}

std::span<unsigned char> CAsn1Block::GetRawContent() const {
    if (start == nullptr) {
        return {content, contentLength};
    }
    const auto header = static_cast<std::uint32_t>(content - start);
    return {content, std::min(contentLength, m_available - header)};
}

CAsn1Block* CAsn1Block::AddInnerBlock() {
    auto block = std::make_unique<CAsn1Block>();
    AppendInnerBlock(block.get());
    return block.release();
}

CAsn1Block* CAsn1Block::ImportInnerBlock(const CAsn1Block* source) {
    CAsn1BlockPool pool((source->m_childCount + 1) * sizeof(CAsn1Block));
    // Deliberate: offset and length form stay behind; a copy is written in the definite form.
    const auto copyOne = [&pool](const CAsn1Block& from, CAsn1Block* to) {
        CAsn1Block* copy = pool.NewBlock();
        copy->parent = to;
        copy->tag = from.tag;
        copy->start = from.start;
        copy->content = from.content;
        copy->contentLength = from.contentLength;
        copy->totalLength = from.totalLength;
        copy->excluded = from.excluded;
        copy->m_available = from.m_available;
        return copy;
    };
    struct Level {
        const CAsn1Block* source;
        CAsn1Block* copy;
    };
    std::unique_ptr<CAsn1Block> root(copyOne(*source, this));
    root->m_loose = true;
    std::vector<Level> open{{source, root.get()}};
    while (!open.empty()) {
        const Level level = open.back();
        if (level.copy->m_children == nullptr) {
            pool.ReserveChildren(*level.copy, level.source->m_childCount);
        }
        const CAsn1Block* next = level.source->GetInnerBlock(level.copy->m_childCount);
        if (next == nullptr) {
            open.pop_back();
            continue;
        }
        CAsn1Block* copy = copyOne(*next, level.copy);
        level.copy->m_children->items[level.copy->m_childCount++] = copy;
        if (next->m_childCount != 0) {
            open.push_back({next, copy});
        }
    }
    return root.release();
}

void CAsn1Block::AppendInnerBlock(CAsn1Block* block) {
    const bool listed = block->parent != nullptr && !block->m_loose;
    if (listed && block->parent == this) {
        return;
    }
    ReserveChild();
    if (listed) {
        block->parent->TakeInnerBlock(block).release();  // from one owner to the other
    }
    block->m_loose = false;
    block->parent = this;
    m_children->items[m_childCount++] = block;
}

std::unique_ptr<CAsn1Block> CAsn1Block::TakeInnerBlock(CAsn1Block* child) {
    const auto children = GetInnerBlocks();
    const auto found = std::find(children.begin(), children.end(), child);
    if (found == children.end()) {
        return nullptr;
    }
    CAsn1Block** place = m_children->items + (found - children.begin());
    std::copy(place + 1, m_children->items + m_childCount, place);
    --m_childCount;
    child->parent = nullptr;
    return std::unique_ptr<CAsn1Block>(child);
}

void CAsn1Block::DeleteInnerBlocks() {
    CAsn1BlockPool::Destroy(GetInnerBlocks());
    CAsn1BlockPool::FreeChildren(*this);
}

void CAsn1Block::ReserveChild() {
    if (m_children != nullptr && m_childCount < m_children->capacity) {
        return;
    }
    CAsn1Block grown;
    CAsn1BlockPool::ReserveOnHeap(grown, std::max(kFirstChildren, std::size_t{m_childCount} * 2));
    const auto children = GetInnerBlocks();
    std::copy(children.begin(), children.end(), grown.m_children->items);
    const std::uint32_t count = m_childCount;
    CAsn1BlockPool::FreeChildren(*this);
    m_children = std::exchange(grown.m_children, nullptr);
    m_childCount = count;
}

CAsn1Block* CAsn1Block::GetBlockByTag(unsigned int wanted, std::size_t from) const {
    for (std::size_t i = from; i < m_childCount; ++i) {
        if (m_children->items[i]->tag == wanted) {
            return m_children->items[i];
        }
    }
    return nullptr;
}

CAsn1Block* CAsn1Block::GetBlockBySpecificIdx(unsigned int idx, std::size_t from) const {
    for (std::size_t i = from; i < m_childCount; ++i) {
        CAsn1Block* child = m_children->items[i];
        if ((child->IsContextSpecific() && child->GetContextSpecificIndex() == idx) ||
            (child->IsApplicationSpecific() && child->GetApplicationSpecificIndex() == idx)) {
            return child;
        }
    }
    return nullptr;
}

CAsn1Block* CAsn1Block::GetBlockByPath(const std::wstring& path) const {
    return FindByPath(GetInnerBlocks(), path);
}

CCryptAsn1Parser::~CCryptAsn1Parser() {
    DeleteRoots();
}

void CCryptAsn1Parser::DeleteRoots() noexcept {
    CAsn1BlockPool::Destroy(m_roots);
    m_roots.clear();
}

void CCryptAsn1Parser::Parse(unsigned char* data, unsigned int size, bool stopAtTruncation,
                             bool continueOnLengthMismatch, bool singleRoot) {
    DeleteRoots();
    m_errorCode = ca::kErrNone;
    m_totalLength = 0;
    CAsn1BlockReader reader(data, 0, size, /*noThrow=*/!stopAtTruncation, continueOnLengthMismatch);
    try {
        do {
            std::unique_ptr<CAsn1Block> root(reader.NewRoot());
            m_roots.push_back(root.get());
            reader.Read(*root.release());  // the roots own it now
        } while (reader.GetPosition() < size && !singleRoot);
        if (reader.GetPosition() < size) {
            LogEvent(SetZORNAMessage(kMsgAsn1TrailingData), /*flag=*/false);
        }
        // Nothing to recompute when every length was found in its shortest form and kept.
        m_totalLength = reader.AreLengthsFinal() ? reader.GetPosition() : GetTotalLength();
    } catch (const ca::Exception& e) {
        m_errorCode = e.errorCode;
        if (e.errorCode != ca::kErrAsn1UnexpectedEnd && e.errorCode != ca::kErrAsn1Corrupted) {
            throw;
        }
    }
}

unsigned int CCryptAsn1Parser::GetTotalLength() {
    std::uint64_t length = 0;
    for (CAsn1Block* root : m_roots) {
        length += root->GetTotalLength(/*recompute=*/true);
    }
    m_totalLength = CheckedLength(length);
    return m_totalLength;
}

void CCryptAsn1Parser::Build(unsigned char* out) {
    if (m_errorCode != ca::kErrNone) {
        ca::LogError(L"CCryptAsn1Parser::Build", CA_HERE, m_errorCode, /*throwIt=*/false);
    }
    BlockWriter writer(out, m_totalLength);
    for (const CAsn1Block* root : m_roots) {
        writer.Write(*root);
    }
}

CAsn1Block* CCryptAsn1Parser::GetBlockByPath(const std::wstring& path) const {
    return FindByPath(m_roots, path);
}

ca::BytePtr CCryptAsn1Parser::GetAsn1Structure(std::size_t* length) const {
    if (m_roots.empty()) {
        return {};
    }
    return m_roots.front()->ToJson(length);
}

ca::BytePtr CCryptAsn1Parser::GetAsn1Structure(unsigned char* data, unsigned int size,
                                               std::size_t* length) {
    Parse(data, size, /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/false,
          /*singleRoot=*/false);
    return GetAsn1Structure(length);
}
