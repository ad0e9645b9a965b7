#pragma once

#include "records/JsonElements.h"
#include "records/JsonFields.h"
#include "records/LazyElements.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ca {

/// What a list of records is, as it travels: elements that are held, and after them those that are
/// kept in a form that takes less room. Whoever reads or replaces a list deals with both at once.
/// \tparam Element  OwnedPtr of a record, or a text.
/// \tparam Rest  CJsonElements for elements that are described and written once; CLazyElements for
///     those that are made while they are written.
template <class Element, class Rest = CJsonElements>
class CRecordSequence {
  public:
    /// Appends one element for each of an array; a value that is not an array changes nothing, and
    /// nothing is appended when an element throws.
    void AppendArray(const JsonValue& value) {
        if (m_rest.Count() == 0) {
            AppendJson(value, items);
            return;
        }
        std::vector<Element> fresh;
        AppendJson(value, fresh);
        for (const Element& element : fresh) {
            m_rest.Append(Written(element));
        }
    }
    /// Replaces all elements; a value that is not an array changes nothing.
    void ReplaceByArray(const JsonValue& value) {
        if (value.IsArray()) {
            CRecordSequence fresh;
            AppendJson(value, fresh.items);
            *this = std::move(fresh);
        }
    }

    void WriteElements(JsonWriter& writer) const {
        for (const Element& element : items) {
            WriteJson(writer, element);
        }
        m_rest.ToJson(writer);
    }
    void WriteArray(JsonWriter& writer) const {
        writer.StartArray();
        WriteElements(writer);
        writer.EndArray();
    }

    std::size_t Count() const { return items.size() + m_rest.Count(); }

    /// Appends a record that is described now, which is taken from the budget: the first of a list
    /// stays one, for what is found out later of all of them, the others are kept as text.
    void Add(Element record) {
        if (items.empty()) {
            CAnswerBudget::Take(CostOf(*record));
            items.push_back(std::move(record));
        } else {
            m_rest.Append(*record);
        }
    }
    /// Appends one that nobody asks for later.
    void AddAsText(const Element& element) { m_rest.Append(Written(element)); }
    /// Appends another list.
    void Append(CRecordSequence others) {
        if (Count() == 0) {
            *this = std::move(others);
            return;
        }
        for (const Element& element : others.items) {
            AddAsText(element);
        }
        m_rest.Append(std::move(others.m_rest));
    }
    /// Appends elements that are made while they are written.
    void AddLazily(std::shared_ptr<const CLazyElements::Source> source) {
        m_rest.Assign(std::move(source));
    }

    std::vector<Element> items;  ///< those that are held, in order

  protected:
    /// Octets of the others.
    std::size_t RestOctets() const { return m_rest.Size(); }

  private:
    template <class Record>
    static const Record& Written(const OwnedPtr<Record>& record) {
        return *record;
    }
    static const std::wstring& Written(const std::wstring& text) { return text; }

    Rest m_rest;
};

}  // namespace ca
