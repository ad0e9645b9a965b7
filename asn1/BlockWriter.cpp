#include "asn1/BlockWriter.h"

#include "asn1/BerHeader.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"

#include <cstring>
#include <vector>

void CBlockWriter::Write(const CAsn1Block& root) {
    struct Level {
        const CAsn1Block* block;
        CAsn1Block* const* next;
        CAsn1Block* const* end;
    };
    // Not by recursion: the depth is a stranger's choice.
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

void CBlockWriter::WriteHeader(const CAsn1Block& block) {
    const std::uint32_t length = block.contentLength;
    const unsigned count = block.isUnknownLength ? 0 : GetBytesCount(length);
    // The room was measured before; a tree that changed since must not write past it.
    if (Room() < CBerHeader::kShortest + count) {
        throw ca::Exception(ca::kErrAsn1Corrupted);
    }
    *m_next++ = block.tag;
    if (block.isUnknownLength) {
        *m_next++ = CBerHeader::kIndefinite;
    } else if (count == 0) {
        *m_next++ = static_cast<unsigned char>(length);
    } else {
        *m_next++ = static_cast<unsigned char>(CBerHeader::kIndefinite | count);
        for (unsigned i = count; i-- != 0;) {
            *m_next++ = static_cast<unsigned char>(length >> (8 * i));
        }
    }
}

void CBlockWriter::WriteContent(const CAsn1Block& block) {
    const auto octets = block.GetRawContent();
    // A block that was cut off announces octets that nobody has.
    if (octets.size() != block.contentLength) {
        throw ca::Exception(ca::kErrAsn1Corrupted);
    }
    WriteOctets(octets.data(), octets.size());
}

void CBlockWriter::WriteEnd(const CAsn1Block& block) {
    if (block.isUnknownLength) {
        const unsigned char endOfContents[2] = {0, 0};
        WriteOctets(endOfContents, sizeof endOfContents);
    }
}

void CBlockWriter::WriteOctets(const unsigned char* octets, std::size_t count) {
    if (Room() < count) {
        throw ca::Exception(ca::kErrAsn1Corrupted);
    }
    if (count != 0) {
        std::memcpy(m_next, octets, count);
        m_next += count;
    }
}

// Here, so that blocks need not know who writes them.
void CAsn1Block::GetAsn1Data(unsigned char* out, unsigned int* pos) const {
    CBlockWriter writer(out + *pos, totalLength);
    writer.Write(*this);
    *pos = static_cast<unsigned>(writer.Next() - out);
}
