#include "asn1/views/CertificateViews.h"

#include "asn1/views/ExtensionView.h"

CAsn1Element CAsn1TbsCertificateView::Extensions() const {
    // The last member; the unique identifiers before it may be left out.
    constexpr unsigned char kTag = ca::ContextConstructed(3);
    CAsn1Element member;
    for (CAsn1Cursor members(Element().IsConstructed() ? Element().content : ca::Octets());
         members.Step(member);) {
        if (member.tag == kTag) {
            return InnerOf(member);
        }
    }
    return {};
}

bool CAsn1TbsCertificateView::HasForm() const {
    if (Element().tag != kAsn1Sequence) {
        return false;
    }
    // The serial number, then signature, issuer, validity, subject and key, all SEQUENCEs.
    constexpr unsigned kSequences = 5;
    CAsn1Cursor members(Element().content);
    CAsn1Element member;
    // version is DEFAULT v1, so that it may be missing (RFC 5280, 4.1).
    bool isThere = members.Step(member);
    if (isThere && member.tag == ca::ContextConstructed(0)) {
        isThere = members.Step(member);
    }
    isThere = isThere && member.tag == kAsn1Integer;
    for (unsigned i = 0; isThere && i < kSequences; ++i) {
        isThere = members.Step(member) && member.tag == kAsn1Sequence;
    }
    return isThere;
}

CAsn1Element CAsn1CertificateView::ExtensionValue(ca::COid type) const {
    CAsn1Element extension;
    for (CAsn1Cursor extensions(TbsCertificate().Extensions().content);
         extensions.Step(extension);) {
        const CAsn1ExtensionView view(extension);
        if (ca::IsOid(view.ExtnId(), type)) {
            return ca::FirstElement(view.ExtnValue().content);
        }
    }
    return {};
}
