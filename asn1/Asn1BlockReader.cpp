#include "asn1/Asn1BlockReader.h"

#include "common/DecimalText.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <span>
#include <string>

namespace {

constexpr unsigned kLinesPerDamage = 16;
constexpr std::uint32_t kNoPair = 0xFFFFFFFF;
// Octets: the two zeros after a content of indefinite length (X.690, 8.1.5), and the least that a
// header has.
constexpr std::uint32_t kEndOfContents = 2;
constexpr std::uint32_t kShortHeader = 2;
// Pool octets per octet of input: a block and its place among the children for every four octets
// suit real structures.
constexpr std::size_t kPoolPerOctet = 16;
constexpr std::size_t kFirstChildren = 64;

std::uint32_t HeaderLength(const CAsn1Block& block) {
    return static_cast<std::uint32_t>(block.content - block.start);
}

}  // namespace

CAsn1BlockReader::CAsn1BlockReader(const unsigned char* data, std::uint32_t position,
                                   std::uint32_t size, bool noThrow, bool continueOnLengthMismatch)
    : m_data(data),
      m_position(std::min(position, size)),
      m_size(size),
      m_blocksLeft(std::max<std::uint32_t>(Remaining(), 1)),  // even an empty buffer has a root
      m_contentLeft(Remaining() * kContentPerOctet + kContentAlways),
      m_noThrow(noThrow),
      m_continueOnLengthMismatch(continueOnLengthMismatch),
      m_pool(std::size_t{Remaining()} * kPoolPerOctet) {}

CAsn1Block* CAsn1BlockReader::NewRoot() {
    CountBlock();
    return m_pool.NewBlock();
}

void CAsn1BlockReader::Read(CAsn1Block& root) {
    try {
        ReadBelow(root);
    } catch (...) {
        Unwind();
        throw;
    }
}

inline void CAsn1BlockReader::CountBlock() {
    if (m_blocksLeft == 0) {
        ThrowTooMuch();
    }
    --m_blocksLeft;
}

// Of a block without children, once its content is known.
inline void CAsn1BlockReader::CountContent(CAsn1Block& block) {
    m_contentLeft -= block.contentLength;
    if (m_contentLeft < 0) {
        block.contentLength = 0;
        ThrowTooMuch();
    }
}

// The words of a report: who reads, and how far it came.
std::wstring CAsn1BlockReader::Place() const {
    return L"CAsn1Block::Parse" + (SetZORNAMessage(kMsgAsn1Offset) + ca::DecimalText(m_position));
}

void CAsn1BlockReader::ThrowTooMuch() const {
    ca::LogError(Place().c_str(), CA_HERE, ca::kErrAsn1Corrupted, /*throwIt=*/true);
}

inline CAsn1Block* CAsn1BlockReader::NewChild() {
    CountBlock();
    if (m_children.size() == m_children.capacity()) {
        m_children.reserve(m_children.size() * 2 + kFirstChildren);
    }
    CAsn1Block* child = m_pool.NewBlock();
    child->parent = m_open;
    m_children.push_back(child);  // needs no memory
    return child;
}

inline void CAsn1BlockReader::Open(CAsn1Block& block) {
    // While a block is open, its count says where its children begin in m_children: the way back up
    // needs no stack of its own.
    block.m_childrenLength = 0;
    block.m_childCount = static_cast<std::uint32_t>(m_children.size());
    m_open = &block;
    m_position += HeaderLength(block);
    m_offset += HeaderLength(block);
}

inline void CAsn1BlockReader::ReadPrimitive(CAsn1Block& block) {
    if (block.isUnknownLength) {
        ReadIndefinitePrimitive(block);
        return;
    }
    const std::uint32_t header = HeaderLength(block);
    // Subtracted, not added: the sum could wrap.
    if (block.contentLength > Remaining() - header) {
        Truncated();
        EndAtBuffer(block);
        return;
    }
    CountContent(block);
    block.totalLength = header + block.contentLength;
    m_position += block.totalLength;
    m_offset += block.totalLength;
    block.corrupted = false;
}

