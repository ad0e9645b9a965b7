#include "asn1/algorithms/RsaParameters.h"

#include "asn1/FieldReader.h"

void CAsn1RsaPublicKey::Decode() {
    CFieldReader fields(*this);
    m_modulus = fields.Required<CAsn1Integer>("modulus");
    m_publicExponent = fields.Required<CAsn1Integer>("publicExponent");
    fields.End();
}

void CAsn1RsassaPssParams::Decode() {
    CFieldReader fields(*this);
    m_hashAlgorithm = fields.OptionalExplicit<CAsn1AlgorithmIdentifier>(0, "hashAlgorithm");
    m_maskGenAlgorithm = fields.OptionalExplicit<CAsn1AlgorithmIdentifier>(1, "maskGenAlgorithm");
    m_saltLength = fields.OptionalExplicit<CAsn1Integer>(2, "saltLength");
    m_trailerField = fields.OptionalExplicit<CAsn1Integer>(3, "trailerField");
    fields.End();
}

void CAsn1RsaesOaepParams::Decode() {
    CFieldReader fields(*this);
    m_hashFunc = fields.OptionalExplicit<CAsn1AlgorithmIdentifier>(0, "hashFunc");
    m_maskGenFunc = fields.OptionalExplicit<CAsn1AlgorithmIdentifier>(1, "maskGenFunc");
    m_pSourceFunc = fields.OptionalExplicit<CAsn1AlgorithmIdentifier>(2, "pSourceFunc");
    fields.End();
}
