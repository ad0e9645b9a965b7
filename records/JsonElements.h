#pragma once

#include "common/Json.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace ca {

/// Elements of a JSON array, kept as their text: it takes a fraction of the room of the records.
class CJsonElements {
  public:
    /// Makes room for all elements, so that they need not move as they become more.
    void Reserve(std::size_t octets) { m_text.reserve(octets); }

    /// Appends what the record writes of itself.
    /// \param scratch  is written over; the same one for many records takes memory once.
    template <class Record>
    void Append(const Record& record, JsonBuffer& scratch) {
        scratch.Clear();
        JsonWriter writer(scratch);
        record.ToJson(writer);
        Append({scratch.GetString(), scratch.GetSize()}, 1);
    }
    void Append(const CJsonElements& others) { Append(others.m_text, others.m_count); }

    std::size_t Count() const { return m_count; }
    void ToJson(JsonWriter& writer) const {
        if (m_count != 0) {
            writer.Elements(m_text);
        }
    }

  private:
    void Append(std::string_view text, std::size_t count) {
        if (count == 0) {
            return;
        }
        if (m_count != 0) {
            m_text += ',';
        }
        m_text += text;
        m_count += count;
    }

    std::string m_text;
    std::size_t m_count = 0;
};

}  // namespace ca
