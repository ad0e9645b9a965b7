#include "asn1/attributes/SignaturePolicy.h"

#include "asn1/FieldReader.h"

namespace {

// Hash and qualifiers are both a SEQUENCE that begins with one, and both may be left out; only the
// hash goes on with an OCTET STRING.
bool HasHash(std::span<unsigned char> policy) {
    CAsn1Cursor members(policy);
    CAsn1Element member;
    for (int i = 0; i < 2; ++i) {
        if (members.AtEnd() || members.Next(member) != Asn1Fault::kNone) {
            return false;
        }
    }
    CAsn1Cursor inside(member.IsConstructed() ? member.content : std::span<unsigned char>());
    return !inside.AtEnd() && inside.Next(member) == Asn1Fault::kNone && !inside.AtEnd() &&
           (inside.PeekTag() & ~kAsn1ConstructedBit) == kAsn1OctetString;
}

}  // namespace

void CAsn1SigPolicyQualifierInfo::Decode() {
    CFieldReader fields(*this);
    m_sigPolicyQualifierId = fields.Required<CAsn1ObjectIdentifier>("sigPolicyQualifierId");
    m_sigQualifier = fields.OptionalAny("sigQualifier");
    fields.End();
}

void CAsn1SignaturePolicyId::Decode() {
    CFieldReader fields(*this);
    m_sigPolicyId = fields.Required<CAsn1ObjectIdentifier>("sigPolicyId");
    m_sigPolicyHash = HasHash(ContentOctets())
                          ? fields.Optional<CAsn1OtherHashAlgAndValue>("sigPolicyHash")
                          : nullptr;
    m_sigPolicyQualifiers =
        fields.Optional<CAsn1SequenceOf<CAsn1SigPolicyQualifierInfo>>("sigPolicyQualifiers");
    fields.End();
}

void CAsn1CommitmentTypeIndication::Decode() {
    CFieldReader fields(*this);
    m_commitmentTypeId = fields.Required<CAsn1ObjectIdentifier>("commitmentTypeId");
    m_commitmentTypeQualifier =
        fields.Optional<CAsn1SequenceOf<CAsn1Any>>("commitmentTypeQualifier");
    fields.End();
}

void CAsn1SignerLocation::Decode() {
    CFieldReader fields(*this);
    m_countryName = fields.OptionalExplicit<CAsn1DirectoryString>(0, "countryName");
    m_localityName = fields.OptionalExplicit<CAsn1DirectoryString>(1, "localityName");
    m_postalAddress = fields.OptionalImplicit<CAsn1SequenceOf<CAsn1Any>>(2, "postalAddress");
    fields.End();
}
