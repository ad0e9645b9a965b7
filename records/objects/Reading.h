#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Typed.h"
#include "common/Exception.h"
#include "records/objects/DescriptionBuilder.h"
#include "records/text/VisibleText.h"

#include <optional>
#include <span>

// Reading in order to describe: as much as there is, every fault told once.

namespace ca {

/// A typed object as far as it can be read; of octets that end too early what is there of it.
template <class T>
class CReading {
  public:
    CReading(std::span<const unsigned char> octets, CDescriptionBuilder& builder) {
        const std::uint32_t offset = builder.OffsetOf(octets);
        const std::span<const unsigned char> whole = builder.Mended(octets);
        try {
            m_root.emplace(whole, Asn1Blocks::kRead);
            (*m_root)->GetBlock()->offset = offset;
            (*m_root)->Decode();
        } catch (const Exception& fault) {
            builder.Fault(fault.message);
        }
        if (m_root && !m_root->Rest().empty()) {
            builder.Fault(SetZORNAMessage(kMsgAsn1TrailingData));
        }
    }
    /// Null when the octets are no T at all.
    const T* Get() const { return m_root ? &**m_root : nullptr; }

  private:
    std::optional<CAsn1Root<T>> m_root;
};

/// What `member` gives of an object, null for no object: members of members in one line.
template <class T, class R>
R Of(const T* object, R (T::*member)() const) {
    return object != nullptr ? (object->*member)() : R();
}

/// Describes the elements of a list, as many as are shown. What is not an element of its type is
/// shown as octets. Null says nothing.
template <class T, unsigned char Tag, class Each>
void SayList(CDescriptionBuilder& builder, FieldId id, const CAsn1ListOf<T, Tag>* list, Each each) {
    if (list == nullptr) {
        return;
    }
    const CDescriptionBuilder::Level level(builder, id, FieldForm::kList);
    const std::size_t count = list->Count();
    std::size_t index = 0;
    for (auto at = list->Elements(); index < kMaxListed && at.Next(); ++index) {
        if (at.Fault() != nullptr) {
            builder.Fault(at.Fault()->message);
        }
        if (at.Item() != nullptr) {
            each(*at.Item());
        } else {
            builder.Unreadable(id, at.Raw());
        }
    }
    if (index < count) {
        builder.LeaveOut(count - index);
    }
}

/// The same for elements that are groups of fields.
template <class T, unsigned char Tag, class Each>
void SayGroups(CDescriptionBuilder& builder, FieldId id, const CAsn1ListOf<T, Tag>* list,
               Each each) {
    SayList(builder, id, list, [&](const T& element) {
        const CDescriptionBuilder::Level level(builder, id, FieldForm::kGroup);
        each(element);
    });
}

}  // namespace ca
