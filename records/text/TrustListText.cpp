#include "records/text/TrustListText.h"

#include "asn1/Oid.h"
#include "asn1/cms/CertificateTrustList.h"
#include "asn1/cms/ContentInfo.h"
#include "common/DecimalText.h"
#include "records/text/Decoded.h"
#include "records/text/FieldNames.h"
#include "records/text/GeneralNameText.h"
#include "records/text/SerialText.h"
#include "records/text/SignatureParts.h"
#include "records/text/TimeText.h"

#include <string_view>

namespace ca {

namespace {

void SayField(FieldId id, std::wstring_view text, CTextLines& lines) {
    lines.Line(NameOf(id).Caption(), text);
}

}  // namespace

std::span<const unsigned char> ContentEncoding(const CAsn1EncapsulatedContentInfo& content,
                                               std::vector<unsigned char>& joined) {
    if (content.EContent() == nullptr) {
        return {};
    }
    // PKCS #7 has the content itself there, CMS an OCTET STRING round it (RFC 5652, 5.2.1).
    const CAsn1Element element = ElementOf(*content.EContent());
    if (element.tag == kAsn1OctetString) {
        return element.content;
    }
    if (element.tag != kAsn1ConstructedOctetString) {
        return element.raw;
    }
    joined = OctetStringOf(content.EContent());
    return joined;
}

// A certificate trust list: what it is for and how many it has; the entries are digests.
bool SayTrustList(const CAsn1EncapsulatedContentInfo& content, CTextLines& lines) {
    std::vector<unsigned char> joined;
    if (!IsOid(OctetsOf(content.EContentType()), "msCTL") || content.EContent() == nullptr) {
        return false;
    }
    const CDecoded<CAsn1CertificateTrustList> list(ContentEncoding(content, joined));
    SayEach(*list->SubjectUsage(), lines, [&](const CAsn1ObjectIdentifier& usage) {
        SayField(FieldId::kUsage, OidWithName(OctetsOf(&usage)), lines);
    });
    if (list->ListIdentifier() != nullptr) {
        SayField(FieldId::kListIdentifier, OctetsText(list->ListIdentifier()), lines);
    }
    if (list->SequenceNumber() != nullptr) {
        SayField(FieldId::kNumber, SerialText(OctetsOf(list->SequenceNumber())), lines);
    }
    SayField(FieldId::kThisUpdate, TimeLine(*list->CtlThisUpdate()), lines);
    if (list->CtlNextUpdate() != nullptr) {
        SayField(FieldId::kNextUpdate, TimeLine(*list->CtlNextUpdate()), lines);
    }
    const auto* entries = list->TrustedSubjects();
    SayField(FieldId::kEntries, DecimalText(entries != nullptr ? entries->Count() : 0), lines);
    return true;
}

}  // namespace ca
