#pragma once

#include "providers/openssl/Owners.h"
#include "records/SignInfo.h"

#include <cstdint>
#include <string>

namespace ca {

// What the record of a signature says of its verification.

/// The text of a signature's code: 16200 is that of a whole chain for certificates.
std::wstring SignatureText(std::uint32_t code);

/// Sets a signature's code, and its text in both members.
void FillSignature(std::uint32_t code, std::wstring text, SignInfo& record);

/// Adds the reason to "not verified".
void SayNotVerified(const std::wstring& why, SignInfo& record);

/// Shows the certificate that was verified: the description may have found another one that fits the
/// signer, or none.
void ShowCertificate(const X509* certificate, SignInfo& record);

}  // namespace ca
