// Signing, hashing and encrypting.

#include "common/Encode.h"
#include "common/Lazy.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/CryptoModule.h"
#include "module/Provider.h"
#include "module/ProviderCall.h"
#include "module/RecordTypes.h"
#include "module/ops/RequestPayload.h"
#include "records/FileData.h"

#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace {

// RFC 7468, 8, 9: the armour in which a message that is signed again may come.
ca::CLazy<std::vector<ca::Base64Wrapper>> messageWrappers([] {
    return std::vector<ca::Base64Wrapper>{
        {"-----BEGIN CMS-----", "-----END CMS-----"},
        {"-----BEGIN PKCS7-----", "-----END PKCS7-----"},
    };
});

// The file data decoded, where they are Base64; none where they are not.
std::optional<ca::Blob> DecodedInput(ca::CryptPacket& packet) {
    const ca::FileData* const payload = ca::FindFileData(packet.Request());
    unsigned char* octets = nullptr;
    unsigned length = 0;
    if (payload == nullptr || !ca::DecodeBase64IfNeeded(payload->data(), payload->size(),
                                                        messageWrappers.Get(), &octets, length)) {
        return std::nullopt;
    }
    ca::Blob input;
    input.Adopt(ca::BytePtr(octets), length);
    return input;
}

// "hashAlg" as it was read: the octets of the wide text.
std::wstring DigestText(const ca::CryptRequest& request) {
    std::wstring text(request.params.size() / sizeof(wchar_t), L'\0');
    if (!text.empty()) {
        std::memcpy(text.data(), request.params.data(), text.size() * sizeof(wchar_t));
    }
    return text;
}

// What a request wants to be signed; views of it.
ca::SignArguments ArgumentsOf(ca::CryptPacket& packet) {
    const ca::CryptRequest& request = packet.request;
    return {.content = ca::PayloadOctets(packet),
            .message = request.sendSignData.Octets(),
            .certId = request.senderCertId,
            .digest = DigestText(request),
            .isAttached = request.isAttached,
            .addSigner = request.addSigner,
            .signerIndex = (request.present & ca::kPresentSignerIndex) != 0
                               ? std::optional(request.signerIndex)
                               : std::nullopt,
            .comment = request.comment,
            .uri = request.uri};
}

using SignOperation = void (ca::IProvider::*)(ca::CProviderCall&, const ca::SignArguments&,
                                              ca::FileData&);

// Answers with what the provider makes of the arguments, as file data.
void Answer(CCryptoModule& module, ca::IProvider& provider, SignOperation operation,
            ca::CryptPacket& packet, const ca::SignArguments& arguments) {
    auto result = std::make_unique<ca::FileData>();
    ca::CProviderCall call(packet, module);
    (provider.*operation)(call, arguments, *result);
    packet.Response().SetObject(result.release(), /*clear=*/true);  // the container owns it now
}

// The same of file data that may be Base64 text.
void AnswerMessage(CCryptoModule& module, ca::IProvider& provider, SignOperation operation,
                   ca::CryptPacket& packet) {
    const std::optional<ca::Blob> decoded = DecodedInput(packet);
    ca::SignArguments arguments = ArgumentsOf(packet);
    if (decoded) {
        arguments.content = decoded->Octets();
    }
    Answer(module, provider, operation, packet, arguments);
    LogEvent(SetZORNAMessage(kMsgSignatureWritten), /*isError=*/false);
}

}  // namespace

// Signs the file data; answers with a message.
void CCryptoModule::Sign(ca::CryptPacket& packet) {
    AnswerMessage(*this, *m_provider, &ca::IProvider::Sign, packet);
}

// The same of a hash value.
void CCryptoModule::SignHash(ca::CryptPacket& packet) {
    AnswerMessage(*this, *m_provider, &ca::IProvider::SignHash, packet);
}

// Adds a signature to a message.
void CCryptoModule::CoSign(ca::CryptPacket& packet) {
    ca::CProviderCall call(packet, *this);
    m_provider->CoSign(call, ArgumentsOf(packet), packet.Response());
}

// Signs without a message around the signature.
void CCryptoModule::SignRaw(ca::CryptPacket& packet) {
    ca::LogLine(L"Received cert id \"" + packet.request.senderCertId + L"\"", /*isError=*/false);
    Answer(*this, *m_provider, &ca::IProvider::SignRaw, packet, ArgumentsOf(packet));
}

void CCryptoModule::SignHashRaw(ca::CryptPacket& packet) {
    Answer(*this, *m_provider, &ca::IProvider::SignHashRaw, packet, ArgumentsOf(packet));
}

void CCryptoModule::CreateHash(ca::CryptPacket& packet) {
    Answer(*this, *m_provider, &ca::IProvider::CreateHash, packet, ArgumentsOf(packet));
}

// Verifies a signature that has no message around it.
void CCryptoModule::VerifyRaw(ca::CryptPacket& packet) {
    auto result = std::make_unique<ca::VerificationResult>();
    const ca::CryptRequest& request = packet.request;
    ca::CProviderCall call(packet, *this);
    m_provider->VerifyRaw(call,
                          {ca::PayloadOctets(packet), request.sendSignData.Octets(),
                           request.senderCertId, DigestText(request)},
                          *result);
    packet.Response().SetObject(result.release(), /*clear=*/true);
}

// Encrypts the file data; answers with a message.
void CCryptoModule::Encrypt(ca::CryptPacket& packet) {
    auto message = std::make_unique<ca::FileData>();
    ca::CProviderCall call(packet, *this);
    m_provider->Encrypt(call, ca::PayloadOctets(packet).value_or(std::span<const unsigned char>()),
                        *message);
    packet.Response().SetObject(message.release(), /*clear=*/true);
}

void CCryptoModule::ShowSign(ca::CryptPacket& packet) {
    ca::CProviderCall call(packet, *this);
    m_provider->ShowSign(call);
}
