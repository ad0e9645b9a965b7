#include "asn1/algorithms/PasswordParameters.h"

#include "asn1/FieldReader.h"

void CAsn1PbeParameter::Decode() {
    CFieldReader fields(*this);
    m_salt = fields.Required<CAsn1OctetString>("salt");
    m_iterationCount = fields.Required<CAsn1Integer>("iterationCount");
    fields.End();
}

void CAsn1Pbkdf2Salt::Decode() {
    CChoiceReader choice(*this);
    m_specified = choice.Alternative<CAsn1OctetString>("specified");
    m_otherSource = choice.Alternative<CAsn1AlgorithmIdentifier>("otherSource");
    choice.End();
}

void CAsn1Pbkdf2Params::Decode() {
    CFieldReader fields(*this);
    m_salt = fields.Required<CAsn1Pbkdf2Salt>("salt");
    m_iterationCount = fields.Required<CAsn1Integer>("iterationCount");
    m_keyLength = fields.Optional<CAsn1Integer>("keyLength");
    m_prf = fields.Optional<CAsn1AlgorithmIdentifier>("prf");
    fields.End();
}

void CAsn1Pbes2Params::Decode() {
    CFieldReader fields(*this);
    m_keyDerivationFunc = fields.Required<CAsn1AlgorithmIdentifier>("keyDerivationFunc");
    m_encryptionScheme = fields.Required<CAsn1AlgorithmIdentifier>("encryptionScheme");
    fields.End();
}

void CAsn1Pbmac1Params::Decode() {
    CFieldReader fields(*this);
    m_keyDerivationFunc = fields.Required<CAsn1AlgorithmIdentifier>("keyDerivationFunc");
    m_messageAuthScheme = fields.Required<CAsn1AlgorithmIdentifier>("messageAuthScheme");
    fields.End();
}

void CAsn1ScryptParams::Decode() {
    CFieldReader fields(*this);
    m_salt = fields.Required<CAsn1OctetString>("salt");
    m_costParameter = fields.Required<CAsn1Integer>("costParameter");
    m_blockSize = fields.Required<CAsn1Integer>("blockSize");
    m_parallelizationParameter = fields.Required<CAsn1Integer>("parallelizationParameter");
    m_keyLength = fields.Optional<CAsn1Integer>("keyLength");
    fields.End();
}
