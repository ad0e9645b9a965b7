#include "asn1/views/ExtensionView.h"

#include <string_view>

ca::Octets CAsn1ExtensionView::ValueOctets() const {
    const CAsn1Element critical = Critical();
    // critical is left out where it is FALSE: the value stands after whichever is the last before
    // it.
    const CAsn1Element before = critical.raw.empty() ? Member(0) : critical;
    const ca::Octets content = Element().IsConstructed() ? Element().content : ca::Octets();
    return before.raw.empty()
               ? content
               : content.subspan(static_cast<std::size_t>(before.raw.data() - content.data()) +
                                 before.raw.size());
}

CAsn1Element CAsn1ExtensionView::RequireValue() const {
    constexpr std::string_view kName = "Extension.extnValue";
    const ca::Octets octets = ValueOctets();
    const auto offset = static_cast<std::size_t>(octets.data() - Element().raw.data());
    if (octets.empty()) {
        throw MakeAsn1Missing(kName, offset);
    }
    CAsn1Cursor members(octets);
    CAsn1Element value;
    if (const Asn1Fault fault = members.Next(value); fault != Asn1Fault::kNone) {
        throw MakeAsn1Fault(fault, kName, offset);
    }
    if ((value.tag & ~kAsn1ConstructedBit) != kAsn1OctetString) {
        throw MakeAsn1WrongTag(kName, value.tag, offset);
    }
    if (!members.AtEnd()) {
        throw MakeAsn1WrongTag("Extension", members.PeekTag(), offset + value.raw.size());
    }
    return value;
}
