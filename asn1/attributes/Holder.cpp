#include "asn1/attributes/Holder.h"

#include "asn1/FieldReader.h"

void CAsn1IssuerSerial::Decode() {
    CFieldReader fields(*this);
    m_issuer = fields.Required<CAsn1GeneralNames>("issuer");
    m_serial = fields.Required<CAsn1Integer>("serial");
    m_issuerUid = fields.Optional<CAsn1BitString>("issuerUID");
    fields.End();
}

void CAsn1ObjectDigestInfo::Decode() {
    CFieldReader fields(*this);
    m_digestedObjectType = fields.RequiredAny("digestedObjectType");
    m_otherObjectTypeId = fields.Optional<CAsn1ObjectIdentifier>("otherObjectTypeID");
    m_digestAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("digestAlgorithm");
    m_objectDigest = fields.Required<CAsn1BitString>("objectDigest");
    fields.End();
}

void CAsn1Holder::Decode() {
    CFieldReader fields(*this);
    m_baseCertificateId = fields.OptionalImplicit<CAsn1IssuerSerial>(0, "baseCertificateID");
    m_entityName = fields.OptionalImplicit<CAsn1GeneralNames>(1, "entityName");
    m_objectDigestInfo = fields.OptionalImplicit<CAsn1ObjectDigestInfo>(2, "objectDigestInfo");
    fields.End();
}
