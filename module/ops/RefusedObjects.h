#pragma once

#include "records/Payload.h"

#include <span>
#include <string>
#include <vector>

namespace ca {

/// Objects of a refused payload that are told of.
inline constexpr std::size_t kMaxRefusedSaid = 3;

/// What keeps an object from being what an operation reads; "" when nothing can be said of it.
using ObjectFault = std::wstring (*)(std::span<const unsigned char> object);

/// Of no certificate, of no revocation list: the element where it stops being one.
std::wstring CertificateFault(std::span<const unsigned char> object);
std::wstring CrlFault(std::span<const unsigned char> object);
/// Of no message the same; of one that is whole, its content.
std::wstring ContentFault(std::span<const unsigned char> object);
/// The same; of a signed message what is wrong inside, or that nobody signed it.
std::wstring SignedMessageFault(std::span<const unsigned char> object);

/// Says why an operation refuses all objects of its payload, for the log:
/// `Object 1 "X509 CRL": TBSCertificate.validity: unexpected element, tag 17, offset 94; Object
/// 2:`... \param items  as DecodePayload() found them; the first kMaxRefusedSaid are told. Cost is
/// linear in their octets.
std::wstring SayRefused(const std::vector<PayloadItem>& items, ObjectFault fault);

}  // namespace ca
