#pragma once

#include "asn1/Asn1Members.h"
#include "common/Exception.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

// Reading the members of typed classes, as Asn1Members.h declares them.
//
// Members come back as plain pointers: the object owns them. A member of a typed class is decoded
// at once. A member of a primitive class is bound but not decoded: its octets are at hand
// (OctetsOf(), IntegerOf(), ... of Asn1Typed.h), call Decode() for its value and display text.
//
// Depth: a class is as deep as its declaration; none contains itself without a bound of its own.

/// Reads the members of one object, in their order.
///
/// A member is there when the next element is one of its type; else an optional one is null, and a
/// required one is a fault and null. The first fault is kept until End(), which throws it: the
/// members after it are read all the same, so that one odd member does not hide the rest.
/// Names in texts are those of the ASN.1 definition.
class CFieldReader {
  public:
    template <class Owner>
    explicit CFieldReader(Owner& owner) : CFieldReader(owner, Owner::kName) {}

    template <class T>
    T* Required(const char* name) {
        return Take(name, Asn1TypeOf<T>::Accepts, kRequired) ? Bind<T>(name) : nullptr;
    }
    template <class T>
    T* Optional(const char* name) {
        return Take(name, Asn1TypeOf<T>::Accepts, kOptional) ? Bind<T>(name) : nullptr;
    }
    /// T DEFAULT `value`: the same as optional, with the value of an absent BOOLEAN.
    bool Default(const char* name, bool value) {
        return Take(name, Asn1TypeOf<CAsn1Boolean>::Accepts, kOptional) ? TakenBoolean(name)
                                                                        : value;
    }

    /// [index] IMPLICIT T
    template <class T>
    T* RequiredImplicit(unsigned index, const char* name) {
        return Take(name, Asn1ImplicitTag<T>{index}, kRequired) ? Bind<T>(name) : nullptr;
    }
    template <class T>
    T* OptionalImplicit(unsigned index, const char* name) {
        return Take(name, Asn1ImplicitTag<T>{index}, kOptional) ? Bind<T>(name) : nullptr;
    }
    bool DefaultImplicit(unsigned index, const char* name, bool value) {
        return Take(name, Asn1ImplicitTag<CAsn1Boolean>{index}, kOptional) ? TakenBoolean(name)
                                                                           : value;
    }

    /// [index] EXPLICIT T
    template <class T>
    T* RequiredExplicit(unsigned index, const char* name) {
        return Take(name, Asn1ExplicitTag{index}, kRequired) ? BindInner<T>(name) : nullptr;
    }
    template <class T>
    T* OptionalExplicit(unsigned index, const char* name) {
        return Take(name, Asn1ExplicitTag{index}, kOptional) ? BindInner<T>(name) : nullptr;
    }

    /// An element of any type.
    CAsn1Any* RequiredAny(const char* name) { return Required<CAsn1Any>(name); }
    CAsn1Any* OptionalAny(const char* name) { return Optional<CAsn1Any>(name); }

    /// Judges what was read: throws the first fault, ca::Exception with a text that names the
    /// member and the offset. kErrAsn1Corrupted: a member is missing, or the octets are no
    /// elements; kErrAsn1BadTag: an element that is not that member stands there, or is left over;
    /// kErrAsn1UnexpectedEnd: an element ends after its container.
    void End();

  protected:
    static constexpr bool kRequired = true;
    static constexpr bool kOptional = false;

    CFieldReader(CAsn1TypedObject& owner, const char* ownerName);
    /// The alternatives of a CHOICE: what is read is the owner's own element, in its own block.
    void ReadOwnElement();

    /// Makes the next element the current one when it is accepted.
    template <class AcceptsTag>
    bool Take(const char* name, AcceptsTag accepts, bool required) {
        if (m_blocked || m_cursor.AtEnd() || !accepts(m_cursor.PeekTag())) {
            if (required) {
                NotThere(name);
            }
            return false;
        }
        return TakeElement(name);
    }

    /// A T over the current element.
    template <class T>
    T* Bind(const char* name) {
        return BindTo<T>(TakenBlock(name), m_element);
    }
    /// A T over the one element inside the current one.
    template <class T>
    T* BindInner(const char* name) {
        CAsn1Element inner;
        if (!TakeInner(name, inner)) {
            return nullptr;
        }
        if (!Asn1TypeOf<T>::Accepts(inner.tag)) {
            WrongTag(name, inner);
            return nullptr;
        }
        return BindTo<T>(InnerBlock(name, inner), inner);
    }

  private:
    template <class T>
    T* BindTo(CAsn1Block* block, const CAsn1Element& element) {
        if (block == nullptr) {
            return nullptr;
        }
        auto owned = std::make_unique<T>(block, &m_owner);
        T* const member = owned.get();
        Own(std::move(owned));
        if constexpr (std::is_base_of_v<CAsn1TypedObject, T>) {
            member->SetElement(element);
            DecodeMember(*member);
        }
        return member;
    }

    std::string NameOf(const char* member) const;
    void Own(std::unique_ptr<CAsn1Object> member);
    void DecodeMember(CAsn1TypedObject& member);
    bool TakeElement(const char* name);
    bool TakeInner(const char* name, CAsn1Element& inner);
    CAsn1Block* TakenBlock(const char* name);
    CAsn1Block* InnerBlock(const char* name, const CAsn1Element& inner);
    CAsn1Block* ChildBlock(const char* name, CAsn1Block* parent, std::size_t index,
                           const CAsn1Element& element);
    bool TakenBoolean(const char* name);

    void NotThere(const char* name);
    void WrongTag(const char* name, const CAsn1Element& element);
    void Unreadable(const char* name, Asn1Fault fault, std::span<const unsigned char> at);
    void Keep(const ca::Exception& fault);
    std::uint32_t OffsetOf(std::span<const unsigned char> octets) const;

    CAsn1TypedObject& m_owner;
    const char* m_ownerName;
    CAsn1Cursor m_cursor;
    CAsn1Element m_element;   // the current one
    std::size_t m_taken = 0;  // elements taken so far
    bool m_isChoice = false;
    bool m_blocked = false;  // what follows is not an element
    std::optional<ca::Exception> m_fault;
};

/// Reads the alternative of a CHOICE: each line is one of them, and the one that is there is not
/// null afterwards. The chosen object and the CHOICE share their block.
class CChoiceReader : private CFieldReader {
  public:
    template <class Owner>
    explicit CChoiceReader(Owner& owner) : CFieldReader(owner, Owner::kName) {
        ReadOwnElement();
    }

    template <class T>
    T* Alternative(const char* name) {
        return Optional<T>(name);
    }
    /// [index] IMPLICIT T
    template <class T>
    T* Implicit(unsigned index, const char* name) {
        return OptionalImplicit<T>(index, name);
    }
    /// [index] EXPLICIT T
    template <class T>
    T* Explicit(unsigned index, const char* name) {
        return OptionalExplicit<T>(index, name);
    }
    /// Judges the element: as CFieldReader::End(), kErrAsn1BadTag for no alternative.
    using CFieldReader::End;
};
