#include "asn1/x509/BiometricData.h"

#include "asn1/FieldReader.h"

void CAsn1BiometricData::Decode() {
    CFieldReader fields(*this);
    m_typeOfBiometricData = fields.Required<CAsn1Any>("typeOfBiometricData");
    m_hashAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("hashAlgorithm");
    m_biometricDataHash = fields.Required<CAsn1OctetString>("biometricDataHash");
    m_sourceDataUri = fields.Optional<CAsn1IA5String>("sourceDataUri");
    fields.End();
}
