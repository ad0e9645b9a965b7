#include "module/ops/OtherObjects.h"

#include "asn1/Elements.h"
#include "asn1/views/MessageViews.h"
#include "common/Lng.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/CertificateBundle.h"
#include "records/objects/ObjectList.h"
#include "records/scan/CertificateCursor.h"
#include "records/scan/LooksLike.h"
#include "records/text/DescriptionWords.h"
#include "records/text/TextLines.h"

namespace {

class COtherObjects {
  public:
    COtherObjects(const std::vector<ca::PayloadItem>& items, const ca::IsDescribed& isDescribed,
                  bool inMessages)
        : m_items(items), m_isDescribed(isDescribed), m_inMessages(inMessages) {}

    std::wstring Say() {
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            SayItem(i);
        }
        if (m_count > ca::kMaxOthersSaid) {
            // Beyond the limit they are counted only.
            m_text.append(1, L'\n').append(ca::MoreText(m_count - ca::kMaxOthersSaid));
        }
        return std::move(m_text);
    }

  private:
    void SayItem(std::size_t item) {
        const std::span<const unsigned char> octets = m_items[item].octets;
        if (octets.empty()) {
            Add(item, 0, [] { return SetZORNAMessage(kMsgNotBase64); });
            return;
        }
        CAsn1Element element;
        for (CAsn1Cursor cursor(octets); cursor.StepOrRest(element);) {
            if (!m_isDescribed(item, element.raw)) {
                const auto offset = static_cast<std::size_t>(element.raw.data() - octets.data());
                Add(item, offset, [&] { return KindText(m_items[item], offset, element.raw); });
            } else if (m_inMessages) {
                SayMessage(item, SignedDataIn(element));
            }
        }
    }

    void SayMessage(std::size_t item, const CAsn1SignedDataView& message) {
        CAsn1Element element;
        // Certificates of a message that are described are those that look like one.
        ca::CCertificateCursor choices(message.Certificates().content);
        while (choices.Next(element)) {
            if (!ca::LooksLikeCertificate(element.raw)) {
                AddInside(item, element.raw);
            }
        }
        if (!choices.Unread().empty()) {
            AddInside(item, choices.Unread());
        }
        for (CAsn1Cursor lists(message.Crls().content); lists.StepOrRest(element);) {
            AddInside(item, element.raw);
        }
    }

    void AddInside(std::size_t item, std::span<const unsigned char> object) {
        const auto offset = static_cast<std::size_t>(object.data() - m_items[item].octets.data());
        Add(item, offset, [&] {
            // AttributeCertificateV1 [1], AttributeCertificateV2 [2] (RFC 5652, 10.2.2)
            const bool isAttributes =
                object[0] == ca::ContextConstructed(1) || object[0] == ca::ContextConstructed(2);
            return isAttributes ? ca::FindObjectKind("attributeCertificate")->Name()
                                : KindText(m_items[item], offset, object);
        });
    }

    // The label says what the first object of a block is meant to be.
    static std::wstring KindText(const ca::PayloadItem& item, std::size_t offset,
                                 std::span<const unsigned char> object) {
        ca::ObjectSource source = ca::SourceOf(item);
        source.octets = object;
        const ca::ObjectKind* const kind =
            ca::RecogniseObject(offset == 0 ? source : ca::ObjectSource{{}, {}, object});
        return kind != nullptr ? kind->Name() : ca::OctetsCountText(object.size());
    }

    template <class Text>
    // The text is made only if it is said: telling a kind costs a look at the octets.
    void Add(std::size_t item, std::size_t offset, Text text) {
        if (++m_count > ca::kMaxOthersSaid) {
            return;
        }
        m_text.append(m_text.empty() ? L"" : L"\n").append(WordText(ca::Word::kNotDescribed));
        m_text.append(ca::PlaceText(item, m_items[item], offset)).append(L": ").append(text());
    }

    const std::vector<ca::PayloadItem>& m_items;
    const ca::IsDescribed& m_isDescribed;
    bool m_inMessages;
    std::wstring m_text;
    std::size_t m_count = 0;
};

}  // namespace

namespace ca {

std::wstring SayOthers(const std::vector<PayloadItem>& items, const IsDescribed& isDescribed,
                       bool inMessages) {
    return COtherObjects(items, isDescribed, inMessages).Say();
}

}  // namespace ca
