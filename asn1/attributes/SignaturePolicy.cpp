#include "asn1/attributes/SignaturePolicy.h"

#include "asn1/FieldReader.h"

namespace {

// Hash and qualifiers are both a SEQUENCE that begins with one, and both may be left out; only the
// hash goes on with an OCTET STRING.
bool HasHash(std::span<const unsigned char> policy) {
    CAsn1Cursor members(policy);
    CAsn1Element member;
    for (int i = 0; i < 2; ++i) {
        if (members.AtEnd() || members.Next(member) != Asn1Fault::kNone) {
            return false;
        }
    }
    CAsn1Cursor inside(member.IsConstructed() ? member.content : std::span<const unsigned char>());
    return !inside.AtEnd() && inside.Next(member) == Asn1Fault::kNone && !inside.AtEnd() &&
           (inside.PeekTag() & ~kAsn1ConstructedBit) == kAsn1OctetString;
}

}  // namespace

CA_ASN1_DECODE(CAsn1SigPolicyQualifierInfo)

void CAsn1SignaturePolicyId::Decode() {
    CFieldReader fields(*this);
    m_sigPolicyId = fields.Required<CAsn1ObjectIdentifier>("sigPolicyId");
    // SignaturePolicyId (RFC 5126, 5.8.1).
    m_sigPolicyHash = HasHash(ContentOctets())
                          ? fields.Optional<CAsn1OtherHashAlgAndValue>("sigPolicyHash")
                          : nullptr;
    m_sigPolicyQualifiers =
        fields.Optional<CAsn1SequenceOf<CAsn1SigPolicyQualifierInfo>>("sigPolicyQualifiers");
    fields.End();
}

CA_ASN1_DECODE(CAsn1CommitmentTypeIndication)
CA_ASN1_DECODE(CAsn1SignerLocation)
