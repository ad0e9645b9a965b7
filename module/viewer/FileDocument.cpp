#include "module/viewer/FileDocument.h"

#include "asn1/Asn1Tags.h"
#include "asn1/CryptAsn1Parser.h"
#include "asn1/Elements.h"
#include "asn1/cms/SignerInfo.h"
#include "asn1/views/MessageViews.h"
#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Json.h"
#include "module/viewer/FileReader.h"
#include "records/JsonFields.h"
#include "records/fill/CertificateBundle.h"
#include "records/fill/SignInfoFill.h"
#include "records/scan/CertificateNames.h"
#include "records/text/Decoded.h"

#include <algorithm>
#include <utility>

namespace {

using ca::FileItem;
using ca::ItemIndex;
using ca::ItemKind;

void CheckSize(std::size_t size) {
    if (size == 0) {
        throw ca::Exception(ca::kErrNoArgumentData);
    }
    if (size > ca::CFileDocument::kMaxOctets) {
        throw ca::Exception(ca::kErrBadData,
                            SetZORNAMessage(kMsgTooManyOctets) + ca::DecimalText(size));
    }
}

std::unique_ptr<ca::CertInfo2> ReadRecord(std::string_view json) {
    ca::JsonDocument document;
    document.Parse<ca::kJsonParseFlags>(json.data(), json.size());
    ca::RequireJson(!document.HasParseError());
    ca::RequireJson(document.IsObject());
    // An answer as a whole does as well.
    const bool isAnswer = document.HasMember("certInfo");
    auto record = std::make_unique<ca::CertInfo2>();
    record->FromJson(isAnswer ? document["certInfo"] : document);
    if (record->description.readable.empty() && record->issuer.readable.empty() &&
        record->serial.empty() && record->rawData.empty()) {
        throw ca::Exception(ca::kErrCertificate);  // some other JSON
    }
    return record;
}

// Whether octets are BER, be they damaged farther on. Whole messages are sequences and nearly all
// begin as such; any other octets have to decode to their end.
bool IsBer(std::span<const unsigned char> octets) {
    return !octets.empty() &&
           (octets[0] == kAsn1Sequence || octets[0] == kAsn1Set || ca::IsWellFormed(octets));
}

std::unique_ptr<ca::SourceFile> MakeSource(std::span<const unsigned char> octets,
                                           const QString& name) {
    CheckSize(octets.size());
    auto source = std::make_unique<ca::SourceFile>();
    source->name = name;
    source->octets.assign(octets.begin(), octets.end());
    return source;
}

bool IsSignature(const FileItem& item) {
    return item.kind == ItemKind::kSignature || item.kind == ItemKind::kCountersignature;
}

std::span<const unsigned char> CertificatesOf(std::span<const unsigned char> message) {
    const CAsn1SignedDataView signedData(ca::FirstElement(ca::FindSignedData(message)));
    return signedData.Certificates().content;
}

}  // namespace

