#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Typed.h"
#include "records/text/OutlineText.h"
#include "records/text/TextLines.h"

#include <optional>
#include <span>
#include <string>
#include <type_traits>

namespace ca {

/// A typed object over octets, already decoded; primitive ones are bound only.
/// Throws ca::Exception for octets that are not a T.
template <class T>
class CDecoded {
  public:
    explicit CDecoded(std::span<const unsigned char> octets, Asn1Blocks blocks = Asn1Blocks::kRead)
        : m_root(octets, blocks) {
        if constexpr (std::is_base_of_v<CAsn1TypedObject, T>) {
            m_root->Decode();
        }
    }
    const T& operator*() const { return *m_root; }
    const T* operator->() const { return &*m_root; }

  private:
    CAsn1Root<T> m_root;
};

/// The same as far as the octets are a T, for what is described in spite of faults.
template <class T>
class CPartlyDecoded {
  public:
    explicit CPartlyDecoded(std::span<const unsigned char> octets) {
        try {
            m_root.emplace(octets, Asn1Blocks::kRead);
            (*m_root)->Decode();
        } catch (const Exception& fault) {
            m_fault = fault;
        }
    }
    /// Null when the octets are no T at all.
    const T* Get() const { return m_root ? &**m_root : nullptr; }
    bool IsWhole() const { return !m_fault; }
    /// What is wrong; empty when nothing is.
    std::wstring Fault() const { return m_fault ? m_fault->message : std::wstring(); }
    void ThrowFault() const {
        if (m_fault) {
            throw *m_fault;
        }
    }

  private:
    std::optional<CAsn1Root<T>> m_root;
    std::optional<Exception> m_fault;
};

/// The element a walk stands at. Throws its fault when it is not whole.
template <class T>
const T* Good(CAsn1ListCursor<T>& at) {
    if (at.Fault() != nullptr) {
        throw *at.Fault();
    }
    return at.Item();
}

/// Says the elements of a list, as many as a text shows. One that is not whole, or that cannot be
/// said, is outlined in its place with its fault, so that it does not cost the others; where a text
/// has too many of them (CTextLines::TakesOdd()) the fault is thrown.
template <class T, unsigned char Tag, class Say>
void SayEach(const CAsn1ListOf<T, Tag>& list, CTextLines& lines, Say say) {
    const std::size_t count = list.Count();
    std::size_t index = 0;
    for (auto at = list.Elements(); lines.Shows(index, count) && at.Next(); ++index) {
        const CTextLines::Mark before = lines.Here();
        try {
            say(*Good(at));
        } catch (const Exception& fault) {
            if (!lines.TakesOdd()) {
                throw;
            }
            lines.GoBack(before);
            SayOddValue(at.Raw(), lines);
            lines.Fault(fault.message);
        }
    }
}

}  // namespace ca
