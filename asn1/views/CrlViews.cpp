#include "asn1/views/CrlViews.h"

#include "asn1/Oid.h"
#include "asn1/views/ExtensionView.h"

namespace {

bool IsTime(unsigned char tag) {
    return tag == kAsn1UtcTime || tag == kAsn1GeneralizedTime;
}

bool IsInteger(unsigned char tag) {
    return tag == kAsn1Integer;
}

bool IsSequence(unsigned char tag) {
    return tag == kAsn1Sequence;
}

// Makes the next element a member when it is of an accepted type.
template <class Accepts>
bool TakeMember(CAsn1Cursor& cursor, CAsn1Element& member, Accepts accepts) {
    return !cursor.AtEnd() && accepts(cursor.PeekTag()) && cursor.Step(member);
}

// The octets of an OCTET STRING that came as one piece; the pieces themselves of another one, which
// read as no names.
ca::Octets WholeSegment(const CAsn1Element& string) {
    if (!string.IsConstructed()) {
        return string.content;
    }
    const CAsn1Element segment = ca::FirstElement(string.content);
    const bool isOne =
        segment.tag == kAsn1OctetString && segment.raw.size() == string.content.size();
    return isOne ? segment.content : string.content;
}

}  // namespace

bool CAsn1CertificateListView::HasForm() const {
    const CAsn1TbsCertListView tbs = TbsCertList();
    return Element().tag == kAsn1Sequence && tbs.Element().tag == kAsn1Sequence &&
           tbs.Signature().Element().tag == kAsn1Sequence &&
           tbs.Issuer().Element().tag == kAsn1Sequence && IsTime(tbs.ThisUpdate().tag);
}

void CAsn1RevokedCertificateView::Read(const CAsn1Element& entry) {
    // One view reads all entries of a list: nothing may stay of the entry before.
    m_userCertificate = {};
    m_revocationDate = {};
    m_crlEntryExtensions = {};
    CAsn1Cursor cursor(entry.tag == kAsn1Sequence ? entry.content : ca::Octets());
    const bool hasSerial = TakeMember(cursor, m_userCertificate, IsInteger);
    const bool hasDate = TakeMember(cursor, m_revocationDate, IsTime);
    TakeMember(cursor, m_crlEntryExtensions, IsSequence);
    m_isWhole = hasSerial && hasDate && cursor.AtEnd();
}

ca::Octets CAsn1RevokedCertificateView::CertificateIssuer() const {
    CAsn1Element extension;
    for (CAsn1Cursor extensions(m_crlEntryExtensions.content); extensions.Step(extension);) {
        const CAsn1ExtensionView view(extension);
        // Met only in lists of other issuers' certificates (RFC 5280, 5.3.3).
        if (!ca::IsOid(view.ExtnId(), "certificateIssuer")) {
            continue;
        }
        const CAsn1Element value = view.ExtnValue();
        if ((value.tag & ~kAsn1ConstructedBit) == kAsn1OctetString) {
            return WholeSegment(value);
        }
    }
    return {};
}
