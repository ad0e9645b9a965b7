#include "module/viewer/ItemExport.h"

#include "common/AtomicFile.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Json.h"
#include "module/viewer/ItemKinds.h"

#include <algorithm>
#include <vector>

namespace {

using ca::ItemFormat;

struct FormatName {
    std::string_view name;
    std::string_view ending;
    ItemFormat format;
};

constexpr FormatName kFormats[] = {
    {"der", ".der", ItemFormat::kDer},
    {"pem", ".pem", ItemFormat::kPem},
    {"text", ".txt", ItemFormat::kText},
    {"json", ".json", ItemFormat::kJson},
};

constexpr mode_t kPublicFile = 0644;  // a certificate is not a secret

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return lower;
}

std::string Indented(const std::string& json) {
    ca::JsonBuffer buffer;
    rapidjson::PrettyWriter<ca::JsonBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>,
                            ca::CJsonAllocator>
        writer(buffer);
    rapidjson::StringStream stream(json.c_str());
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, ca::CJsonAllocator> reader;
    reader.Parse<ca::kJsonParseFlags>(stream, writer);
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace

namespace ca {

ItemFormat FormatOf(std::string_view name, std::string_view path) {
    const std::string wanted = Lower(name);
    const std::string file = Lower(path);
    for (const FormatName& row : kFormats) {
        if (wanted.empty() ? file.ends_with(row.ending) : wanted == row.name) {
            return row.format;
        }
    }
    if (!wanted.empty()) {
        throw Exception(kErrParameters);
    }
    return ItemFormat::kDer;
}

bool HasFormat(const CFileDocument& document, ItemIndex item, ItemFormat format) {
    if (item == kNoItem) {
        return false;
    }
    const ItemKindRow& row = KindRow(document[item].kind);
    const CertInfo2* const record = document.RecordOf(item);
    const bool hasOctets =
        record != nullptr ? !record->rawData.empty() : !document[item].octets.empty();
    switch (format) {
        case ItemFormat::kDer:
            return hasOctets;
        case ItemFormat::kPem:
            return !PemLabelOf(document[item]).empty() && hasOctets;
        case ItemFormat::kText:
            return row.describe != nullptr;
        default:
            return row.json != nullptr;
    }
}

std::string ItemContent(const CFileDocument& document, ItemIndex item, ItemFormat format) {
    if (!HasFormat(document, item, format)) {
        throw Exception(kErrNoArgumentData);
    }
    const ItemKindRow& row = KindRow(document[item].kind);
    if (format == ItemFormat::kText) {
        return ItemText(document, item).toStdString();
    }
    if (format == ItemFormat::kJson) {
        return Indented(row.json(document, item)) + "\n";
    }
    const std::vector<unsigned char> octets = document.EncodingOf(item);
    return format == ItemFormat::kPem ? PemText(PemLabelOf(document[item]), octets)
                                      : std::string(octets.begin(), octets.end());
}

void WriteWhole(const std::string& path, std::string_view content) {
    if (ReplaceFile(path, std::string(content), kPublicFile) != FileStatus::kDone) {
        throw Exception(kErrCertificateFile);
    }
}

// Lines of 64 characters.
std::string PemText(std::string_view label, std::span<const unsigned char> octets) {
    constexpr std::size_t kLine = 64;
    const std::string name(label);
    std::string base64;
    Base64Encode(octets.data(), static_cast<unsigned>(octets.size()), base64);
    std::string text = "-----BEGIN " + name + "-----\n";
    for (std::size_t at = 0; at < base64.size(); at += kLine) {
        text.append(base64, at, kLine).append("\n");
    }
    return text + "-----END " + name + "-----\n";
}

}  // namespace ca
