#include "asn1/x509/ObsoleteExtensions.h"

#include "asn1/FieldReader.h"

void CAsn1OldAuthorityKeyId::Decode() {
    CFieldReader fields(*this);
    m_keyIdentifier = fields.OptionalImplicit<CAsn1OctetString>(0, "keyIdentifier");
    m_certIssuer = fields.OptionalImplicit<CAsn1SequenceOf<CAsn1Any>>(1, "certIssuer");
    m_certSerialNumber = fields.OptionalImplicit<CAsn1Integer>(2, "certSerialNumber");
    fields.End();
}

void CAsn1KeyUsageRestriction::Decode() {
    CFieldReader fields(*this);
    m_certPolicySet =
        fields.Optional<CAsn1SequenceOf<CAsn1SequenceOf<CAsn1ObjectIdentifier>>>("certPolicySet");
    m_restrictedKeyUsage = fields.Optional<CAsn1BitString>("restrictedKeyUsage");
    fields.End();
}

void CAsn1OldKeyAttributes::Decode() {
    CFieldReader fields(*this);
    m_keyIdentifier = fields.Optional<CAsn1OctetString>("keyIdentifier");
    m_intendedKeyUsage = fields.Optional<CAsn1BitString>("intendedKeyUsage");
    m_privateKeyUsagePeriod = fields.Optional<CAsn1PrivateKeyUsagePeriod>("privateKeyUsagePeriod");
    fields.End();
}

void CAsn1OldBasicConstraints::Decode() {
    CFieldReader fields(*this);
    m_subjectType = fields.Required<CAsn1BitString>("subjectType");
    m_pathLenConstraint = fields.Optional<CAsn1Integer>("pathLenConstraint");
    m_subtreesConstraint = fields.OptionalAny("subtreesConstraint");
    fields.End();
}
