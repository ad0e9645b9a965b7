#include "records/objects/ObjectList.h"

#include "asn1/Elements.h"
#include "common/DecimalText.h"
#include "common/Lng.h"
#include "records/text/VisibleText.h"

#include <span>

namespace {

using ca::PlacedObject;

// Elements of no known kind after the first one of an item. After so many the rest belongs to the
// latest object.
constexpr std::size_t kMaxUnknown = 10000;

// Splits one item.
class CItemSplit {
  public:
    CItemSplit(const ca::PayloadItem& item, std::size_t index, std::size_t most,
               ca::ObjectList& list)
        : m_octets(item.octets), m_index(index), m_most(most), m_list(list) {
        // The first object begins with its item, even of no known kind: what is wrong with it is
        // worth telling.
        PlacedObject first{index, 0, ca::SourceOf(item), nullptr};
        first.kind = ca::RecogniseObject(first.source);
        list.objects.push_back(first);
    }

    void Run() {
        CAsn1Element element;
        CAsn1Cursor cursor(m_octets);
        if (!cursor.Step(element) || IsOnlyKnownWhole()) {
            return;
        }
        while (!cursor.AtEnd() && m_unknown < kMaxUnknown) {
            const std::span<const unsigned char> rest = cursor.Rest();
            // Counted with the unknown ones between them, as nobody looks at what is left.
            if (m_list.objects.size() == m_most) {
                m_list.leftOut += ca::CountElements(cursor);
                EndLast(rest);
                return;
            }
            cursor.StepOrRest(element);
            Take(element.raw, rest);
        }
    }

  private:
    // Members without what holds them are one object (a trust list as programs save it).
    bool IsOnlyKnownWhole() const {
        const PlacedObject& whole = m_list.objects.back();
        const ca::ObjectSource first{{}, {}, ca::FirstElement(m_octets).raw};
        return whole.kind != nullptr && whole.source.label.empty() &&
               ca::RecogniseObject(first) != whole.kind;
    }

    void Take(std::span<const unsigned char> object, std::span<const unsigned char> rest) {
        // Kinds are a SEQUENCE, or an identifier that names a curve.
        if (object[0] != kAsn1Sequence && object[0] != kAsn1ObjectIdentifier) {
            return;  // no kind begins in another way
        }
        const ca::ObjectSource source{{}, {}, object};
        if (const ca::ObjectKind* kind = ca::RecogniseObject(source)) {
            EndLast(rest);
            const auto offset = static_cast<std::size_t>(rest.data() - m_octets.data());
            m_list.objects.push_back({m_index, offset, {{}, {}, rest}, kind});
        } else {
            ++m_unknown;
        }
    }

    // The latest object ends where `rest` begins.
    void EndLast(std::span<const unsigned char> rest) {
        std::span<const unsigned char>& octets = m_list.objects.back().source.octets;
        octets = octets.first(octets.size() - rest.size());
    }

    std::span<const unsigned char> m_octets;
    std::size_t m_index;
    std::size_t m_most;
    std::size_t m_unknown = 0;
    ca::ObjectList& m_list;
};

}  // namespace

namespace ca {

ObjectList ListObjects(const std::vector<PayloadItem>& items, std::size_t most) {
    ObjectList list;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (list.objects.size() == most) {
            list.leftOut += items.size() - i;
            break;
        }
        CItemSplit(items[i], i, most, list).Run();
    }
    return list;
}

std::wstring PlaceText(std::size_t item, const PayloadItem& payload, std::size_t offset) {
    std::wstring text = SetZORNAMessage(kMsgObject) + ca::DecimalText(item + 1);
    if (!payload.label.empty()) {
        text.append(L" \"");
        AppendVisible(text, std::wstring(payload.label.begin(), payload.label.end()));
        text.append(L"\"");
    }
    if (offset != 0) {
        text.append(SetZORNAMessage(kMsgAsn1Offset)).append(ca::DecimalText(offset));
    }
    return text;
}

}  // namespace ca
