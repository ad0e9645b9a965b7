#include "records/fill/KnownIssuers.h"

#include "asn1/Elements.h"
#include "common/AtomicFile.h"
#include "common/Encode.h"
#include "common/Exception.h"
#include "common/sha1.h"
#include "records/AnswerBudget.h"
#include "records/Payload.h"
#include "records/fill/CertInfoFill.h"
#include "records/scan/CertificateNames.h"
#include "records/text/ExtensionText.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace {

// A directory that was named by mistake, such as a whole disk, must not hold up a request.
constexpr std::size_t kMaxFiles = 4096;
constexpr std::size_t kMaxFileSize = 1U << 20;
constexpr std::size_t kMaxOctets = 16U << 20;  // of all files

// The names of a directory's files in order; the path itself when it is not one.
std::vector<std::string> FilesOf(const std::string& path) {
    std::error_code fault;
    std::vector<std::string> files;
    for (std::filesystem::directory_iterator entry(path, fault), end;
         !fault && entry != end && files.size() < kMaxFiles; entry.increment(fault)) {
        files.push_back(entry->path().string());
    }
    // A path may name one file as well as a directory of them.
    if (fault == std::errc::not_a_directory) {
        return {path};
    }
    // In order, so that the same directory gives the same issuers on every machine.
    std::ranges::sort(files);
    return files;
}

// The encoding that a record carries.
std::vector<unsigned char> EncodingOf(const ca::CertInfo& record) {
    unsigned char* octets = nullptr;
    unsigned length = 0;
    ca::Base64Decode(record.rawData.c_str(), &octets, length);
    const ca::BytePtr owner(octets);
    return {octets, octets + length};
}

}  // namespace

namespace ca {

void CKnownIssuers::AddPlace(const std::wstring& path) {
    for (const std::string& file : FilesOf(PathFromWString(path))) {
        if (m_files == kMaxFiles || m_octets >= kMaxOctets) {
            return;
        }
        ++m_files;
        AddFile(file);
    }
}

void CKnownIssuers::AddFile(const std::string& path) {
    std::string content;
    // The file that would go past the sum is not read at all.
    const std::size_t limit = std::min(kMaxFileSize, kMaxOctets - m_octets);
    if (ReadWholeFile(path, limit, content) != FileStatus::kDone) {
        return;
    }
    m_octets += content.size();
    const std::span octets(reinterpret_cast<unsigned char*>(content.data()), content.size());
    const std::vector<PayloadItem> items = DecodePayload(octets);
    CertificateBundle bundle;
    for (const PayloadItem& item : items) {
        CollectCertificates(item.octets, bundle);
    }
    for (const std::span<const unsigned char> found : bundle.certificates) {
        Certificate& certificate = m_certificates.emplace_back();
        certificate.der.assign(found.begin(), found.end());
        certificate.names = NamesOf(certificate.der);
        certificate.key = AsText(SubjectKeyIdentifier(certificate.der));
        m_bySubject.emplace(certificate.names.subject, &certificate);
    }
}

const CKnownIssuers::Certificate* CKnownIssuers::FindIssuer(
    std::span<const unsigned char> certificate) const {
    const CertificateNames names = NamesOf(certificate);
    const std::string_view key = AsText(IssuerKeyIdentifier(certificate));
    if (names.issuer.empty() || names.issuer == names.subject) {
        return nullptr;
    }
    const Certificate* found = nullptr;
    const auto [first, last] = m_bySubject.equal_range(names.issuer);
    for (auto at = first; at != last; ++at) {
        const Certificate& candidate = *at->second;
        // A key identifier rules out; that there is none on one side does not.
        const bool isOther = !key.empty() && !candidate.key.empty() && key != candidate.key;
        const bool isSame = found != nullptr && found->der == candidate.der;
        if (isOther || isSame) {
            continue;
        }
        if (found != nullptr) {
            return nullptr;  // either might be it
        }
        found = &candidate;
    }
    return found;
}

void CKnownIssuers::Extend(CertInfo2& record) const {
    if (m_certificates.empty()) {
        return;
    }
    std::size_t depth = 0;  // of issuers, those that the record has already among them
    CertInfo2* at = &record;
    std::vector<std::wstring> shown{at->id};  // two that certify each other make no endless path
    for (; at->issuerCert; ++depth) {
        at = at->issuerCert.get();
        shown.push_back(at->id);
    }
    std::vector<unsigned char> der = EncodingOf(*at);
    for (;; ++depth) {
        const Certificate* const issuer = FindIssuer(der);
        if (issuer == nullptr || std::ranges::find(shown, Sha1Hex(issuer->der)) != shown.end()) {
            return;
        }
        if (depth >= kMaxIssuers || !CAnswerBudget::HasRoomFor(issuer->der.size())) {
            AddMore(record.error, 1);  // at the least
            return;
        }
        der = issuer->der;
        auto description = std::make_unique<CertInfo2>();
        try {
            FillCertInfo(der, *description);
        } catch (const Exception&) {
            return;  // a damaged file is not the request's fault
        }
        shown.push_back(description->id);
        at->issuerCert = std::move(description);
        at = at->issuerCert.get();
    }
}

}  // namespace ca
