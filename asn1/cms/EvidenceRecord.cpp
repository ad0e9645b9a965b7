#include "asn1/cms/EvidenceRecord.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1ArchiveTimeStamp)
CA_ASN1_DECODE(CAsn1EvidenceRecord)
