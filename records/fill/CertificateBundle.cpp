#include "records/fill/CertificateBundle.h"

#include "asn1/Elements.h"
#include "asn1/Oid.h"
#include "asn1/views/CertificateViews.h"
#include "asn1/views/MessageViews.h"
#include "records/AnswerBudget.h"
#include "records/fill/CertInfoFill.h"
#include "records/scan/CertificateCursor.h"
#include "records/scan/CertificateNames.h"
#include "records/scan/LooksLike.h"
#include "records/text/ExtensionText.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>
#include <utility>

namespace {

using ca::Octets;

constexpr std::size_t kNone = ca::kNoCertificate;

// Finds the certificate that issued another one in a bundle. Indices by name and key: comparing each
// with each would take the square of a stranger's number.
class CIssuers {
  public:
    explicit CIssuers(const ca::CertificateBundle& bundle) {
        for (std::size_t i = 0; i < bundle.certificates.size(); ++i) {
            const auto& certificate = bundle.certificates[i];
            const std::string_view subject = ca::NamesOf(certificate).subject;
            m_bySubject.emplace(subject, i);
            m_byKey.emplace(Key(subject, ca::AsText(ca::SubjectKeyIdentifier(certificate))), i);
        }
    }

    // The one of the issuer's name. A key identifier tells several of that name apart; one that
    // has another is not the issuer. kNone for none, and for what issued itself.
    std::size_t Of(std::span<const unsigned char> certificate) const {
        const ca::CertificateNames names = ca::NamesOf(certificate);
        if (names.issuer == names.subject) {
            return kNone;
        }
        const std::string_view key = ca::AsText(ca::IssuerKeyIdentifier(certificate));
        if (key.empty()) {
            return Find(m_bySubject, names.issuer);
        }
        // An issuer without a key identifier may still be the one.
        const std::size_t found = Find(m_byKey, Key(names.issuer, key));
        return found != kNone ? found : Find(m_byKey, Key(names.issuer, {}));
    }

  private:
    using Key = std::pair<std::string_view, std::string_view>;  // subject and key identifier

    template <class Index, class Name>
    static std::size_t Find(const Index& index, const Name& name) {
        const auto found = index.find(name);
        return found != index.end() ? found->second : kNone;
    }

    std::map<std::string_view, std::size_t> m_bySubject;
    std::map<Key, std::size_t> m_byKey;
};

// A certificate and its issuers, each once: those that issued one another make no endless path. As
// many as are nested.
std::vector<std::size_t> PathOf(const std::vector<std::size_t>& issuers, std::size_t index) {
    std::vector<std::size_t> path;
    for (; index != kNone && path.size() <= ca::kMaxIssuers; index = issuers[index]) {
        if (std::ranges::find(path, index) != path.end()) {
            break;
        }
        path.push_back(index);
    }
    return path;
}

void CollectElements(std::span<const unsigned char> octets, ca::CertificateBundle& bundle) {
    ca::CCertificateCursor cursor(octets);
    CAsn1Element element;
    while (cursor.Next(element)) {
        if (ca::LooksLikeCertificate(element.raw)) {
            bundle.certificates.push_back(element.raw);
        }
    }
}

std::size_t OctetsOf(const ca::CertificateBundle& bundle) {
    std::size_t octets = 0;
    for (const auto& certificate : bundle.certificates) {
        octets += certificate.size();
    }
    return octets;
}

}  // namespace

namespace ca {

void CollectCertificates(std::span<const unsigned char> object, CertificateBundle& bundle) {
    const bool isFirst = bundle.certificates.empty();
    const CAsn1Element certificates = SignedDataIn(FirstElement(object)).Certificates();
    // Not a message, or one without certificates: certificates one after another, as in a file of a
    // chain.
    if (certificates.raw.empty()) {
        CollectElements(object, bundle);
        bundle.isMessage = false;
    } else {
        CollectElements(certificates.content, bundle);
        // Only as the first object: what comes after it would be no part of the message.
        bundle.isMessage = isFirst;
    }
}

std::vector<std::size_t> FindIssuers(const CertificateBundle& bundle) {
    // Alone it has no issuer here, and most objects are one certificate.
    if (bundle.certificates.size() == 1) {
        return {kNone};
    }
    const CIssuers known(bundle);
    std::vector<std::size_t> issuers;
    for (const auto& certificate : bundle.certificates) {
        issuers.push_back(known.Of(certificate));
    }
    return issuers;
}

std::size_t FindLeaf(const CertificateBundle& bundle) {
    const std::vector<std::size_t> issuers = FindIssuers(bundle);
    std::vector<bool> hasIssued(issuers.size());
    for (const std::size_t issuer : issuers) {
        if (issuer != kNone) {
            hasIssued[issuer] = true;
        }
    }
    // The one that issued none of the others, if there is just one path.
    const auto leaf = std::ranges::find(hasIssued, false);
    if (leaf == hasIssued.end()) {
        return kNone;
    }
    const auto index = static_cast<std::size_t>(leaf - hasIssued.begin());
    const bool isPath = PathOf(issuers, index).size() == issuers.size();
    return isPath ? index : kNone;
}

void FillWithIssuers(const CertificateBundle& bundle, std::size_t index, CertInfo2& record) {
    const CAnswerBudget budget(OctetsOf(bundle));
    CertInfo2* at = nullptr;
    for (const std::size_t each : PathOf(FindIssuers(bundle), index)) {
        if (at == nullptr) {
            at = &record;
            FillCertInfo(bundle.certificates[each], *at);
            continue;
        }
        // Nested certificates share the answer's budget: the path ends where it does, and says so.
        if (!CAnswerBudget::HasRoomFor(bundle.certificates[each].size())) {
            AddMore(record.error, 1);
            return;
        }
        at->issuerCert = std::make_unique<CertInfo2>();
        at = at->issuerCert.get();
        FillCertInfo(bundle.certificates[each], *at);
    }
}

}  // namespace ca
