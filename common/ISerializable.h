#pragma once

#include "common/Json.h"

#include <string>

namespace ca {

/// A record: writes itself as one JSON value and reads itself back from one.
/// The order of the virtual operations is part of the interface.
class ISerializable {
  public:
    /// Replaces what the record held, as if it were fresh: fields that the value does not name get
    /// their defaults. Lists that stand in a packet by themselves are added to instead, and a value
    /// that is not an array leaves them as they are; see each.
    /// Throws ca::Exception 16300 for a value of the wrong shape.
    virtual void FromJson(const JsonValue& value) = 0;
    /// Writes exactly one value; the caller has written the key.
    virtual void ToJson(JsonWriter& writer) const = 0;
    /// The record's type number, which names its key in a packet.
    virtual int GetType() const = 0;
    virtual std::string GetTagString() const { return {}; }
    virtual ~ISerializable() = default;

  protected:
    ISerializable() = default;
    ISerializable(const ISerializable&) = default;
    ISerializable& operator=(const ISerializable&) = default;
};

/// Type numbers of the records; kTypeFileData to kTypeAttrCertInfo index the key table.
enum RecordType : int {
#define CA_RECORD(name, type, key, json, meaning) name = type,
#include "common/RecordTable.inc"
#undef CA_RECORD
    // Nested only; these two have no key in a packet.
    kTypeExtensionCollection = 18,
    kTypeAttributeCollection = 19,
};

}  // namespace ca
