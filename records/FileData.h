#pragma once

#include "common/ISerializable.h"
#include "records/Blob.h"

namespace ca {

/// The payload of a request or answer (type 0); as JSON one string of Base64.
/// Adopt(), Assign() and Release() move the octets without a copy.
class FileData : public ISerializable, public Blob {
  public:
    FileData() = default;
    explicit FileData(Blob octets) : Blob(std::move(octets)) {}

    /// Throws ca::Exception 16300 for no string, 16118 when nothing decodes, 16197 out of memory.
    void FromJson(const JsonValue& value) override { AssignBase64(value); }
    void ToJson(JsonWriter& writer) const override { WriteBase64(writer, Octets()); }
    int GetType() const override { return kTypeFileData; }
};

}  // namespace ca
