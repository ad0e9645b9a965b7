#include "host/FileObjects.h"

#include "asn1/TruncatedObject.h"
#include "common/Encode.h"
#include "common/Lng.h"
#include "host/ModeTable.h"
#include "records/text/Elements.h"
#include "records/text/VisibleText.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace {

using ca::ObjectReader;

struct OperationRow {
    ObjectReader reader;
    std::string_view operation;
};

// In the order that suits octets of which nothing is known.
constexpr OperationRow kOperations[] = {
    {ObjectReader::kCertificates, "GetCertInfo"},
    {ObjectReader::kCrl, "GetCRL"},
    {ObjectReader::kSignatures, "GetSignInfo"},
    {ObjectReader::kRecipients, "GetRecipientsList"},
};

std::vector<ObjectReader> OrderFor(const ca::ObjectKind* kind) {
    std::vector<ObjectReader> order;
    if (kind != nullptr &&
        (kind->reader == ObjectReader::kDescription || kind->reader == ObjectReader::kNone)) {
        return order;
    }
    for (const OperationRow& row : kOperations) {
        const bool isLikeliest = kind != nullptr && row.reader == kind->reader;
        order.insert(isLikeliest ? order.begin() : order.end(), row.reader);
    }
    return order;
}

bool IsCertificate(const ca::ObjectKind* kind) {
    return kind != nullptr && kind->name == std::string_view("certificate");
}

std::string UnknownReason(const ca::ObjectSource& source, bool isCut) {
    const bool isRussian = IsRussian();
    if (source.octets.empty()) {
        return isRussian ? "блок PEM не раскодируется" : "a PEM block that does not decode";
    }
    if (isCut) {
        return isRussian ? "обрывающиеся данные ASN.1; строение показывает cmhost asn1"
                         : "ASN.1 data that are cut off; cmhost asn1 shows their structure";
    }
    if (!ca::FirstElement(source.octets).raw.empty()) {
        return isRussian ? "данные ASN.1 неизвестного вида; строение показывает cmhost asn1"
                         : "ASN.1 data of an unknown kind; cmhost asn1 shows their structure";
    }
    return isRussian ? "данных ASN.1 нет" : "no ASN.1 data";
}

}  // namespace

namespace host {

std::uint32_t ModeOf(ObjectReader reader) {
    const auto* const row = std::ranges::find(kOperations, reader, &OperationRow::reader);
    return FindMode(std::string(row->operation)).value();
}

FileObjects ReadObjects(std::string& content) {
    FileObjects file;
    file.items =
        ca::DecodePayload({reinterpret_cast<unsigned char*>(content.data()), content.size()});
    for (std::size_t i = 0; i < file.items.size(); ++i) {
        if (file.parts.size() == ca::kMaxListed) {
            file.leftOut = file.items.size() - i;
            break;
        }
        const ca::ObjectKind* kind = ca::RecogniseObject(ca::SourceOf(file.items[i]));
        const auto others = std::ranges::find_if(
            file.parts, [](const FilePart& part) { return IsCertificate(part.kind); });
        if (IsCertificate(kind) && others != file.parts.end()) {
            others->items.push_back(i);
        } else {
            file.parts.push_back({kind, {i}, OrderFor(kind)});
        }
    }
    if (file.parts.empty()) {
        file.parts.push_back({nullptr, {}, OrderFor(nullptr)});
    }
    return file;
}

std::string OctetsOf(const FileObjects& file, const FilePart& part) {
    std::string octets;
    for (const std::size_t number : part.items) {
        const std::span<const unsigned char> item = file.items[number].octets;
        if (part.items.size() == 1) {
            octets.assign(item.begin(), item.end());
        } else if (!item.empty()) {  // a damaged one must not hide those behind it
            std::string encoded;
            ca::Base64Encode(item.data(), static_cast<unsigned>(item.size()), encoded);
            octets.append("-----BEGIN CERTIFICATE-----\n").append(encoded);
            octets.append("\n-----END CERTIFICATE-----\n");
        }
    }
    return octets;
}

std::string ReasonOf(const FileObjects& file, const FilePart& part, const std::string& fault) {
    if (part.items.empty()) {
        return fault;
    }
    const ca::ObjectSource source = ca::SourceOf(file.items[part.items.front()]);
    const bool isCut = MendTruncated(source.octets).has_value();
    if (part.kind == nullptr) {
        return UnknownReason(source, isCut);
    }
    const std::string name = ca::u16u8(part.kind->Name());
    if (isCut) {
        return name + (IsRussian() ? ": данные обрываются" : ": the data end too early");
    }
    return fault.empty() ? name : name + ": " + fault;
}

}  // namespace host
