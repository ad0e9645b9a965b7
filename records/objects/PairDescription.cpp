#include "asn1/x509/CertificatePair.h"
#include "records/objects/Describers.h"
#include "records/objects/DescriptionParts.h"
#include "records/objects/Reading.h"

// Certificates that come together (ITU-T X.509, 10.2 and 11.2.3).

namespace ca {

void DescribeCertificatePair(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1CertificatePair> pair(source.octets, builder);
    if (pair.Get() == nullptr) {
        return;
    }
    if (const CAsn1Any* certificate = pair.Get()->IssuedToThisCa()) {
        SaySignedObject(builder, FieldId::kIssuedToThisCa, certificate->Raw());
    }
    if (const CAsn1Any* certificate = pair.Get()->IssuedByThisCa()) {
        SaySignedObject(builder, FieldId::kIssuedByThisCa, certificate->Raw());
    }
}

void DescribeCertificatePath(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1SequenceOf<CAsn1Any>> path(source.octets, builder);
    SaySignedObjects(builder, FieldId::kCertificates, path.Get());
}

}  // namespace ca
