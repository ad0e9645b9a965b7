// Signing, hashing and encrypting: placeholder results.

#include "common/Encode.h"
#include "common/Lazy.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/CryptoModule.h"
#include "module/RecordTypes.h"
#include "records/FileData.h"
#include "records/ValidityText.h"

#include <memory>
#include <vector>

namespace {

constexpr std::uint32_t kSignatureSize = 64;  // octets of the placeholder

// RFC 7468 8, 9: the armour in which a message that is signed again may come.
ca::CLazy<std::vector<ca::Base64Wrapper>> messageWrappers([] {
    return std::vector<ca::Base64Wrapper>{
        {"-----BEGIN CMS-----", "-----END CMS-----"},
        {"-----BEGIN PKCS7-----", "-----END PKCS7-----"},
    };
});

// The octets that are to be signed: the file data, decoded where it is Base64.
ca::Blob DecodedInput(ca::CryptPacket& packet) {
    ca::Blob input;
    if (const ca::FileData* payload = ca::FindFileData(packet.Request())) {
        unsigned char* octets = nullptr;
        unsigned length = 0;
        ca::DecodeBase64IfNeeded(payload->data(), payload->size(), messageWrappers.Get(), &octets,
                                 length);
        input.Adopt(ca::BytePtr(octets), length);
    }
    return input;
}

void AnswerFileData(ca::CryptPacket& packet, std::uint32_t size) {
    auto result = std::make_unique<ca::FileData>();
    result->AssignZeros(size);
    packet.Response().SetObject(result.release(), /*clear=*/true);  // the container owns it now
}

}  // namespace

// Signs the file data. Placeholder: the input is decoded, and the signature is 64 octets of
// nothing.
void CCryptoModule::Sign(ca::CryptPacket& packet) {
    DecodedInput(packet);
    AnswerFileData(packet, kSignatureSize);
    LogEvent(SetZORNAMessage(kMsgSignatureWritten), false);
}

// Signs a hash value. Placeholder, as Sign().
void CCryptoModule::SignHash(ca::CryptPacket& packet) {
    Sign(packet);
}

// Signs without a message around the signature. Placeholder: empty file data.
void CCryptoModule::SignRaw(ca::CryptPacket& packet) {
    ca::LogLine(L"Received cert id \"" + packet.request.senderCertId + L"\"", false);
    AnswerFileData(packet, 0);
}

// Placeholder: empty file data.
void CCryptoModule::SignHashRaw(ca::CryptPacket& packet) {
    AnswerFileData(packet, 0);
}

// Placeholder: empty file data.
void CCryptoModule::Encrypt(ca::CryptPacket& packet) {
    AnswerFileData(packet, 0);
}

// Placeholder: empty file data.
void CCryptoModule::CreateHash(ca::CryptPacket& packet) {
    AnswerFileData(packet, 0);
}

// Placeholder: nothing is checked, and the codes say so.
void CCryptoModule::VerifyRaw(ca::CryptPacket& packet) {
    auto result = std::make_unique<ca::VerificationResult>();
    ca::FillNotVerified(*result);
    packet.Response().SetObject(result.release(), /*clear=*/true);
}
