#include "asn1/x509/Logotype.h"

#include "asn1/FieldReader.h"

void CAsn1HashAlgAndValue::Decode() {
    CFieldReader fields(*this);
    m_hashAlg = fields.Required<CAsn1AlgorithmIdentifier>("hashAlg");
    m_hashValue = fields.Required<CAsn1OctetString>("hashValue");
    fields.End();
}

void CAsn1LogotypeDetails::Decode() {
    CFieldReader fields(*this);
    m_mediaType = fields.Required<CAsn1IA5String>("mediaType");
    m_logotypeHash = fields.Required<CAsn1SequenceOf<CAsn1HashAlgAndValue>>("logotypeHash");
    m_logotypeURI = fields.Required<CAsn1SequenceOf<CAsn1IA5String>>("logotypeURI");
    fields.End();
}

void CAsn1LogotypeMedia::Decode() {
    CFieldReader fields(*this);
    m_details = fields.Required<CAsn1LogotypeDetails>("details");
    m_info = fields.Optional<CAsn1Any>("info");
    fields.End();
}

void CAsn1LogotypeData::Decode() {
    CFieldReader fields(*this);
    m_image = fields.Optional<CAsn1SequenceOf<CAsn1LogotypeMedia>>("image");
    m_audio = fields.OptionalImplicit<CAsn1SequenceOf<CAsn1LogotypeMedia>>(1, "audio");
    fields.End();
}

void CAsn1LogotypeReference::Decode() {
    CFieldReader fields(*this);
    m_refStructHash = fields.Required<CAsn1SequenceOf<CAsn1HashAlgAndValue>>("refStructHash");
    m_refStructURI = fields.Required<CAsn1SequenceOf<CAsn1IA5String>>("refStructURI");
    fields.End();
}

void CAsn1LogotypeInfo::Decode() {
    CChoiceReader fields(*this);
    m_direct = fields.Implicit<CAsn1LogotypeData>(0, "direct");
    m_indirect = fields.Implicit<CAsn1LogotypeReference>(1, "indirect");
    fields.End();
}

void CAsn1OtherLogotypeInfo::Decode() {
    CFieldReader fields(*this);
    m_logotypeType = fields.Required<CAsn1ObjectIdentifier>("logotypeType");
    m_info = fields.Required<CAsn1LogotypeInfo>("info");
    fields.End();
}

void CAsn1LogotypeExtn::Decode() {
    CFieldReader fields(*this);
    m_communityLogos =
        fields.OptionalExplicit<CAsn1SequenceOf<CAsn1LogotypeInfo>>(0, "communityLogos");
    m_issuerLogo = fields.OptionalExplicit<CAsn1LogotypeInfo>(1, "issuerLogo");
    m_subjectLogo = fields.OptionalExplicit<CAsn1LogotypeInfo>(2, "subjectLogo");
    m_otherLogos =
        fields.OptionalExplicit<CAsn1SequenceOf<CAsn1OtherLogotypeInfo>>(3, "otherLogos");
    fields.End();
}
