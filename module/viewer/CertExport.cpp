#include "module/viewer/CertExport.h"

#include "common/AtomicFile.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "module/viewer/CertFields.h"

#include <algorithm>
#include <vector>

namespace {

using ca::CertFormat;

struct FormatName {
    std::string_view name;
    std::string_view ending;
    CertFormat format;
};

constexpr FormatName kFormats[] = {
    {"der", ".der", CertFormat::kDer},
    {"pem", ".pem", CertFormat::kPem},
    {"text", ".txt", CertFormat::kText},
};

constexpr mode_t kPublicFile = 0644;  // a certificate is no secret

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return lower;
}

// RFC 7468 2: lines of 64 characters.
std::string PemText(const std::vector<unsigned char>& octets) {
    constexpr std::size_t kLine = 64;
    std::string base64;
    ca::Base64Encode(octets.data(), static_cast<unsigned>(octets.size()), base64);
    std::string text = "-----BEGIN CERTIFICATE-----\n";
    for (std::size_t at = 0; at < base64.size(); at += kLine) {
        text.append(base64, at, kLine).append("\n");
    }
    return text + "-----END CERTIFICATE-----\n";
}

}  // namespace

namespace ca {

CertFormat ExportFormat(std::string_view name, std::string_view path) {
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
    return CertFormat::kDer;
}

std::string ExportContent(const CCertDocument& document, std::size_t index, CertFormat format) {
    if (index >= document.Count()) {
        throw Exception(kErrNoArgumentData);
    }
    if (format == CertFormat::kText) {
        return CCertFields(document.Record(index)).AsText().toStdString();
    }
    const std::vector<unsigned char> octets = document.Octets(index);
    if (octets.empty()) {
        throw Exception(kErrNoArgumentData);
    }
    return format == CertFormat::kPem ? PemText(octets) : std::string(octets.begin(), octets.end());
}

void ExportCertificate(const CCertDocument& document, std::size_t index, const std::string& path,
                       CertFormat format) {
    const std::string content = ExportContent(document, index, format);
    if (ReplaceFile(path, content, kPublicFile) != FileStatus::kDone) {
        throw Exception(kErrCertificateFile);
    }
}

}  // namespace ca
