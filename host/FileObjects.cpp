#include "host/FileObjects.h"

#include "asn1/Elements.h"
#include "asn1/TruncatedObject.h"
#include "common/Encode.h"
#include "common/Lng.h"
#include "host/ModeTable.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace {

using ca::ObjectReader;

struct OperationRow {
    ObjectReader reader;
    std::string_view operation;
};

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

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

// One that can stand among others. What is damaged or cut is told of by itself.
bool IsWholeCertificate(const ca::PlacedObject& object) {
    return object.kind != nullptr && object.kind->name == std::string_view("certificate") &&
           !ca::FirstElement(object.source.octets).raw.empty();
}

// Letters of a text are elements too, one after the other; but hardly one that ends with it.
// Control characters occur at the front of any encoding, and in no text.
bool IsAsn1(std::span<const unsigned char> octets) {
    constexpr std::size_t kLookedAt = 16;
    const std::span<const unsigned char> element = ca::FirstElement(octets).raw;
    return !element.empty() &&
           (element.size() == octets.size() ||
            std::ranges::any_of(
                octets.first(std::min(octets.size(), kLookedAt)), [](unsigned char octet) {
                    return octet < 0x20 && octet != '\n' && octet != '\r' && octet != '\t';
                }));
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
    if (IsAsn1(source.octets)) {
        return isRussian ? "данные ASN.1 неизвестного вида; строение показывает cmhost asn1"
                         : "ASN.1 data of an unknown kind; cmhost asn1 shows their structure";
    }
    return isRussian ? "данных ASN.1 нет" : "no ASN.1 data";
}

}  // namespace

namespace host {

std::uint32_t ModeOf(ObjectReader reader) {
    const auto* const row = std::ranges::find(kOperations, reader, &OperationRow::reader);
    return ModeByName(std::string(row->operation)).value();
}

FileObjects ReadObjects(std::string& content) {
    FileObjects file;
    file.items =
        ca::DecodePayload({reinterpret_cast<unsigned char*>(content.data()), content.size()});
    file.list = ca::ListObjects(file.items, kMaxFileObjects);
    std::size_t certificates = kNone;  // the part that has them
    for (std::size_t i = 0; i < file.list.objects.size(); ++i) {
        const ca::PlacedObject& object = file.list.objects[i];
        const bool isCertificate = IsWholeCertificate(object);
        // All certificates of a file are one part, since their issuers are among them.
        if (isCertificate && certificates != kNone) {
            file.parts[certificates].objects.push_back(i);
        } else if (file.parts.size() == kMaxFileParts) {
            ++file.leftOut;
        } else {
            certificates = isCertificate ? file.parts.size() : certificates;
            file.parts.push_back({object.kind, {i}, OrderFor(object.kind)});
        }
    }
    // A file of one part is asked for as it is.
    file.leftOut += file.parts.size() > 1 ? file.list.leftOut : 0;
    // Nothing was found: the module says why, octet for octet.
    if (file.parts.empty()) {
        file.parts.push_back({nullptr, {}, OrderFor(nullptr)});
    }
    return file;
}

ca::ObjectSource PartSource(const FileObjects& file, const FilePart& part) {
    return file.list.objects[part.objects.front()].source;
}

std::string PartOctets(const FileObjects& file, const FilePart& part) {
    std::string octets;
    for (const std::size_t number : part.objects) {
        const std::span<const unsigned char> object = file.list.objects[number].source.octets;
        if (part.objects.size() == 1) {
            octets.assign(object.begin(), object.end());
        } else {
            // Several certificates go as PEM, which is how the module takes a bundle.
            std::string encoded;
            ca::Base64Encode(object.data(), static_cast<unsigned>(object.size()), encoded);
            octets.append("-----BEGIN CERTIFICATE-----\n").append(encoded);
            octets.append("\n-----END CERTIFICATE-----\n");
        }
    }
    return octets;
}

std::string ReasonOf(const FileObjects& file, const FilePart& part, const std::string& fault) {
    if (part.objects.empty()) {
        return fault;
    }
    const ca::ObjectSource source = PartSource(file, part);
    const bool isCut = MendTruncated(source.octets).has_value();
    if (part.kind == nullptr || source.octets.empty()) {
        return UnknownReason(source, isCut);
    }
    const std::string name = ca::u16u8(part.kind->Name());
    if (isCut) {
        return name + (IsRussian() ? ": данные обрываются" : ": the data end too early");
    }
    return fault.empty() ? name : name + ": " + fault;
}

}  // namespace host
