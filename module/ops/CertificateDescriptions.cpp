// Operations that read the certificates a client hands in.

#include "module/ops/CertificateDescriptions.h"

#include "asn1/Elements.h"
#include "asn1/views/MessageViews.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/CryptoModule.h"
#include "module/Provider.h"
#include "module/ProviderCall.h"
#include "module/RecordTypes.h"
#include "module/ops/OtherObjects.h"
#include "module/ops/RefusedObjects.h"
#include "module/ops/RequestPayload.h"
#include "records/AnswerBudget.h"
#include "records/fill/AttrCertInfoFill.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/CertificateBundle.h"
#include "records/scan/LooksLike.h"
#include "records/text/ExtensionText.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr std::size_t kNoLeaf = static_cast<std::size_t>(-1);

// A certificate, or a message that carries some.
bool HasCertificates(std::size_t /*item*/, std::span<const unsigned char> element) {
    return ca::LooksLikeCertificate(element) ||
           !SignedDataIn(ca::FirstElement(element)).Certificates().raw.empty();
}

void AnswerOne(ca::CryptPacket& packet, const ca::CertificateBundle& bundle, std::size_t index,
               const ca::CKnownIssuers& issuers, const std::wstring& others) {
    auto info = std::make_unique<ca::CertInfo2>();
    // The issuers that came with it first; known ones go on from there.
    ca::FillWithIssuers(bundle, index, *info);
    ca::AddError(info->error, others);
    issuers.Extend(*info);
    packet.Response().SetObject(info.release(), /*clear=*/true);
}

void AnswerAll(ca::CryptPacket& packet, const ca::CertificateBundle& bundle,
               const std::wstring& others) {
    auto infos = std::make_unique<ca::CertInfos2>();
    for (const auto& certificate : bundle.certificates) {
        if (!ca::CAnswerBudget::HasRoomFor(certificate.size())) {
            infos->SayMore(bundle.certificates.size() - infos->Count());
            break;
        }
        auto info = std::make_unique<ca::CertInfo2>();
        // Dropped with the scope: the record alone is charged, by Add().
        {
            const ca::CBudgetLoan loan;
            ca::FillCertInfo(certificate, *info);
        }
        infos->Add(std::move(info));
    }
    infos->Tell(others);
    packet.Response().SetObject(infos.release(), /*clear=*/true);
}

void AnswerAttributes(ca::CryptPacket& packet, const std::vector<ca::PayloadItem>& items) {
    auto info = std::make_unique<ca::AttrCertInfo>();
    const std::span<const unsigned char> first = items.front().octets;
    ca::FillAttrCertInfo(ca::FirstElement(first).raw, *info);
    ca::AddError(info->error, ca::SayOthers(items, [&](std::size_t /*item*/, auto element) {
                     return ca::IsInside(first, element);
                 }));
    packet.Response().SetObject(info.release(), /*clear=*/true);
    LogEvent(SetZORNAMessage(kMsgCertInfoReturned), /*isError=*/false);
}

}  // namespace

namespace ca {

// orCut: describing goes as far as the octets do, storing does not.
CertificateBundle RequireCertificates(const std::vector<PayloadItem>& items, bool orCut) {
    CertificateBundle bundle;
    for (const PayloadItem& item : items) {
        CollectCertificates(item.octets, bundle);
    }
    if (bundle.certificates.empty() && orCut) {
        const auto cut = std::ranges::find_if(
            items, [](const PayloadItem& item) { return LooksLikeCutCertificate(item.octets); });
        if (cut != items.end()) {
            bundle.certificates.push_back(cut->octets);
        }
    }
    if (bundle.certificates.empty()) {
        throw Exception(kErrCertificate, SayRefused(items, &CertificateFault));
    }
    // The bundle's own list of views is memory of the request.
    CAnswerBudget::Take(bundle.certificates.capacity() * sizeof(std::span<const unsigned char>));
    return bundle;
}

// Each is read as it would be described; the first that is not one ends the operation before
// anything is stored.
void CheckCertificates(const std::vector<PayloadItem>& items) {
    for (const auto& certificate : RequireCertificates(items).certificates) {
        const CBudgetLoan loan;
        CertInfo info;
        FillCertInfo(certificate, info);
    }
}

}  // namespace ca

// Describes the certificates of the file data. One certificate, or a message whose certificates are
// one chain, is answered as one record with its issuers nested, further ones being looked for where
// the PKI configuration says; several are answered as a list. An attribute certificate has a record
// of its own. Without file data one of the provider's certificates is meant.
void CCryptoModule::GetCertInfo(ca::CryptPacket& packet) {
    if (ca::FindFileData(packet.Request()) == nullptr) {
        ca::CProviderCall call(packet, *this);
        packet.Response().SetObject(
            m_provider->FindCert(call, packet.request.senderCertId).release(), /*clear=*/true);
        LogEvent(SetZORNAMessage(kMsgCertInfoReturned), /*isError=*/false);
        return;
    }
    const ca::CAnswerBudget budget(ca::OctetsToDescribe(packet));
    const std::vector<ca::PayloadItem> items = ca::RequestPayload(packet);
    if (ca::LooksLikeAttributeCertificate(items.front().octets)) {
        AnswerAttributes(packet, items);
        return;
    }
    const ca::CertificateBundle bundle = ca::RequireCertificates(items, /*orCut=*/true);
    const auto isDescribed = [&](std::size_t item, std::span<const unsigned char> element) {
        return HasCertificates(item, element) ||
               ca::IsInside(element, bundle.certificates.front());  // which may be cut off
    };
    const bool isOne = bundle.certificates.size() == 1;
    // The usual case has nothing else to tell, and is not scanned again.
    const bool isAlone = isOne && items.size() == 1 &&
                         items.front().octets.size() == bundle.certificates.front().size();
    const std::wstring others =
        isAlone ? std::wstring() : ca::SayOthers(items, isDescribed, /*inMessages=*/true);
    // Of a message the certificate that issued none of the others is the one that is meant.
    const std::size_t leaf = isOne ? 0 : bundle.isMessage ? ca::FindLeaf(bundle) : kNoLeaf;
    if (leaf != kNoLeaf) {
        AnswerOne(packet, bundle, leaf, m_issuers, others);
    } else {
        AnswerAll(packet, bundle, others);
    }
    LogEvent(SetZORNAMessage(kMsgCertInfoReturned), /*isError=*/false);
}

// Hands the objects of the file data to the provider.
void CCryptoModule::SetCert(ca::CryptPacket& packet) {
    const ca::CAnswerBudget budget(ca::OctetsToDescribe(packet));
    ca::CProviderCall call(packet, *this);
    m_provider->SetCert(call, ca::RequestPayload(packet));
}

void CCryptoModule::SetCert2(ca::CryptPacket& packet) {
    const ca::CAnswerBudget budget(ca::OctetsToDescribe(packet));
    ca::CProviderCall call(packet, *this);
    m_provider->SetCert2(call, ca::RequestPayload(packet));
}
