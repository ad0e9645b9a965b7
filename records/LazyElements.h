#pragma once

#include "common/Json.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace ca {

/// Elements of a JSON array that are made one by one while they are written: there may be a
/// million, and none of them is held.
class CLazyElements {
  public:
    /// Makes them. It owns what it makes them from, or has a share in it, and nobody changes it: it
    /// writes the same as often as it is asked, whatever became of the record that it was made for.
    class Source {
      public:
        Source() = default;
        Source(const Source&) = delete;
        Source& operator=(const Source&) = delete;
        virtual ~Source() = default;
        /// Writes each element as one JSON value; none is right too.
        virtual void ToJson(JsonWriter& writer) const = 0;
    };

    void Assign(std::shared_ptr<const Source> source) { m_source = std::move(source); }
    void ToJson(JsonWriter& writer) const {
        if (m_source != nullptr) {
            m_source->ToJson(writer);
        }
    }

  private:
    std::shared_ptr<const Source> m_source;
};

}  // namespace ca
