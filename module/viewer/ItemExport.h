#pragma once

#include "module/viewer/FileDocument.h"

#include <string>
#include <string_view>

namespace ca {

enum class ItemFormat { kDer, kPem, kText, kJson };

/// The format of this name, "der", "pem", "text" or "json" in any letter case; without a name that
/// of the path's ending: ".pem", ".txt" and ".json", DER for all others.
/// Throws ca::Exception 16268 for another name.
ItemFormat FormatOf(std::string_view name, std::string_view path);

/// Whether an item can be had in a format.
bool HasFormat(const CFileDocument& document, ItemIndex item, ItemFormat format);

/// What a file of this format holds for an item; as JSON, indented, what answers hold of it.
/// Throws ca::Exception 16118 for an item that cannot be had in it.
std::string ItemContent(const CFileDocument& document, ItemIndex item, ItemFormat format);

/// Writes a file, whole or not at all. \param path  UTF-8.
/// Throws ca::Exception 16126 when it cannot be written.
void WriteWhole(const std::string& path, std::string_view content);

/// Octets as a PEM block (RFC 7468 2).
std::string PemText(std::string_view label, std::span<const unsigned char> octets);

}  // namespace ca
