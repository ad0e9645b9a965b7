#include "records/text/RevocationText.h"

#include "asn1/attributes/RevocationReferences.h"
#include "asn1/crl/CertificateList.h"
#include "asn1/x509/Certificate.h"
#include "records/text/Decoded.h"
#include "records/text/NameText.h"
#include "records/text/OcspText.h"
#include "records/text/OutlineText.h"
#include "records/text/SerialText.h"
#include "records/text/SignatureParts.h"
#include "records/text/TimeText.h"

namespace {

using ca::CTextLines;
using Value = std::span<const unsigned char>;

// CrlValidatedID (RFC 5126, 6.2.2): the digest, and who made the list when.
void SayCrlReference(const CAsn1CrlValidatedId& reference, CTextLines& lines) {
    std::wstring line = ca::OtherHashText(*reference.CrlHash());
    if (const CAsn1CrlIdentifier* id = reference.CrlIdentifier()) {
        line +=
            L", " + ca::ReadableName(*id->CrlIssuer()) + L", " + ca::TimeLine(*id->CrlIssuedTime());
        if (id->CrlNumber() != nullptr) {
            line += L", " + ca::SerialText(OctetsOf(id->CrlNumber()));
        }
    }
    lines.Line(line);
}

// OcspResponsesID (RFC 5126, 6.2.2). The digest may be missing, so that it goes in front.
void SayOcspReference(const CAsn1OcspResponsesId& reference, CTextLines& lines) {
    const CAsn1OcspIdentifier& id = *reference.OcspIdentifier();
    std::wstring line =
        ca::ResponderText(*id.OcspResponderId()) + L", " + ca::TimeLine(*id.ProducedAt());
    if (reference.OcspRepHash() != nullptr) {
        line.insert(0, ca::OtherHashText(*reference.OcspRepHash()) + L", ");
    }
    lines.Line(line);
}

// How many elements a list has, below it each of them.
template <class T, class Say>
void SayList(Sentence label, const CAsn1SequenceOf<T>* list, CTextLines& lines, Say say) {
    if (list == nullptr) {
        return;
    }
    ca::SayCount(label, list->Count(), lines);
    const CTextLines::Level level(lines);
    ca::SayEach(*list, lines, [&](const T& item) { say(item, lines); });
}

void SayOther(const CAsn1Any* other, CTextLines& lines) {
    if (other != nullptr) {
        lines.Line(kMsgOtherRevocation, L"");
        const CTextLines::Level level(lines);
        ca::SayUnknownValue(other->Raw(), lines);
    }
}

// Only what tells the certificates apart: a store of values may hold whole chains.
void SayCertificate(const CAsn1Certificate& certificate, CTextLines& lines) {
    const CAsn1TbsCertificate& tbs = *certificate.TbsCertificate();
    lines.Line(ca::ReadableName(*tbs.Subject()));
    const CTextLines::Level level(lines);
    lines.Line(kMsgIssuer, ca::ReadableName(*tbs.Issuer()));
    lines.Line(kMsgSerial, ca::SerialText(OctetsOf(tbs.SerialNumber())));
}

// kRead: no tree of blocks for a list that may have a million entries.
void SayCrl(const CAsn1Any& any, CTextLines& lines) {
    const ca::CDecoded<CAsn1CertificateList> list(any.Raw(), Asn1Blocks::kRead);
    const CAsn1TbsCertList& tbs = *list->TbsCertList();
    lines.Line(ca::ReadableName(*tbs.Issuer()) + L", " + ca::TimeLine(*tbs.ThisUpdate()));
}

void SayOcsp(const CAsn1Any& any, CTextLines& lines) {
    ca::SayOcspResponse(any.Raw(), lines);
}

}  // namespace

namespace ca {

std::wstring OtherHashText(const CAsn1OtherHash& hash) {
    if (const CAsn1OtherHashAlgAndValue* other = hash.OtherHash()) {
        return DigestText(*other->HashAlgorithm(), other->HashValue());
    }
    // OtherHash ::= CHOICE: a bare OCTET STRING is a digest by SHA-1 (RFC 5126, 5.7.3.3).
    return DigestText("id-sha1", hash.Sha1Hash());
}

void SayRevocationRefs(Value value, CTextLines& lines) {
    const CDecoded<CAsn1SequenceOf<CAsn1CrlOcspRef>> references(value);
    SayEach(*references, lines, [&](const CAsn1CrlOcspRef& reference) {
        const auto* crls = reference.Crlids();
        const auto* responses = reference.Ocspids();
        SayList(kMsgCrls, crls != nullptr ? crls->Crls() : nullptr, lines, SayCrlReference);
        SayList(kMsgOcspResponses, responses != nullptr ? responses->OcspResponses() : nullptr,
                lines, SayOcspReference);
        SayOther(reference.OtherRev(), lines);
    });
}

void SayCertificateValues(Value value, CTextLines& lines) {
    const CDecoded<CAsn1SequenceOf<CAsn1Certificate>> certificates(value, Asn1Blocks::kRead);
    SayList(kMsgCertificates, &*certificates, lines, SayCertificate);
}

// RevocationValues (RFC 5126, 6.3.4).
void SayRevocationValues(Value value, CTextLines& lines) {
    const CDecoded<CAsn1RevocationValues> values(value, Asn1Blocks::kRead);
    SayList(kMsgCrls, values->CrlVals(), lines, SayCrl);
    SayList(kMsgOcspResponses, values->OcspVals(), lines, SayOcsp);
    SayOther(values->OtherRevVals(), lines);
}

}  // namespace ca