// Reads up to the content, or to the end of a block that has no children. True when it ended.
inline bool CAsn1BlockReader::ReadHeader(CAsn1Block& block) {
    block.corrupted = true;
    if (Remaining() < kShortHeader) {
        Truncated();  // nothing of the block is recorded when this throws
    }
    block.start = m_data + m_position;
    block.content = block.start;
    block.offset = m_offset;
    block.m_available = Remaining();
    if (block.m_available < kShortHeader) {
        block.tag = block.m_available != 0 ? *block.start : 0;
        EndAtBuffer(block);
        return true;
    }
    block.tag = *block.start;
    // Most blocks are short: they go past the general way.
    if (block.start[1] < CBerHeader::kIndefinite) {
        block.content += CBerHeader::kShortest;
        block.contentLength = block.start[1];
    } else if (!ReadLongLength(block)) {
        EndAtBuffer(block);
        return true;
    }
    if (!block.IsConstructed()) {
        ReadPrimitive(block);
        return true;
    }
    if (block.contentLength == 0 && !block.isUnknownLength) {
        // Deliberate: the header is not added to the offset, so what follows an empty constructed
        // block reports an offset too low.
        block.totalLength = HeaderLength(block);
        m_position += block.totalLength;
        block.corrupted = false;
        return true;
    }
    Open(block);
    return false;
}

// Whether the innermost open block ends after `child`, its latest.
inline bool CAsn1BlockReader::IsLastChild(const CAsn1Block& child) {
    CAsn1Block& block = *m_open;
    if (block.isUnknownLength) {
        if (Remaining() < kEndOfContents) {
            Truncated();
            return true;
        }
        return m_data[m_position] == 0 && m_data[m_position + 1] == 0;
    }
    // Deliberate: content lengths are summed, not total lengths, and headers allowed on top, so
    // small overruns pass.
    block.m_childrenLength += child.contentLength;
    if (block.m_childrenLength > std::uint64_t{block.contentLength} + HeaderLength(block) &&
        IsOverrunEnd(block)) {
        return true;
    }
    return m_position - PositionOf(block.content) >= block.contentLength;
}

// Ends the innermost open block's time as such with these children, the last of m_children; throws
// std::bad_alloc, leaving all as it was.
inline void CAsn1BlockReader::Hang(std::span<CAsn1Block* const> children) {
    CAsn1Block& block = *m_open;
    const std::size_t firstChild = block.m_childCount;
    if (children.empty()) {
        block.m_children = nullptr;
        block.m_childCount = 0;
    } else {
        m_pool.SetChildren(block, children);
    }
    m_children.resize(firstChild);
    m_open = &block == m_root ? nullptr : block.parent;
}

// Ends the innermost open block and returns it; the position follows its length, which may lead
// back into its children.
inline const CAsn1Block* CAsn1BlockReader::Close() {
    CAsn1Block& block = *m_open;
    Hang(std::span(m_children).subspan(block.m_childCount));
    const std::uint32_t content = PositionOf(block.content);
    if (block.isUnknownLength) {
        block.contentLength = m_position - content;
        const std::uint32_t ending = std::min(kEndOfContents, Remaining());
        m_position += ending;
        m_offset += ending;
    } else {
        m_lengthsFinal = m_lengthsFinal && m_position - content == block.contentLength;
        // Where the buffer ended first, more was announced than there is.
        block.contentLength = std::min(block.contentLength, m_size - content);
        m_position = content + block.contentLength;
    }
    block.totalLength = HeaderLength(block) + block.contentLength;
    block.corrupted = false;
    return &block;
}

void CAsn1BlockReader::ReadBelow(CAsn1Block& root) {
    m_root = &root;
    CAsn1Block* block = &root;
    for (;;) {
        const CAsn1Block* ended = ReadHeader(*block) ? block : nullptr;
        // The blocks that end with it, and those that the end of the buffer cuts off.
        while (m_open != nullptr) {
            const bool last = ended != nullptr && IsLastChild(*ended);
            if (!last && Remaining() >= kShortHeader) {
                break;
            }
            if (!last) {
                Truncated();
            }
            ended = Close();
        }
        if (m_open == nullptr) {
            return;
        }
        block = NewChild();
    }
}

