#include "asn1/x509/Admission.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1NamingAuthority)
CA_ASN1_DECODE(CAsn1ProfessionInfo)
CA_ASN1_DECODE(CAsn1Admissions)
CA_ASN1_DECODE(CAsn1AdmissionSyntax)
CA_ASN1_DECODE(CAsn1ProcurationSyntax)
