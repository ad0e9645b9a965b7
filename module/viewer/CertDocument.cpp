#include "module/viewer/CertDocument.h"

#include "asn1/Asn1Tags.h"
#include "asn1/CryptAsn1Parser.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Json.h"
#include "records/CertificateBundle.h"
#include "records/JsonFields.h"
#include "records/Payload.h"

#include <string>
#include <utility>

namespace {

void CheckSize(std::size_t size) {
    if (size == 0) {
        throw ca::Exception(ca::kErrNoArgumentData);
    }
    if (size > ca::CCertDocument::kMaxOctets) {
        throw ca::Exception(ca::kErrBadData);
    }
}

std::unique_ptr<ca::CertInfo2> Describe(std::span<unsigned char> octets) {
    const std::vector<ca::PayloadItem> items = ca::DecodePayload(octets);
    ca::CertificateBundle bundle;
    for (const ca::PayloadItem& item : items) {
        ca::CollectCertificates(item.octets, bundle);
    }
    if (bundle.certificates.empty()) {
        throw ca::Exception(ca::kErrCertificate);
    }
    const std::size_t leaf = ca::FindLeaf(bundle);
    auto record = std::make_unique<ca::CertInfo2>();
    ca::FillWithIssuers(bundle, leaf < bundle.certificates.size() ? leaf : 0, *record);
    return record;
}

std::unique_ptr<ca::CertInfo2> ReadRecord(std::string_view json) {
    ca::JsonDocument document;
    document.Parse<ca::kJsonParseFlags>(json.data(), json.size());
    ca::RequireJson(!document.HasParseError() && document.IsObject());
    // An answer as a whole does as well.
    const bool isAnswer = document.HasMember("certInfo");
    auto record = std::make_unique<ca::CertInfo2>();
    record->FromJson(isAnswer ? document["certInfo"] : document);
    if (record->description.empty() && record->issuer.empty() && record->serial.empty() &&
        record->rawData.empty()) {
        throw ca::Exception(ca::kErrCertificate);  // some other JSON
    }
    return record;
}

// Whether octets are BER, be they damaged farther on. Whole messages are sequences and nearly all
// begin as such; any other octets have to decode to their end.
bool IsBer(std::span<unsigned char> octets) {
    if (!octets.empty() && (octets[0] == kAsn1Sequence || octets[0] == kAsn1Set)) {
        return true;
    }
    CCryptAsn1Parser parser;
    parser.Parse(octets.data(), static_cast<unsigned>(octets.size()), /*stopAtTruncation=*/true,
                 /*continueOnLengthMismatch=*/false, /*singleRoot=*/false);
    return !parser.GetRoots().empty() && parser.GetLastErrorCode() == 0;
}

}  // namespace

namespace ca {

CCertDocument CCertDocument::OfCertificate(std::span<const unsigned char> octets) {
    CheckSize(octets.size());
    CCertDocument document;
    document.m_octets.assign(octets.begin(), octets.end());
    document.SetRecord(Describe(document.m_octets));
    return document;
}

CCertDocument CCertDocument::OfRecord(std::string_view json) {
    CheckSize(json.size());
    CCertDocument document;
    document.SetRecord(ReadRecord(json));
    return document;
}

CCertDocument CCertDocument::OfRecord(const CertInfo2& record) {
    CCertDocument document;
    document.SetRecord(std::make_unique<CertInfo2>(record));
    return document;
}

CCertDocument CCertDocument::OfStructure(std::span<const unsigned char> octets) {
    CheckSize(octets.size());
    std::vector<unsigned char> copy(octets.begin(), octets.end());
    const std::vector<PayloadItem> items = DecodePayload(copy);
    if (items.empty() || !IsBer(items.front().octets)) {
        throw Exception(kErrBadData);
    }
    const std::span<const unsigned char> first = items.front().octets;
    CCertDocument document;
    document.m_octets.assign(first.begin(), first.end());
    return document;
}

void CCertDocument::Translate() {
    if (!m_path.empty() && !m_octets.empty()) {
        SetRecord(Describe(m_octets));
    }
}

std::vector<unsigned char> CCertDocument::Octets(std::size_t index) const {
    if (m_path.empty()) {
        return m_octets;
    }
    const std::string& text = m_path[index]->rawData;
    std::vector<unsigned char> octets(3 * ((text.size() + 3) / 4));
    octets.resize(base64_decode_run(text.data(), text.size(), octets.data()).written);
    return octets;
}

void CCertDocument::SetRecord(std::unique_ptr<CertInfo2> record) {
    m_path.clear();
    m_record = std::move(record);
    for (const CertInfo2* at = m_record.get(); at != nullptr; at = at->issuerCert.get()) {
        m_path.push_back(at);
    }
}

}  // namespace ca
