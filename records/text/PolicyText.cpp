#include "records/text/PolicyText.h"

#include "asn1/Elements.h"
#include "asn1/Oid.h"
#include "asn1/x509/PolicyInformation.h"
#include "common/DecimalText.h"
#include "records/text/Decoded.h"
#include "records/text/GeneralNameText.h"
#include "records/text/OutlineText.h"
#include "records/text/SharedFormatters.h"

#include <string_view>

namespace {

using ca::CTextLines;

std::wstring ElementText(const CAsn1Any* any) {
    return ca::ValueText(ca::FirstElement(any->Raw()));
}

// PolicyQualifierInfo (RFC 5280, 4.2.1.4): an address of the practice statement, or a notice.
void SayQualifier(const CAsn1PolicyQualifierInfo& info, CTextLines& lines) {
    const ca::OidInfo* const type = ca::FindOid(OctetsOf(info.PolicyQualifierId()));
    if (type == ca::COid("id-qt-cps")) {
        lines.Line(kMsgCps, ElementText(info.Qualifier()));
    } else if (type == ca::COid("id-qt-unotice")) {
        ca::SayNotice(*info.Qualifier(), lines);
    } else {
        lines.Line(ca::OidWithName(OctetsOf(info.PolicyQualifierId())), L"");
        // Qualifiers of others: anything may stand there.
        const CTextLines::Level level(lines);
        ca::SayOutline(ca::FirstElement(info.Qualifier()->Raw()), lines);
    }
}

}  // namespace

namespace ca {

std::wstring NumberText(const CAsn1Object* number) {
    const std::int64_t value = IntegerOf(number, -1);
    // Negative, or past 64 bits: its octets.
    return value >= 0 ? ca::DecimalText(value) : Hex(OctetsOf(number));
}

// UserNotice (RFC 5280, 4.2.1.4): the text first, then where it is printed.
void SayNotice(const CAsn1Any& qualifier, CTextLines& lines) {
    CAsn1Root<CAsn1UserNotice> notice(qualifier.Raw());
    notice->Decode();
    lines.Line(kMsgNotice, notice->ExplicitText() != nullptr ? ElementText(notice->ExplicitText())
                                                             : std::wstring());
    const CAsn1NoticeReference* reference = notice->NoticeRef();
    if (reference == nullptr) {
        return;
    }
    const CTextLines::Level level(lines);
    lines.Line(kMsgOrganization, ElementText(reference->Organization()));
    std::wstring numbers;
    const std::size_t count = reference->NoticeNumbers()->Count();
    std::size_t index = 0;
    for (auto at = reference->NoticeNumbers()->Elements(); index < kMaxListed && at.Next();
         ++index) {
        AppendListed(numbers, NumberText(Good(at)));
    }
    if (index < count) {
        AppendListed(numbers, MoreText(count - index));
        lines.Fault(MoreText(count - index));
    }
    lines.Line(kMsgNoticeNumbers, numbers);
}

void SayPolicy(const CAsn1PolicyInformation& policy, CTextLines& lines) {
    lines.Line(OidWithName(OctetsOf(policy.PolicyIdentifier())));
    if (policy.PolicyQualifiers() == nullptr) {
        return;
    }
    const CTextLines::Level level(lines);
    SayEach(*policy.PolicyQualifiers(), lines,
            [&](const CAsn1PolicyQualifierInfo& qualifier) { SayQualifier(qualifier, lines); });
}

}  // namespace ca
