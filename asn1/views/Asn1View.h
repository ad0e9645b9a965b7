#pragma once

#include "asn1/Elements.h"

#include <cstddef>

// Views: the members of a structure by name, straight from its octets. A typed object is made once
// and judges what it reads; a view costs nothing to make, judges nothing, and reads a member when it
// is asked for it. Views are for lists of millions, for telling what octets may be, and for members
// of what need not be whole. Describers take them, so that a typed object describes itself without
// being read a second time.

/// A view of an element that should be a T, or of the one a T is bound to. What is not there is an
/// element without octets; nothing throws. It views the octets.
template <class T>
class CAsn1ViewOf {
  public:
    CAsn1ViewOf() = default;
    CAsn1ViewOf(const CAsn1Element& element) : m_element(element) {}
    CAsn1ViewOf(const T& object) : m_element(ca::ElementOf(object)) {}

    const CAsn1Element& Element() const { return m_element; }
    bool IsThere() const { return !m_element.raw.empty(); }

  protected:
    CAsn1Element Member(std::size_t index) const { return MemberOf(m_element, index); }
    /// Content octets of a member that is an OBJECT IDENTIFIER.
    ca::Octets OidMember(std::size_t index) const {
        return ca::ContentIf(Member(index), kAsn1ObjectIdentifier);
    }

    static CAsn1Element MemberOf(const CAsn1Element& parent, std::size_t index) {
        CAsn1Element element;
        if (!parent.IsConstructed()) {
            return element;
        }
        CAsn1Cursor cursor(parent.content);
        for (std::size_t i = 0; i <= index; ++i) {
            if (!cursor.Step(element)) {
                return {};
            }
        }
        return element;
    }
    /// What an EXPLICIT tag holds.
    static CAsn1Element InnerOf(const CAsn1Element& explicitTag) {
        return MemberOf(explicitTag, 0);
    }

  private:
    CAsn1Element m_element;
};

/// The one element of a value of any type.
using CAsn1ValueView = CAsn1ViewOf<CAsn1Object>;
