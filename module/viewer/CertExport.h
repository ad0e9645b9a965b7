#pragma once

#include "module/viewer/CertDocument.h"

#include <string>
#include <string_view>

namespace ca {

enum class CertFormat { kDer, kPem, kText };

/// The format of this name, "der", "pem" or "text" in any letter case; without a name that of the
/// path's ending: ".pem" and ".txt", DER for all others.
/// Throws ca::Exception 16268 for another name.
CertFormat ExportFormat(std::string_view name, std::string_view path);

/// What a file of this format holds for certificate `index` of a document.
/// Throws ca::Exception 16118 when its encoding is not known, or when there is no certificate.
std::string ExportContent(const CCertDocument& document, std::size_t index, CertFormat format);

/// Writes it, whole or not at all. \param path  UTF-8.
/// Throws ca::Exception 16126 when the file cannot be written, and what the others throw.
void ExportCertificate(const CCertDocument& document, std::size_t index, const std::string& path,
                       CertFormat format);

}  // namespace ca
