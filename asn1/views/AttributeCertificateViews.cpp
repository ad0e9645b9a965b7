#include "asn1/views/AttributeCertificateViews.h"

bool CAsn1AttributeCertificateView::HasForm() const {
    const CAsn1AttributeCertificateInfoView info = AcInfo();
    if (Element().tag != kAsn1Sequence || info.Element().tag != kAsn1Sequence) {
        return false;
    }
    const unsigned char inHolder = InnerOf(info.Holder().Element()).tag;
    // The version of a certificate is tagged [0] too, but holds a number.
    if (info.IsV1()) {
        return inHolder == kAsn1Sequence;
    }
    return info.HasVersion() && info.Holder().Element().tag == kAsn1Sequence &&
           inHolder >= ca::ContextConstructed(0) && inHolder <= ca::ContextConstructed(2);
}
