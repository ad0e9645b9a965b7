#include "asn1/CryptAsn1Base.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"

#include <limits>
#include <unordered_map>
#include <utility>

namespace {

// Room for the members of most objects: growing from one would take a block of memory for each.
constexpr std::size_t kFirstMembers = 4;

// Pairs the blocks of a tree with those of its copy.
std::unordered_map<const CAsn1Block*, CAsn1Block*> PairBlocks(const CAsn1Block* tree,
                                                              CAsn1Block* copy) {
    std::unordered_map<const CAsn1Block*, CAsn1Block*> pairs;
    std::vector<std::pair<const CAsn1Block*, CAsn1Block*>> open{{tree, copy}};
    while (!open.empty()) {
        const auto pair = open.back();
        open.pop_back();
        pairs.insert(pair);
        for (std::size_t i = 0; i < pair.first->GetInnerBlockCount(); ++i) {
            open.emplace_back(pair.first->GetInnerBlock(i), pair.second->GetInnerBlock(i));
        }
    }
    return pairs;
}

}  // namespace

CAsn1Object::CAsn1Object(unsigned char tag)
    : m_block(nullptr), m_parent(nullptr), m_ownBlock(std::make_unique<CAsn1Block>()) {
    m_block = m_ownBlock.get();
    m_block->tag = tag;
    m_changed = true;
}

CAsn1Object::~CAsn1Object() {
    DeleteInnerObjects();
}

void CAsn1Object::Encode() {
    struct Level {
        CAsn1Object* object;
        std::size_t next;
    };
    // The innermost first, since what an object writes may contain what its members wrote.
    std::vector<Level> open{{this, 0}};
    while (!open.empty()) {
        Level& level = open.back();
        CAsn1Object* inner = level.object->GetInnerObject(level.next);
        if (inner != nullptr) {
            ++level.next;
            open.push_back({inner, 0});
            continue;
        }
        CAsn1Object* object = level.object;
        open.pop_back();
        if (object->m_changed && object->m_block != nullptr) {
            object->_Encode();
            object->m_changed = false;
        }
    }
    if (m_block != nullptr) {
        m_block->GetTotalLength(/*recompute=*/true);
    }
}

std::string CAsn1Object::GetTagName() const {
    return {};
}

std::wstring CAsn1Object::GetFormattedString([[maybe_unused]] unsigned int flags) const {
    return {};
}

void CAsn1Object::_AttachInnerObject(CAsn1Object* child, bool withBlock) {
    if (child == nullptr) {
        return;
    }
    child->_SetParenObject(this);
    if (withBlock && m_block != nullptr && child->m_block != nullptr) {
        m_block->AppendInnerBlock(child->m_block);
        child->m_ownBlock.release();  // this block's tree owns it now
        child->m_block->excluded = false;
    }
    SetChanged(true);
}

void CAsn1Object::_DetachInnerObject(CAsn1Object* child, bool withBlock) {
    if (child == nullptr) {
        return;
    }
    child->_SetParenObject(nullptr);
    // The tree still owns the block; it is only left out when written.
    if (withBlock && child->m_block != nullptr) {
        child->m_block->excluded = true;
    }
    SetChanged(true);
}

void CAsn1Object::_SetParenObject(CAsn1Object* parent) {
    m_parent = parent;
}

void CAsn1Object::_SetSelfOwnObject() {
    if (m_block == nullptr || m_ownBlock != nullptr) {
        return;
    }
    CAsn1Block holder;
    std::unique_ptr<CAsn1Block> copy(holder.ImportInnerBlock(m_block));
    // A copy is of the definite form; this one must be written as it was read.
    copy->isUnknownLength = m_block->isUnknownLength;
    // The members' objects point into the old tree: each goes to its block in the copy.
    const auto pairs = PairBlocks(m_block, copy.get());
    std::vector<CAsn1Object*> open{this};
    while (!open.empty()) {
        CAsn1Object* object = open.back();
        open.pop_back();
        const auto pair = pairs.find(object->m_block);
        object->m_block = pair != pairs.end() ? pair->second : object->m_block;
        for (const auto& inner : object->m_inner) {
            open.push_back(inner.get());
        }
    }
    copy->parent = nullptr;
    m_ownBlock = std::move(copy);
}

void CAsn1Object::SetChanged(bool changed) {
    m_changed = changed;
    for (CAsn1Object* up = m_parent; changed && up != nullptr; up = up->m_parent) {
        if (up->m_changed) {
            break;  // and so are those above it
        }
        up->m_changed = true;
    }
}

std::vector<unsigned char> CAsn1Object::GetRawData(bool rebuild) const {
    if (m_block == nullptr) {
        return {};
    }
    // As parsed, octet for octet, unless the tree is to be written anew.
    if (!rebuild && m_block->start != nullptr) {
        const auto raw = m_block->GetRawEncoding();
        return {raw.begin(), raw.end()};
    }
    std::vector<unsigned char> written(GetAsn1DataLength());
    GetAsn1Data(written.data());
    return written;
}

unsigned int CAsn1Object::GetAsn1DataLength() const {
    return m_block != nullptr ? m_block->GetTotalLength(/*recompute=*/true) : 0;
}

void CAsn1Object::GetAsn1Data(unsigned char* out) const {
    if (m_block != nullptr) {
        unsigned position = 0;
        m_block->GetAsn1Data(out, &position);
    }
}

std::span<const unsigned char> CAsn1Object::Content() const {
    return m_block != nullptr ? m_block->GetRawContent() : std::span<const unsigned char>();
}

void CAsn1Object::SetContent(std::vector<unsigned char> content) {
    if (content.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw ca::Exception(ca::kErrAsn1Corrupted);
    }
    m_encoded = std::move(content);
    m_block->DeleteInnerBlocks();
    m_block->start = nullptr;  // the octets parsed are no longer its encoding
    m_block->content = m_encoded.data();
    m_block->contentLength = static_cast<std::uint32_t>(m_encoded.size());
    m_block->isUnknownLength = false;
    m_block->GetTotalLength(/*recompute=*/false);
}

CAsn1Object* CAsn1Object::OwnInnerObject(std::unique_ptr<CAsn1Object> object) {
    if (m_inner.capacity() == 0) {
        m_inner.reserve(kFirstMembers);
    }
    m_inner.push_back(std::move(object));
    m_inner.back()->_SetParenObject(this);
    return m_inner.back().get();
}

void CAsn1Object::DeleteInnerObjects() noexcept {
    // Down along the last ones; parents are set on the way, so the way up needs no stack.
    CAsn1Object* object = this;
    for (;;) {
        if (object->m_inner.empty()) {
            if (object == this) {
                return;
            }
            object = object->m_parent;
            continue;
        }
        CAsn1Object* inner = object->m_inner.back().get();
        if (inner->m_inner.empty()) {
            object->m_inner.pop_back();
        } else {
            inner->m_parent = object;
            object = inner;
        }
    }
}

void CAsn1Object::SetBlock(CAsn1Block* block) {
    m_block = block;
}
