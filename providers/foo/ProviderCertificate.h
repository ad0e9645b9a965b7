#pragma once

#include "records/CertInfo.h"

#include <memory>
#include <string>

namespace ca {

/// Placeholder: the identifier of the one certificate that this provider has.
inline constexpr const wchar_t* kProviderCertId = L"FooCertId";

/// Its description. Placeholder: identifier and names only, and that nothing was verified.
std::unique_ptr<CertInfo2> DescribeProviderCertificate();

/// The same for the certificate that a request names: none means the provider's own.
/// Throws ca::Exception 16102 for an identifier that is not in the store.
std::unique_ptr<CertInfo2> FindProviderCertificate(const std::wstring& id);

}  // namespace ca
