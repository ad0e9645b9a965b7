#include "records/scan/LooksLike.h"

#include "asn1/Elements.h"
#include "asn1/views/AttributeCertificateViews.h"
#include "asn1/views/CertificateViews.h"
#include "asn1/views/CrlViews.h"

namespace ca {

bool LooksLikeCertificate(Octets octets) {
    return CAsn1CertificateView(FirstElement(octets)).HasForm();
}

bool LooksLikeAttributeCertificate(Octets octets) {
    return CAsn1AttributeCertificateView(FirstElement(octets)).HasForm();
}

bool LooksLikeCrl(Octets octets) {
    return CAsn1CertificateListView(FirstElement(octets)).HasForm();
}

}  // namespace ca
