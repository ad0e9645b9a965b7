#include "module/ops/RefusedObjects.h"

#include "asn1/cms/ContentInfo.h"
#include "asn1/cms/SignedData.h"
#include "asn1/crl/CertificateList.h"
#include "asn1/x509/Certificate.h"
#include "common/DecimalText.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "records/fill/SignInfoFill.h"
#include "records/objects/ObjectList.h"
#include "records/text/Decoded.h"
#include "records/text/GeneralNameText.h"

namespace {

// Element and offset of the first fault in a T; "" for a whole one.
template <class T>
std::wstring FaultIn(std::span<const unsigned char> octets) {
    try {
        const ca::CDecoded<T> decoded(octets);
    } catch (const ca::Exception& fault) {
        return fault.message;
    }
    return {};
}

}  // namespace

namespace ca {

std::wstring CertificateFault(std::span<const unsigned char> object) {
    return FaultIn<CAsn1Certificate>(object);
}

std::wstring CrlFault(std::span<const unsigned char> object) {
    return FaultIn<CAsn1CertificateList>(object);
}

std::wstring SignedMessageFault(std::span<const unsigned char> object) {
    if (const auto signedData = FindSignedData(object); !signedData.empty()) {
        // A message that reads well was refused for having no signers.
        const std::wstring fault = FaultIn<CAsn1SignedData>(signedData);
        return fault.empty() ? SetZORNAMessage(kMsgNoSigners) : fault;
    }
    return ContentFault(object);
}

std::wstring ContentFault(std::span<const unsigned char> object) {
    const std::wstring fault = FaultIn<CAsn1ContentInfo>(object);
    if (!fault.empty()) {
        return fault;
    }
    const CDecoded<CAsn1ContentInfo> message(object);
    return SetZORNAMessage(kMsgContent) + (L": " + OidWithName(OctetsOf(message->ContentType())));
}

std::wstring SayRefused(const std::vector<PayloadItem>& items, ObjectFault fault) {
    std::wstring text;
    // Three are enough to see what is wrong with a payload; a log is not a listing.
    for (std::size_t i = 0; i < items.size() && i < kMaxRefusedSaid; ++i) {
        const PayloadItem& item = items[i];
        const std::wstring words =
            item.octets.empty() ? SetZORNAMessage(kMsgNotBase64) : fault(item.octets);
        text.append(text.empty() ? L"" : L"; ").append(PlaceText(i, item, /*offset=*/0));
        text.append(words.empty() ? L"" : L": ").append(words);
    }
    return items.size() > kMaxRefusedSaid ? text + L"; ..." : text;
}

}  // namespace ca
