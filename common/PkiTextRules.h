#pragma once

#include <string>

/// What texts of the PKI configuration may be, by the names that PkiSettingTable.inc has for them.
namespace ca::pki {

bool IsSettingText(const std::wstring& text);   ///< at most 4096 characters, none of control
bool IsPath(const std::wstring& text);          ///< absolute
bool IsOptionalPath(const std::wstring& text);  ///< or empty
bool IsUrl(const std::wstring& text);           ///< http or https
bool IsHostPattern(const std::wstring& text);   ///< see HostRules
bool IsKeyUsage(const std::wstring& text);      ///< a bit's name, RFC 5280, 4.2.1.3
bool IsOid(const std::wstring& text);           ///< dotted
bool IsOptionalOid(const std::wstring& text);   ///< or empty

}  // namespace ca::pki
