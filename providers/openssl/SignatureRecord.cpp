#include "providers/openssl/SignatureRecord.h"

#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Lng.h"
#include "common/sha1.h"
#include "providers/openssl/PrivateKeys.h"
#include "records/fill/CertInfoFill.h"

#include <utility>
#include <vector>

namespace ca {

std::wstring SignatureText(std::uint32_t code) {
    return code == kErrChainValid ? SetZORNAMessage(kMsgSignatureValid)
                                  : ::GetErrorMessage(code, /*prefix=*/false);
}

void FillSignature(std::uint32_t code, std::wstring text, SignInfo& record) {
    record.verifyResultEx.signatureVerifyResult = code;
    record.verifyResultEx.signatureVerifyResultString = text;
    record.verifyResult = std::move(text);
}

void SayNotVerified(const std::wstring& why, SignInfo& record) {
    FillSignature(record.verifyResultEx.signatureVerifyResult,
                  record.verifyResultEx.signatureVerifyResultString + L": " + why, record);
}

void ShowCertificate(const X509* certificate, SignInfo& record) {
    std::vector<unsigned char> der = EncodingOf(certificate);
    if (Sha1Hex(der) != record.signCert.id) {
        CertInfo2 shown;
        FillCertInfo(der, shown);
        record.signCert = std::move(shown);
    }
}

}  // namespace ca
