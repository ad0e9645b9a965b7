#pragma once

#include "common/Json.h"

#include <string>

namespace ca {

/// Writes a text as a JSON string in UTF-8, escaped as rapidjson's writer does it. What is not a
/// code point becomes U+FFFD, as u16u8() has it.
void WriteString(JsonWriter& writer, const std::wstring& text);

/// The same for a text that is UTF-8 already; its octets are not judged.
void WriteString(JsonWriter& writer, const std::string& utf8);

}  // namespace ca
