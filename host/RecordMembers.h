#pragma once

#include "common/Json.h"

#include <string>
#include <string_view>

// Members of records, as people read them.

namespace host {

inline std::string_view Utf8Of(const ca::JsonValue& value) {
    return {value.GetString(), value.GetStringLength()};
}

/// The text of a member; "" when there is none.
std::string StringMember(const ca::JsonValue& object, const char* key);

/// True for members that are local times; most have a twin in UTC.
bool IsLocalTime(std::string_view key);

/// Such a member's `text` with its zone: by its twin, or by the time zone of the process.
std::string ZonedText(const ca::JsonValue& object, std::string_view key, const std::string& text);

/// The SHA-256 of Base64 octets in hexadecimal digits; "" for none.
std::string Sha256Text(const std::string& base64);

}  // namespace host
