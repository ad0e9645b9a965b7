#pragma once

#include "common/Json.h"

namespace ca {

/// A record that carries its own key.
/// The order of the virtual operations is part of the interface.
class ISerializable2 {
  public:
    virtual void FromJson(const JsonValue& value) = 0;
    /// Writes exactly one value; the caller has written the key.
    virtual void ToJson(JsonWriter& writer) const = 0;
    /// The record's key; NUL-terminated, lives as long as the record.
    virtual const char* GetTag() const = 0;
    virtual ~ISerializable2() = default;

  protected:
    ISerializable2() = default;
    ISerializable2(const ISerializable2&) = default;
    ISerializable2& operator=(const ISerializable2&) = default;
};

}  // namespace ca
