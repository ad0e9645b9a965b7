#pragma once

#include "records/VerificationResult.h"
#include "records/text/TimeText.h"

#include <cstdint>
#include <string>

namespace ca {

/// "Validity" and "ValidityNumber" of a certificate with this period. Only what was checked is
/// said: outside its period 16123 and its text, otherwise 16199 and "Certificate was not
/// verified"; a period that cannot be read was not checked either.
void FillValidity(const TimeForms& from, const TimeForms& to, std::wstring& text,
                  std::uint32_t& number);

/// Says of signature and certificate that they were not verified: an unchecked signature must never
/// read as a good one.
void FillNotVerified(VerificationResult& result);

}  // namespace ca
