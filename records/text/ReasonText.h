#pragma once

#include "asn1/Asn1Typed.h"

#include <cstdint>
#include <string>

namespace ca {

/// A CRLReason (RFC 5280, 5.3.1) in words; the number for one that is not defined.
std::wstring ReasonText(std::uint32_t reason);

/// ReasonFlags (RFC 5280, 4.2.1.13), ", " between them.
std::wstring ReasonFlagsText(const CAsn1Bits& flags);

}  // namespace ca
