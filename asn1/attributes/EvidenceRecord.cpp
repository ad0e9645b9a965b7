#include "asn1/attributes/EvidenceRecord.h"

#include "asn1/FieldReader.h"

void CAsn1ArchiveTimeStamp::Decode() {
    CFieldReader fields(*this);
    m_digestAlgorithm = fields.OptionalImplicit<CAsn1AlgorithmIdentifier>(0, "digestAlgorithm");
    m_attributes = fields.OptionalImplicit<CAsn1SetOf<CAsn1Any>>(1, "attributes");
    m_reducedHashtree = fields.OptionalImplicit<CAsn1SequenceOf<CAsn1SequenceOf<CAsn1OctetString>>>(
        2, "reducedHashtree");
    m_timeStamp = fields.Required<CAsn1ContentInfo>("timeStamp");
    fields.End();
}

void CAsn1EvidenceRecord::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_digestAlgorithms =
        fields.Required<CAsn1SequenceOf<CAsn1AlgorithmIdentifier>>("digestAlgorithms");
    m_cryptoInfos = fields.OptionalImplicit<CAsn1SequenceOf<CAsn1Any>>(0, "cryptoInfos");
    m_encryptionInfo = fields.OptionalImplicit<CAsn1SequenceOf<CAsn1Any>>(1, "encryptionInfo");
    m_archiveTimeStampSequence =
        fields.Required<CAsn1SequenceOf<CAsn1SequenceOf<CAsn1ArchiveTimeStamp>>>(
            "archiveTimeStampSequence");
    fields.End();
}
