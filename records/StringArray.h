#pragma once

#include "common/ISerializable.h"
#include "records/ISerializable2.h"
#include "records/JsonElements.h"

#include <string>
#include <utility>
#include <vector>

namespace ca {

/// A list of texts under a type number: store names (kTypeStores) or certificate identifiers
/// (kTypeCertificates).
class StringArray : public ISerializable {
  public:
    explicit StringArray(int type) : m_type(type) {}

    /// Appends the elements; a value that is no array changes nothing.
    /// Throws ca::Exception 16300 when an element is no string; nothing is appended then.
    void FromJson(const JsonValue& value) override;
    void ToJson(JsonWriter& writer) const override;
    int GetType() const override { return m_type; }

    std::size_t Count() const { return items.size() + more.Count(); }

    std::vector<std::wstring> items;
    CJsonElements more;  ///< the texts behind `items`: there may be thousands

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
