#pragma once

#include "common/HeapPtr.h"
#include "common/Json.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace ca {

/// Octets of the JSON text at the start of `data`: up to its first NUL, or all of `length`.
std::size_t JsonTextLength(const char* data, std::size_t length) noexcept;

/// A JSON text copied once and parsed in place; owns copy and values.
class JsonText {
  public:
    /// Throws ca::Exception 16300 for a text that is no JSON object, std::bad_alloc.
    JsonText(const char* text, std::size_t length);

    /// Lives as long as this object.
    const JsonValue& Root() const noexcept { return m_document; }

  private:
    BytePtr m_text;
    JsonPool m_pool;
    JsonDocument m_document;
};

/// The value of a key, the first one of that name; null when the key is absent. Names the key for
/// the report of a wrong type.
const JsonValue* FindKey(const JsonValue& object, std::string_view key);

/// The text of a string value, which may hold NULs. Any other value: JsonTypeFault().
std::wstring WideText(const JsonValue& value);

}  // namespace ca
