#include "asn1/attributes/SigningCertificate.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1EssCertId)
CA_ASN1_DECODE(CAsn1SigningCertificate)
CA_ASN1_DECODE(CAsn1EssCertIdV2)
CA_ASN1_DECODE(CAsn1SigningCertificateV2)
CA_ASN1_DECODE(CAsn1OtherHashAlgAndValue)
CA_ASN1_DECODE(CAsn1OtherHash)
CA_ASN1_DECODE(CAsn1OtherCertId)
CA_ASN1_DECODE(CAsn1OtherSigningCertificate)
