#pragma once

#include "asn1/Asn1Block.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

/// The typed view of one block. The block (and its buffer) outlives the object unless the object
/// has a block of its own.
///
/// Decode() reads the block into a native value. A changed object is written back by Encode(),
/// which leaves the new content with the object: it lives as long as the object does.
class CAsn1Object {
  public:
    /// A view of `block`, which may be null until a derived class binds one.
    explicit CAsn1Object(CAsn1Block* block, CAsn1Object* parent = nullptr)
        : m_block(block), m_parent(parent) {}
    /// An object from scratch, with an empty block of its own; counts as changed.
    explicit CAsn1Object(unsigned char tag);
    CAsn1Object(const CAsn1Object&) = delete;
    CAsn1Object& operator=(const CAsn1Object&) = delete;

    // The order of the virtual operations is part of the interface.
    virtual ~CAsn1Object();
    /// Writes every changed object of the subtree back to its block, innermost first.
    virtual void Encode();
    virtual void Decode() = 0;
    virtual std::string GetTagName() const;
    virtual std::wstring GetFormattedString(unsigned int flags) const;
    /// Becomes the parent of `child`, which stays its owner's.
    /// \param withBlock  also appends the child's block, no longer excluded, to this block.
    virtual void _AttachInnerObject(CAsn1Object* child, bool withBlock);
    /// Undoes the attachment. \param withBlock  the child's block is excluded from lengths and from
    /// what is written; it stays where it is.
    virtual void _DetachInnerObject(CAsn1Object* child, bool withBlock);
    virtual void _SetParenObject(CAsn1Object* parent);
    /// Gives the object a block of its own, a copy of the one it was bound to.
    virtual void _SetSelfOwnObject();
    /// Writes the value of this one object to its block.
    virtual void _Encode() = 0;

    CAsn1Block* GetBlock() const { return m_block; }
    CAsn1Object* GetParent() const { return m_parent; }
    bool IsChanged() const { return m_changed; }
    /// Marks the value as differing from the block; true passes on to the parents.
    void SetChanged(bool changed);

    std::size_t GetInnerObjectCount() const { return m_inner.size(); }
    /// Owned inner object `i`, null when there is none.
    CAsn1Object* GetInnerObject(std::size_t i) const {
        return i < m_inner.size() ? m_inner[i].get() : nullptr;
    }

    /// The block's encoding. \param rebuild  true: written from the tree; false: the octets it was
    /// parsed from, as many as the buffer has. A block that was not parsed is always written.
    std::vector<unsigned char> GetRawData(bool rebuild) const;
    /// Octets that GetAsn1Data() writes; recomputes the lengths of the subtree.
    unsigned int GetAsn1DataLength() const;
    /// Writes the encoding to `out`, which has room for GetAsn1DataLength() octets.
    void GetAsn1Data(unsigned char* out) const;

  protected:
    /// The content octets; empty without a block.
    std::span<const unsigned char> Content() const;
    /// Makes `content` this object's own and the content of its block. Children of the block go.
    void SetContent(std::vector<unsigned char> content);
    /// Adds an object to those owned and sets its parent; returns it.
    CAsn1Object* OwnInnerObject(std::unique_ptr<CAsn1Object> object);
    /// Destroys the owned inner objects, at any depth, without recursion.
    void DeleteInnerObjects() noexcept;
    /// Binds another block, which the object does not own.
    void SetBlock(CAsn1Block* block);

  private:
    CAsn1Block* m_block;
    CAsn1Object* m_parent;
    std::vector<std::unique_ptr<CAsn1Object>> m_inner;
    std::unique_ptr<CAsn1Block> m_ownBlock;
    std::vector<unsigned char> m_encoded;
    bool m_changed = false;
};

/// The typed object of a block, chosen by its identifier octet; CAsn1Unknown for every octet
/// without a class. Never null; the caller owns it.
CAsn1Object* CreatePrimitiveObject(CAsn1Block* block, CAsn1Object* parent);
