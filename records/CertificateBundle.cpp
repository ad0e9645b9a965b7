#include "records/CertificateBundle.h"

#include "asn1/OidTable.h"
#include "records/CertInfoFill.h"
#include "records/text/Elements.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <unordered_map>

namespace {

constexpr std::size_t kMaxIssuers = 16;  // records nested in one description
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Who issued whom in a bundle, by names: index of each certificate's issuer, kNone for none.
std::vector<std::size_t> FindIssuers(const ca::CertificateBundle& bundle) {
    std::unordered_map<std::string_view, std::size_t> bySubject;
    std::vector<ca::CertificateNames> names;
    for (const auto& certificate : bundle.certificates) {
        names.push_back(ca::NamesOf(certificate));
        bySubject.emplace(names.back().subject, names.size() - 1);
    }
    std::vector<std::size_t> issuers;
    for (const ca::CertificateNames& name : names) {
        const auto found = bySubject.find(name.issuer);
        const bool isKnown = found != bySubject.end() && name.issuer != name.subject;
        issuers.push_back(isKnown ? found->second : kNone);
    }
    return issuers;
}

void CollectElements(std::span<unsigned char> octets, ca::CertificateBundle& bundle) {
    CAsn1Cursor cursor(octets);
    CAsn1Element element;
    while (!cursor.AtEnd() && cursor.Next(element) == Asn1Fault::kNone) {
        if (ca::LooksLikeCertificate(element.raw)) {
            bundle.certificates.push_back(element.raw);
        }
    }
}

}  // namespace

namespace ca {

CertificateNames NamesOf(std::span<unsigned char> certificate) {
    const CAsn1Element tbs = Child(FirstElement(certificate), 0);
    const std::size_t serial = Child(tbs, 0).tag == ContextConstructed(0) ? 1 : 0;
    return {AsText(Child(tbs, serial + 2).raw), AsText(Child(tbs, serial).content),
            AsText(Child(tbs, serial + 4).raw)};
}

CAsn1Element SignedDataMember(const CAsn1Element& contentInfo, unsigned char tag) {
    const OidInfo* type = FindOid(ContentIf(Child(contentInfo, 0), kAsn1ObjectIdentifier));
    if (type == nullptr || type->shortName != std::string_view("id-signedData")) {
        return {};
    }
    const CAsn1Element signedData = Child(Child(contentInfo, 1), 0);
    constexpr std::size_t kBehindContent = 3;  // version, digestAlgorithms, encapContentInfo
    for (std::size_t i = kBehindContent; i <= kBehindContent + 1; ++i) {
        if (const CAsn1Element member = Child(signedData, i); member.tag == tag) {
            return member;
        }
    }
    return {};
}

void CollectCertificates(std::span<unsigned char> object, CertificateBundle& bundle) {
    const bool isFirst = bundle.certificates.empty();
    const CAsn1Element certificates = SignedDataMember(FirstElement(object), ContextConstructed(0));
    if (certificates.raw.empty()) {
        CollectElements(object, bundle);
        bundle.isMessage = false;
    } else {
        CollectElements(certificates.content, bundle);
        bundle.isMessage = isFirst;
    }
}

std::size_t FindLeaf(const CertificateBundle& bundle) {
    const std::vector<std::size_t> issuers = FindIssuers(bundle);
    std::vector<bool> hasIssued(issuers.size());
    for (const std::size_t issuer : issuers) {
        if (issuer != kNone) {
            hasIssued[issuer] = true;
        }
    }
    const auto leaf = std::ranges::find(hasIssued, false);
    if (leaf == hasIssued.end()) {
        return kNone;
    }
    const auto index = static_cast<std::size_t>(leaf - hasIssued.begin());
    std::size_t covered = 0;
    for (std::size_t at = index; at != kNone && covered < issuers.size(); at = issuers[at]) {
        ++covered;
    }
    return covered == issuers.size() ? index : kNone;
}

void FillWithIssuers(const CertificateBundle& bundle, std::size_t index, CertInfo2& record) {
    const std::vector<std::size_t> issuers = FindIssuers(bundle);
    CertInfo2* at = &record;
    FillCertInfo(bundle.certificates[index], *at);
    for (std::size_t depth = 0; depth < kMaxIssuers && issuers[index] != kNone; ++depth) {
        index = issuers[index];
        at->issuerCert = std::make_unique<CertInfo2>();
        at = at->issuerCert.get();
        FillCertInfo(bundle.certificates[index], *at);
    }
}

}  // namespace ca
