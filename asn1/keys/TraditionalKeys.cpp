#include "asn1/keys/TraditionalKeys.h"

#include "asn1/FieldReader.h"

void CAsn1RsaPrivateKey::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_modulus = fields.Required<CAsn1Integer>("modulus");
    m_publicExponent = fields.Required<CAsn1Integer>("publicExponent");
    for (const char* secret :
         {"privateExponent", "prime1", "prime2", "exponent1", "exponent2", "coefficient"}) {
        fields.Required<CAsn1Integer>(secret);
    }
    fields.OptionalAny("otherPrimeInfos");
    fields.End();
}

void CAsn1DsaPrivateKey::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_p = fields.Required<CAsn1Integer>("p");
    m_q = fields.Required<CAsn1Integer>("q");
    m_g = fields.Required<CAsn1Integer>("g");
    m_y = fields.Required<CAsn1Integer>("y");
    m_x = fields.Required<CAsn1Integer>("x");
    fields.End();
}

void CAsn1EcPrivateKey::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_privateKey = fields.Required<CAsn1OctetString>("privateKey");
    m_parameters = fields.OptionalExplicit<CAsn1EcpkParameters>(0, "parameters");
    m_publicKey = fields.OptionalExplicit<CAsn1BitString>(1, "publicKey");
    fields.End();
}