// Sets content, content length and form where the length is not one octet. False when the header
// ends after the buffer.
bool CAsn1BlockReader::ReadLongLength(CAsn1Block& block) {
    CBerHeader header;
    if (!header.Read({block.start, block.m_available})) {
        Truncated();
        return false;
    }
    block.content += header.Size();
    if (header.IsIndefinite()) {
        block.isUnknownLength = true;
        m_lengthsFinal = false;
        return true;
    }
    // Deliberate: more than four octets wrap into 32 bits instead of failing.
    const auto octets = header.LengthOctets();
    std::uint32_t length = 0;
    for (std::size_t i = 0; i < octets.size(); ++i) {
        length += std::uint32_t{octets[i]} << (8 * (octets.size() - 1 - i) % 32);
    }
    block.contentLength = length;
    // A padded length is written in fewer octets, so that the total has to be summed anew.
    m_lengthsFinal = m_lengthsFinal && octets.size() == GetBytesCount(length);
    return true;
}

void CAsn1BlockReader::ReadIndefinitePrimitive(CAsn1Block& block) {
    const std::uint32_t content = PositionOf(block.content);
    // Deliberate: a pair at the very start of the content does not end it.
    const std::uint32_t pair = FindZeroPair(content + 1);
    if (pair == kNoPair) {
        Truncated();
        EndAtBuffer(block);
        return;
    }
    block.contentLength = pair - content;
    CountContent(block);
    block.totalLength = kShortHeader + block.contentLength;
    m_position = pair + kEndOfContents;
    m_offset += block.totalLength + kEndOfContents;
    block.corrupted = false;
}

// The block gets what the buffer still has. A header that is cut off has no content.
void CAsn1BlockReader::EndAtBuffer(CAsn1Block& block) {
    const std::uint32_t rest = Remaining();
    const std::uint32_t header = HeaderLength(block);
    if (header == 0) {
        block.content = block.start + rest;
    }
    block.contentLength = header == 0 ? 0 : rest - header;
    CountContent(block);
    block.totalLength = rest;
    block.corrupted = false;
    m_position = m_size;
    m_offset += rest;
    m_lengthsFinal = false;
}

// Logs that the children overrun `block`. True when it ends there.
bool CAsn1BlockReader::IsOverrunEnd(const CAsn1Block& block) {
    if (MayLog(Damage::kOverrun)) {
        const auto offset = ca::DecimalText(static_cast<std::int32_t>(block.offset));
        LogEvent((L"Поврежденные asn.1 данные в смещении " + offset).c_str(), /*isError=*/false);
    }
    if (m_continueOnLengthMismatch && MayLog(Damage::kOverrunError)) {
        ca::LogError(Place().c_str(), CA_HERE, ca::kErrAsn1Corrupted, /*throwIt=*/false);
    }
    return !m_continueOnLengthMismatch;
}

// Hangs the children read so far below the blocks left open.
void CAsn1BlockReader::Unwind() noexcept {
    while (m_open != nullptr) {
        const auto children = std::span(m_children).subspan(m_open->m_childCount);
        try {
            Hang(children);
        } catch (const std::bad_alloc&) {
            // No memory for their list: they are freed rather than lost.
            CAsn1BlockPool::Destroy(children);
            Hang({});
        }
    }
}

// The first pair of zero octets at `from` or later, kNoPair when there is none. What is looked at
// is the content of a block then, so that searches over the same octets come to an end too.
std::uint32_t CAsn1BlockReader::FindZeroPair(std::uint32_t from) const {
    for (std::uint32_t i = from; i + 1 < m_size; ++i) {
        if (m_data[i] == 0 && m_data[i + 1] == 0) {
            return i;
        }
    }
    return kNoPair;
}

void CAsn1BlockReader::Truncated() {
    if (!m_noThrow) {
        throw ca::Exception(ca::kErrAsn1UnexpectedEnd);
    }
    if (MayLog(Damage::kTruncation)) {
        ca::LogError(Place().c_str(), CA_HERE, ca::kErrAsn1UnexpectedEnd, /*throwIt=*/false);
    }
}

// Strangers could otherwise fill the host's log with one line an octet.
bool CAsn1BlockReader::MayLog(Damage damage) {
    unsigned& logged = m_logged[static_cast<std::size_t>(damage)];
    return logged < kLinesPerDamage && ++logged != 0;
}
