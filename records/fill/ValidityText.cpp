#include "records/fill/ValidityText.h"

#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Lng.h"

#include <ctime>

namespace ca {

void FillValidity(const TimeForms& from, const TimeForms& to, std::wstring& text,
                  std::uint32_t& number) {
    const std::int64_t now = std::time(nullptr);
    // An end that could not be read is no reason to call a certificate expired.
    const bool isOutside =
        (from.seconds && now < *from.seconds) || (to.seconds && now > *to.seconds);
    // Inside the period nothing is known: only a verification could tell.
    number = isOutside ? kErrCertTimeInvalid : kErrNotVerified;
    text = isOutside ? ::GetErrorMessage(kErrCertTimeInvalid, /*prefix=*/false)
                     : SetZORNAMessage(kMsgCertNotVerified);
}

void FillNotVerified(VerificationResult& result) {
    result.signatureVerifyResult = kErrNotVerified;
    result.signatureVerifyResultString = SetZORNAMessage(kMsgSignatureNotVerified);
    result.certificateVerifyResult = kErrNotVerified;
    result.certificateVerifyResultString = SetZORNAMessage(kMsgCertNotVerified);
}

}  // namespace ca
