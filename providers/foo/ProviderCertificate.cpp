#include "providers/foo/ProviderCertificate.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "records/fill/ValidityText.h"

namespace ca {

std::unique_ptr<CertInfo2> DescribeProviderCertificate() {
    auto info = std::make_unique<CertInfo2>();
    info->id = kProviderCertId;
    info->description.readable = L"Foo Subject";
    info->issuer.readable = L"Foo Issuer";
    FillValidity({}, {}, info->validity, info->validityNumber);
    return info;
}

std::unique_ptr<CertInfo2> FindProviderCertificate(const std::wstring& id) {
    if (!id.empty() && id != kProviderCertId) {
        throw Exception(kErrStore, SetZORNAMessage(kMsgNoSuchCertificate) + (L'"' + id + L'"'));
    }
    return DescribeProviderCertificate();
}

}  // namespace ca
