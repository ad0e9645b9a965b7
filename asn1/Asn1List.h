#pragma once

#include "asn1/Asn1Typed.h"
#include "common/Exception.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>

// SEQUENCE OF and SET OF. Lists from outside may have a million elements, so a list makes no
// objects of them: it is walked, one element at a time.
//
//     for (auto at = names.Elements(); at.Next();) {
//         if (at.Item() != nullptr) { ... *at.Item() ... }   // what could be read of it
//         if (at.Fault() != nullptr) { ... }                 // why not all
//     }

/// Walks the elements of a list. Holds one element at a time; never throws for what it reads.
template <class T>
class CAsn1ListCursor {
  public:
    /// \param elements  one after the other; they outlive the cursor.
    /// \param list  the block they are the content of; outlives the cursor. Its children, where
    ///        it has them, are used.
    CAsn1ListCursor(std::span<const unsigned char> elements, const CAsn1Block& list)
        : m_cursor(elements), m_list(&list) {}

    /// Steps to the next element and decodes it; false at the end. Octets that are not an element
    /// are the last step: without an item, with a fault, and all of them in Raw().
    bool Next() {
        m_item.reset();
        m_block.reset();
        m_fault.reset();
        if (m_cursor.AtEnd()) {
            return false;
        }
        ++m_step;
        m_raw = m_cursor.Rest();
        CAsn1Element element;
        const Asn1Fault fault = m_cursor.Next(element);
        if (fault != Asn1Fault::kNone) {
            m_cursor = {};
            m_fault = MakeAsn1Fault(fault, Asn1TypeOf<T>::kName, Offset());
            return true;
        }
        m_raw = element.raw;
        if (!Asn1TypeOf<T>::Accepts(element.tag)) {
            m_fault = MakeAsn1WrongTag(Asn1TypeOf<T>::kName, element.tag, Offset());
            return true;
        }
        Bind(element);
        return true;
    }

    /// The element, decoded as far as it could be; null when it is not a T. Valid until the next
    /// step.
    T* Item() { return m_item ? &*m_item : nullptr; }
    /// The element as received.
    std::span<const unsigned char> Raw() const { return m_raw; }
    /// What was wrong with this element; null when nothing was.
    const ca::Exception* Fault() const { return m_fault ? &*m_fault : nullptr; }

  private:
    // Where the current element stands in what the outermost object was made of.
    std::uint32_t Offset() const {
        return m_list->offset + static_cast<std::uint32_t>(m_raw.data() - m_list->start);
    }

    CAsn1Block* BlockOf(const CAsn1Element& element) {
        CAsn1Block* known = m_list->GetInnerBlock(m_step - 1);
        if (known != nullptr && known->start == element.raw.data()) {
            return known;
        }
        m_block.emplace();
        BindBlock(*m_block, element, Offset());
        return &*m_block;
    }

    void Bind(const CAsn1Element& element) {
        m_item.emplace(BlockOf(element));
        if constexpr (std::is_base_of_v<CAsn1TypedObject, T>) {
            m_item->SetElement(element);
            try {
                m_item->Decode();
            } catch (const ca::Exception& fault) {
                m_fault = fault;
            }
        }
    }

    CAsn1Cursor m_cursor;
    const CAsn1Block* m_list;
    std::size_t m_step = 0;  // elements walked, the current one included
    std::span<const unsigned char> m_raw;
    std::optional<CAsn1Block> m_block;
    std::optional<T> m_item;
    std::optional<ca::Exception> m_fault;
};

/// SEQUENCE OF T (Tag kAsn1Sequence) or SET OF T (kAsn1Set). Not declared by members: it has any
/// number of one.
template <class T, unsigned char Tag>
class CAsn1ListOf : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = Asn1TypeOf<T>::kName;
    static constexpr unsigned char kTag = Tag;

    /// Nothing is read ahead: each element is judged where it is met.
    void Decode() override {}

    /// A walk from the first element; valid as long as this object.
    CAsn1ListCursor<T> Elements() const { return CAsn1ListCursor<T>(ContentOctets(), *GetBlock()); }

    /// Steps that a walk takes. Looks at tags and lengths only; linear in the elements.
    std::size_t Count() const {
        std::size_t count = 0;
        CAsn1Element element;
        for (CAsn1Cursor cursor(ContentOctets()); !cursor.AtEnd(); ++count) {
            if (cursor.Next(element) != Asn1Fault::kNone) {
                cursor = {};
            }
        }
        return count;
    }
};

template <class T>
using CAsn1SequenceOf = CAsn1ListOf<T, kAsn1Sequence>;
template <class T>
using CAsn1SetOf = CAsn1ListOf<T, kAsn1Set>;
