#include "asn1/x509/DistributionPoint.h"

#include "asn1/FieldReader.h"

void CAsn1DistributionPoint::Decode() {
    CFieldReader fields(*this);
    m_distributionPoint = fields.OptionalExplicit<CAsn1Any>(0, "distributionPoint");
    m_reasons = fields.OptionalImplicit<CAsn1BitString>(1, "reasons");
    m_cRLIssuer = fields.OptionalImplicit<CAsn1SequenceOf<CAsn1Any>>(2, "cRLIssuer");
    fields.End();
}

void CAsn1IssuingDistributionPoint::Decode() {
    CFieldReader fields(*this);
    m_distributionPoint = fields.OptionalExplicit<CAsn1Any>(0, "distributionPoint");
    m_onlyContainsUserCerts = fields.DefaultImplicit(1, "onlyContainsUserCerts", false);
    m_onlyContainsCACerts = fields.DefaultImplicit(2, "onlyContainsCACerts", false);
    m_onlySomeReasons = fields.OptionalImplicit<CAsn1BitString>(3, "onlySomeReasons");
    m_indirectCRL = fields.DefaultImplicit(4, "indirectCRL", false);
    m_onlyContainsAttributeCerts = fields.DefaultImplicit(5, "onlyContainsAttributeCerts", false);
    fields.End();
}

void CAsn1AaIssuingDistributionPoint::Decode() {
    CFieldReader fields(*this);
    m_distributionPoint = fields.OptionalExplicit<CAsn1Any>(0, "distributionPoint");
    m_onlySomeReasons = fields.OptionalImplicit<CAsn1BitString>(1, "onlySomeReasons");
    m_indirectCRL = fields.DefaultImplicit(2, "indirectCRL", false);
    m_containsUserAttributeCerts = fields.DefaultImplicit(3, "containsUserAttributeCerts", true);
    m_containsAACerts = fields.DefaultImplicit(4, "containsAACerts", true);
    m_containsSOAPublicKeyCerts = fields.DefaultImplicit(5, "containsSOAPublicKeyCerts", true);
    fields.End();
}