namespace ca {

CFileDocument CFileDocument::OfSource(std::unique_ptr<SourceFile> source) {
    CFileDocument document;
    CFileReader(*source, document.m_items).Read();
    document.m_sources.push_back(std::move(source));
    document.m_files.push_back(0);
    return document;
}

CFileDocument CFileDocument::OfFile(std::span<const unsigned char> octets, const QString& name) {
    if (ca::BeginsJsonObject(ca::AsText(octets))) {
        CFileDocument document = OfRecord(AsText(octets));
        document.m_sources.front()->name = name;
        return document;
    }
    CFileDocument document = OfSource(MakeSource(octets, name));
    const auto isNoBlock = [](const PayloadItem& item) { return !IsBer(item.octets); };
    if (std::ranges::all_of(document.m_sources.front()->payload, isNoBlock)) {
        throw Exception(kErrBadData);
    }
    return document;
}

CFileDocument CFileDocument::OfCertificate(std::span<const unsigned char> octets) {
    CFileDocument document = OfSource(MakeSource(octets, {}));
    if (document.FirstCertificate() == kNoItem) {
        throw Exception(kErrCertificate);
    }
    return document;
}

CFileDocument CFileDocument::OfStructure(std::span<const unsigned char> octets) {
    CFileDocument document;
    std::unique_ptr<SourceFile> source = MakeSource(octets, {});
    source->payload = DecodePayload(source->octets);
    if (source->payload.empty() || !IsBer(source->payload.front().octets)) {
        throw Exception(kErrBadData);
    }
    document.m_items.resize(2);
    document.m_items[0].octets = source->octets;
    document.m_items[0].children.push_back(1);
    document.m_items[1].kind = ItemKind::kStructure;
    document.m_items[1].octets = source->payload.front().octets;
    document.m_items[1].parent = 0;
    document.m_sources.push_back(std::move(source));
    document.m_files.push_back(0);
    return document;
}

CFileDocument CFileDocument::OfRecord(std::string_view json) {
    CheckSize(json.size());
    return OfOwnRecord(ReadRecord(json));
}

CFileDocument CFileDocument::OfRecord(const CertInfo2& record) {
    return OfOwnRecord(std::make_unique<CertInfo2>(record));
}

// The certificate and, after it, its issuers.
CFileDocument CFileDocument::OfOwnRecord(std::unique_ptr<CertInfo2> record) {
    CFileDocument document;
    auto source = std::make_unique<SourceFile>();
    source->record = std::move(record);
    document.m_items.emplace_back();
    std::uint32_t row = 0;
    for (const CertInfo2* at = source->record.get(); at != nullptr; at = at->issuerCert.get()) {
        FileItem& item = document.m_items.emplace_back();
        item.kind = ItemKind::kCertificate;
        item.parent = 0;
        item.row = row;
        document.m_items[0].children.push_back(++row);
    }
    document.m_sources.push_back(std::move(source));
    document.m_files.push_back(0);
    return document;
}

void CFileDocument::Append(CFileDocument other) {
    const auto shift = static_cast<ItemIndex>(m_items.size());
    for (FileItem& item : other.m_items) {
        item.parent += item.parent != kNoItem ? shift : 0;
        for (ItemIndex& child : item.children) {
            child += shift;
        }
        m_items.push_back(std::move(item));
    }
    for (const ItemIndex file : other.m_files) {
        m_files.push_back(file + shift);
    }
    std::ranges::move(other.m_sources, std::back_inserter(m_sources));
    // Certificates of one file may have issued those of another.
    m_issuers.reset();
}

ItemIndex CFileDocument::FileOf(ItemIndex item) const {
    return *(std::ranges::upper_bound(m_files, item) - 1);
}

const SourceFile& CFileDocument::SourceOf(ItemIndex item) const {
    const auto behind = std::ranges::upper_bound(m_files, item);
    return *m_sources[static_cast<std::size_t>(behind - m_files.begin()) - 1];
}

const CertInfo2* CFileDocument::RecordOf(ItemIndex item) const {
    const CertInfo2* record = SourceOf(item).record.get();
    for (std::uint32_t above = m_items[item].row; record != nullptr && above != 0; --above) {
        record = record->issuerCert.get();
    }
    return m_items[item].kind == ItemKind::kCertificate ? record : nullptr;
}

std::vector<unsigned char> CFileDocument::EncodingOf(ItemIndex item) const {
    const CertInfo2* const record = RecordOf(item);
    if (record == nullptr) {
        const ItemNote* const note = m_items[item].note.get();
        const bool isCut = note != nullptr && !note->asReceived.empty();
        const std::span<const unsigned char> octets =
            isCut ? note->asReceived : m_items[item].octets;
        return {octets.begin(), octets.end()};
    }
    const std::string& text = record->rawData;
    std::vector<unsigned char> octets(3 * ((text.size() + 3) / 4));
    octets.resize(base64_decode_run(text.data(), text.size(), octets.data()).written);
    return octets;
}

ItemIndex CFileDocument::FirstItem() const {
    if (m_items.empty() || m_items[0].children.empty()) {
        return m_items.empty() ? kNoItem : 0;
    }
    const ItemIndex signature = FirstSignature();
    const ItemIndex found = signature != kNoItem ? signature : FirstCertificate();
    if (found == kNoItem) {
        return m_items[0].children.front();
    }
    ItemIndex whole = found;
    while (m_items[whole].parent != 0) {
        whole = m_items[whole].parent;
    }
    // A response is more than the certificate that comes with it.
    return m_items[whole].kind == ItemKind::kObject ? whole : found;
}

ItemIndex CFileDocument::FirstCertificate() const {
    const ItemIndex signature = FirstSignature();
    const ItemIndex signer = signature != kNoItem ? SignerOf(signature) : kNoItem;
    return signer != kNoItem ? signer : FindLeaf();
}

// Of the first file, as the others below.
ItemIndex CFileDocument::FirstSignature() const {
    const auto first = std::ranges::find_if(m_items, IsSignature);
    const auto index = static_cast<ItemIndex>(first - m_items.begin());
    return first != m_items.end() && FileOf(index) == 0 ? index : kNoItem;
}

// The certificate that issued no other, else the first one.
ItemIndex CFileDocument::FindLeaf() const {
    const Issuers& all = FindAllIssuers();
    if (all.certificates.empty() || FileOf(all.certificates.front()) != 0) {
        return kNoItem;
    }
    std::vector<bool> hasIssued(all.certificates.size());
    for (const std::size_t issuer : all.issuers) {
        if (issuer != kNoCertificate) {
            hasIssued[issuer] = true;
        }
    }
    const auto leaf = std::ranges::find(hasIssued, false) - hasIssued.begin();
    const auto index = static_cast<std::size_t>(leaf);
    const bool isThere = index < hasIssued.size() && FileOf(all.certificates[index]) == 0;
    return all.certificates[isThere ? index : 0];
}

const CFileDocument::Issuers& CFileDocument::FindAllIssuers() const {
    if (m_issuers) {
        return *m_issuers;
    }
    m_issuers.emplace();
    CertificateBundle bundle;
    for (ItemIndex item = 0; item < m_items.size(); ++item) {
        if (m_items[item].kind == ItemKind::kCertificate) {
            m_issuers->places.emplace(item, m_issuers->certificates.size());
            m_issuers->certificates.push_back(item);
            bundle.certificates.push_back(m_items[item].octets);
        }
    }
    m_issuers->issuers = FindIssuers(bundle);
    return *m_issuers;
}

ItemIndex CFileDocument::IssuerOf(ItemIndex certificate) const {
    if (const CertInfo2* record = RecordOf(certificate)) {
        return record->issuerCert.get() != nullptr ? certificate + 1 : kNoItem;
    }
    const Issuers& all = FindAllIssuers();
    const std::size_t issuer = all.issuers[all.places.at(certificate)];
    return issuer != kNoCertificate ? all.certificates[issuer] : kNoItem;
}

bool CFileDocument::IsRoot(ItemIndex certificate) const {
    if (const CertInfo2* record = RecordOf(certificate)) {
        // A record without its octets: the readable names are all there is to compare.
        return !record->issuer.readable.empty() &&
               record->issuer.readable == record->description.readable;
    }
    const CertificateNames names = NamesOf(m_items[certificate].octets);
    return names.issuer == names.subject;
}

ItemPath CFileDocument::PathOfCertificate(ItemIndex certificate) const {
    ItemPath path;
    for (ItemIndex at = certificate; at != kNoItem; at = IssuerOf(at)) {
        // At most kMaxIssuers of them, so looking through them all costs nothing.
        if (std::ranges::find(path.items, at) != path.items.end()) {
            path.end = PathEnd::kRepeats;
            return path;
        }
        if (path.items.size() > kMaxIssuers) {
            path.end = PathEnd::kTooLong;
            return path;
        }
        path.items.push_back(at);
    }
    path.end = IsRoot(path.items.back()) ? PathEnd::kRoot : PathEnd::kNoIssuer;
    return path;
}

ItemPath CFileDocument::PathOf(ItemIndex item) const {
    if (item == kNoItem) {
        return {};
    }
    if (m_items[item].kind == ItemKind::kCertificate) {
        return PathOfCertificate(item);
    }
    if (!IsSignature(m_items[item])) {
        return {};
    }
    const ItemIndex signer = SignerOf(item);
    return signer != kNoItem ? PathOfCertificate(signer) : ItemPath{{}, PathEnd::kNoSigner};
}

ItemIndex CFileDocument::MessageOf(ItemIndex item) const {
    while (item != kNoItem && m_items[item].kind != ItemKind::kMessage &&
           m_items[item].kind != ItemKind::kTimeStamp) {
        item = m_items[item].parent;
    }
    return item;
}

ItemIndex CFileDocument::SignerOf(ItemIndex signature) const {
    const ItemIndex message = MessageOf(signature);
    if (message == kNoItem || !IsSignature(m_items[signature])) {
        return kNoItem;
    }
    const CPartlyDecoded<CAsn1SignerInfo> signer(m_items[signature].octets);
    if (signer.Get() == nullptr || signer.Get()->Sid() == nullptr) {
        return kNoItem;
    }
    // Reading a message's certificates costs as much as the message is long, and each of its
    // signatures asks.
    const auto known =
        m_signers.try_emplace(message, CertificatesOf(m_items[message].octets)).first;
    const SignerCertificate* found = known->second.Find(*signer.Get()->Sid());
    if (found == nullptr) {
        return kNoItem;
    }
    for (const ItemIndex child : m_items[message].children) {
        // By place: a message may carry the same certificate twice.
        if (m_items[child].octets.data() == found->der.data()) {
            return child;
        }
    }
    return kNoItem;
}

}  // namespace ca
