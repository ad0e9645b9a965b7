#pragma once

#include "common/ISerializable.h"
#include "records/ISerializable2.h"
#include "records/RecordSequence.h"

#include <string>
#include <utility>
#include <vector>

namespace ca {

/// A list of texts under a type number: store names (kTypeStores) or certificate identifiers
/// (kTypeCertificates).
class StringArray : public ISerializable, public CRecordSequence<std::wstring> {
  public:
    explicit StringArray(int type) : m_type(type) {}

    /// Appends the elements; a value that is not an array changes nothing.
    /// Throws ca::Exception 16300 when an element is not a string; nothing is appended then.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return m_type; }

  private:
    int m_type;
};

/// A list of texts under a key of its own.
class StringArray2 : public ISerializable2 {
  public:
    explicit StringArray2(std::string tag) : m_tag(std::move(tag)) {}

    /// As StringArray::FromJson().
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    const char* GetTag() const override { return m_tag.c_str(); }

    std::vector<std::wstring> items;

  private:
    std::string m_tag;
};

}  // namespace ca
