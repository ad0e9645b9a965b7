#include "asn1/cms/TimeStampedData.h"

#include "asn1/FieldReader.h"

void CAsn1MetaData::Decode() {
    CFieldReader fields(*this);
    m_hashProtected = fields.Required<CAsn1Boolean>("hashProtected");
    m_fileName = fields.Optional<CAsn1UTF8String>("fileName");
    m_mediaType = fields.Optional<CAsn1IA5String>("mediaType");
    m_otherMetaData = fields.Optional<CAsn1SetOf<CAsn1Attribute>>("otherMetaData");
    fields.End();
}

void CAsn1TimeStampAndCrl::Decode() {
    CFieldReader fields(*this);
    m_timeStamp = fields.Required<CAsn1ContentInfo>("timeStamp");
    m_crl = fields.Optional<CAsn1Any>("crl");
    fields.End();
}

void CAsn1OtherEvidence::Decode() {
    CFieldReader fields(*this);
    m_oeType = fields.Required<CAsn1ObjectIdentifier>("oeType");
    m_oeValue = fields.Required<CAsn1Any>("oeValue");
    fields.End();
}

void CAsn1Evidence::Decode() {
    CChoiceReader choice(*this);
    m_tstEvidence = choice.Implicit<CAsn1SequenceOf<CAsn1TimeStampAndCrl>>(0, "tstEvidence");
    m_ersEvidence = choice.Implicit<CAsn1EvidenceRecord>(1, "ersEvidence");
    m_otherEvidence = choice.Implicit<CAsn1OtherEvidence>(2, "otherEvidence");
    choice.End();
}

void CAsn1TimeStampedData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_dataUri = fields.Optional<CAsn1IA5String>("dataUri");
    m_metaData = fields.Optional<CAsn1MetaData>("metaData");
    m_content = fields.Optional<CAsn1OctetString>("content");
    m_temporalEvidence = fields.Required<CAsn1Evidence>("temporalEvidence");
    fields.End();
}
