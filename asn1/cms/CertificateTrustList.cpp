#include "asn1/cms/CertificateTrustList.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1TrustedSubject)
CA_ASN1_DECODE(CAsn1CertificateTrustList)
