#include "asn1/views/MessageViews.h"

#include <cstddef>
#include <string_view>

namespace {

// version, digestAlgorithms, encapContentInfo
constexpr std::size_t kBeforeChoices = 3;

}  // namespace

CAsn1Element CAsn1SignedDataView::AfterContent(unsigned char tag) const {
    // Certificates, then lists: each of them in one of the two places.
    for (std::size_t i = kBeforeChoices; i <= kBeforeChoices + 1; ++i) {
        if (const CAsn1Element member = Member(i); member.tag == tag) {
            return member;
        }
    }
    return {};
}

CAsn1Element CAsn1SignedDataView::SignerInfos() const {
    // certificates [0] and crls [1] may each be left out (RFC 5652, 5.1).
    for (std::size_t i = kBeforeChoices;; ++i) {
        const CAsn1Element member = Member(i);
        const bool isChoices =
            member.tag == ca::ContextConstructed(0) || member.tag == ca::ContextConstructed(1);
        if (!isChoices || i > kBeforeChoices + 1) {
            return isChoices ? CAsn1Element() : member;
        }
    }
}

CAsn1SignedDataView SignedDataIn(const CAsn1ContentInfoView& contentInfo) {
    return contentInfo.Is("id-signedData") ? contentInfo.Content() : CAsn1Element();
}

ca::Exception CAsn1EnvelopeView::RecipientInfosFault() const {
    constexpr std::string_view kName = "EnvelopedData.recipientInfos";
    CAsn1Cursor cursor(Element().content);
    CAsn1Element member;
    std::size_t offset = 0;
    // Member by member, to tell which one keeps the wanted one from being found.
    for (std::size_t i = 0; i <= RecipientInfosIndex(); ++i) {
        offset = static_cast<std::size_t>(cursor.Rest().data() - Element().raw.data());
        if (cursor.AtEnd()) {
            return MakeAsn1Missing(kName, offset);
        }
        if (const Asn1Fault fault = cursor.Next(member); fault != Asn1Fault::kNone) {
            return MakeAsn1Fault(fault, kName, offset);
        }
    }
    return MakeAsn1WrongTag(kName, member.tag, offset);
}
