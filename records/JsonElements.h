#pragma once

#include "common/Json.h"
#include "records/AnswerBudget.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace ca {

/// Elements of a JSON array, kept as their text: it takes a fraction of the room of the records.
class CJsonElements {
  public:
    CJsonElements() = default;
    CJsonElements(const CJsonElements& other);
    CJsonElements& operator=(const CJsonElements& other);
    CJsonElements(CJsonElements&& other) noexcept;
    CJsonElements& operator=(CJsonElements&& other) noexcept;
    ~CJsonElements() = default;

    /// Appends what the record writes of itself; the texts that it keeps are given up. Takes what
    /// that is from the budget.
    template <class Record>
    void Append(const Record& record) {
        const std::size_t before = Begin();
        JsonWriter writer(m_text, &jsonHeap);
        writer.TakeTexts();
        record.ToJson(writer);
        End(before);
    }
    void Append(const std::wstring& text);
    /// Appends others, which are taken from the budget anew.
    void Append(CJsonElements&& others);

    std::size_t Count() const { return m_count; }
    /// Octets of the text.
    std::size_t Size() const { return m_text.GetSize(); }
    /// Writes all; a writer that takes texts leaves none.
    void ToJson(JsonWriter& writer) const;

  private:
    // Make room for an element, and count it. Nothing else is between them.
    std::size_t Begin();
    void End(std::size_t before);
    std::string_view Text() const { return {m_text.stack_.Bottom<char>(), m_text.GetSize()}; }

    // Written for the last time the text moves on, which is not a change that anybody sees.
    mutable JsonBuffer m_text{&jsonHeap};
    mutable std::size_t m_count = 0;
};

}  // namespace ca
