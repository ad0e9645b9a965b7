#include "asn1/keys/TraditionalKeys.h"

#include "asn1/FieldReader.h"

void CAsn1RsaPrivateKey::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_modulus = fields.Required<CAsn1Integer>("modulus");
    m_publicExponent = fields.Required<CAsn1Integer>("publicExponent");
    // RFC 8017, A.1.2. Read for their form only: nothing gives them out.
    for (const char* secret :
         {"privateExponent", "prime1", "prime2", "exponent1", "exponent2", "coefficient"}) {
        fields.Required<CAsn1Integer>(secret);
    }
    fields.OptionalAny("otherPrimeInfos");
    fields.End();
}

CA_ASN1_DECODE(CAsn1DsaPrivateKey)
CA_ASN1_DECODE(CAsn1EcPrivateKey)
