#pragma once

// A record names its fields once, as a table of rows in the order of the JSON text; the templates
// here write and read any record by its table.

#include "common/FieldTable.h"
#include "common/Json.h"
#include "records/Blob.h"
#include "records/OwnedPtr.h"
#include "records/RecordOctets.h"

#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace ca {

/// Objects of records one inside the other; deeper text is refused with 16300, so that reading,
/// writing and destroying may recurse.
inline constexpr int kMaxRecordNesting = 32;

/// Counts the objects that this thread is reading. Throws ca::Exception 16300 past the bound.
class CNestingGuard {
  public:
    CNestingGuard();
    CNestingGuard(const CNestingGuard&) = delete;
    CNestingGuard& operator=(const CNestingGuard&) = delete;
    ~CNestingGuard();
};

/// Throws ca::Exception 16300 unless `isRight`.
void RequireJson(bool isRight);

// The forms a value has. A record is what has FromJson() and ToJson().

void WriteJson(JsonWriter& writer, const std::wstring& text);
void ReadJson(const JsonValue& value, std::wstring& text);

/// A text of UTF-8 octets: Base64, which is long and never shown as characters.
void WriteJson(JsonWriter& writer, const std::string& text);
void ReadJson(const JsonValue& value, std::string& text);

/// Octets: Base64 in the text, "" for none.
void WriteJson(JsonWriter& writer, const SharedBlob& octets);
void ReadJson(const JsonValue& value, SharedBlob& octets);

/// A number or a flag.
template <class Value, std::enable_if_t<std::is_arithmetic_v<Value>, int> = 0>
void WriteJson(JsonWriter& writer, Value plain) {
    if constexpr (std::is_same_v<Value, bool>) {
        writer.Bool(plain);
    } else {
        static_assert(std::is_same_v<Value, std::uint32_t>);
        writer.Uint(plain);
    }
}

template <class Value, std::enable_if_t<std::is_arithmetic_v<Value>, int> = 0>
void ReadJson(const JsonValue& value, Value& plain) {
    RequireJson(value.Is<Value>());
    plain = value.Get<Value>();
}

template <class Record>
auto WriteJson(JsonWriter& writer, const Record& record) -> decltype(record.ToJson(writer)) {
    record.ToJson(writer);
}

template <class Record>
auto ReadJson(const JsonValue& value, Record& record) -> decltype(record.FromJson(value)) {
    record.FromJson(value);
}

/// A value that may be absent; null in the text does not stand for its absence.
template <class Value>
concept Absentable = requires(const Value& value) {
    static_cast<bool>(value);
    *value;
};

template <class Record>
void ReadJson(const JsonValue& value, OwnedPtr<Record>& record) {
    OwnedPtr<Record> fresh = std::make_unique<Record>();
    ReadJson(value, *fresh);
    record = std::move(fresh);
}

template <class Value>
void ReadJson(const JsonValue& value, std::optional<Value>& plain) {
    ReadJson(value, plain.emplace());
}

template <class Record>
void WriteJson(JsonWriter& writer, const OwnedPtr<Record>& record) {
    record->ToJson(writer);
}

template <class Element>
void WriteJson(JsonWriter& writer, const std::vector<Element>& elements) {
    writer.StartArray();
    for (const Element& element : elements) {
        WriteJson(writer, element);
    }
    writer.EndArray();
}

/// Appends one new element for each of the array; nothing changes when the value is not an array,
/// and when an element throws.
template <class Element>
void AppendJson(const JsonValue& value, std::vector<Element>& elements) {
    if (!value.IsArray()) {
        return;
    }
    std::vector<Element> fresh;
    fresh.reserve(value.Size());  // memory that is not touched where the first element is wrong
    for (const JsonValue& element : value.GetArray()) {
        ReadJson(element, fresh.emplace_back());
    }
    if (elements.empty()) {
        elements.swap(fresh);
        return;
    }
    elements.insert(elements.end(), std::make_move_iterator(fresh.begin()),
                    std::make_move_iterator(fresh.end()));
}

/// Replaces the elements by those of the array; nothing changes when the value is not an array.
template <class Element>
void ReadJson(const JsonValue& value, std::vector<Element>& elements) {
    if (value.IsArray()) {
        std::vector<Element> fresh;
        AppendJson(value, fresh);
        elements.swap(fresh);
    }
}

/// An absent value leaves its key out.
template <class Record, class Member, class Rule>
void WriteField(JsonWriter& writer, const Record& record, const JsonField<Member, Rule>& field) {
    const auto& value = field.In(record);
    using Value = std::remove_cvref_t<decltype(value)>;
    if constexpr (Absentable<Value>) {
        if (!value) {
            return;
        }
    }
    field.key.copy(writer.PlainString(field.key.size()), field.key.size());
    if constexpr (Absentable<Value>) {
        WriteJson(writer, *value);
    } else {
        WriteJson(writer, value);
    }
}

// Octets of a value, for CostOf().

void AddOctets(const std::wstring& text, RecordOctets& octets);
inline void AddOctets(const std::string& text, RecordOctets& octets) {
    octets.memory += text.size();
    octets.text += text.size();
}
inline void AddOctets(const SharedBlob& blob, RecordOctets& octets) {
    octets.memory += blob.Octets().size();
    octets.text += blob.Octets().size() / 3 * 4;
}
template <class Value, std::enable_if_t<std::is_arithmetic_v<Value>, int> = 0>
void AddOctets(Value, RecordOctets&) {}
template <class Record>
auto AddOctets(const Record& record, RecordOctets& octets) -> decltype(record.AddOctets(octets)) {
    record.AddOctets(octets);
}
template <class Record>
void AddOctets(const OwnedPtr<Record>& record, RecordOctets& octets) {
    if (record != nullptr) {
        octets.memory += sizeof(Record);
        AddOctets(*record, octets);
    }
}
inline void AddOctets(const std::optional<std::wstring>& text, RecordOctets& octets) {
    if (text) {
        AddOctets(*text, octets);
    }
}
template <class Element>
void AddOctets(const std::vector<OwnedPtr<Element>>& elements, RecordOctets& octets) {
    for (const OwnedPtr<Element>& element : elements) {
        AddOctets(element, octets);
    }
}

/// Adds the octets of the fields, and of their keys.
template <class Record, class... Fields>
void AddObjectOctets(const Record& record, const std::tuple<Fields...>& table,
                     RecordOctets& octets) {
    constexpr std::size_t kPunctuation = 6;  // "key":"",
    VisitRows(table, [&](const auto& field) {
        octets.text += field.key.size() + kPunctuation;
        AddOctets(field.In(record), octets);
    });
}

/// The member of `object` under `key`, null when there is none; the first one of several.
const JsonValue* FindJson(const JsonValue& object, std::string_view key);

template <class Record, class Member, class Rule>
void ReadField(const JsonValue& object, Record& record, const JsonField<Member, Rule>& field) {
    if (const JsonValue* value = FindJson(object, field.key); value != nullptr) {
        SetJsonMember(field.key.data());  // static text, as all of a table
        ReadJson(*value, field.In(record));
    }
}

/// Writes one object of the fields in the table's order.
template <class Record, class... Fields>
void WriteObject(JsonWriter& writer, const Record& record, const std::tuple<Fields...>& table) {
    writer.StartObject();
    VisitRows(table, [&](const auto& field) { WriteField(writer, record, field); });
    writer.EndObject();
}

/// Reads the fields that the object has; the others stay as they are.
/// Throws ca::Exception 16300 for no object and for a member of the wrong type.
template <class Record, class... Fields>
void ReadMembers(const JsonValue& object, Record& record, const std::tuple<Fields...>& table) {
    RequireJson(object.IsObject());
    const CNestingGuard guard;
    VisitRows(table, [&](const auto& field) { ReadField(object, record, field); });
    SetJsonMember("");
}

/// Replaces the record by what the object says: fields that it does not have get their defaults.
/// Throws as ReadMembers() does, the record then being as it was.
template <class Record, class... Fields>
void ReadObject(const JsonValue& object, Record& record, const std::tuple<Fields...>& table) {
    Record fresh;
    ReadMembers(object, fresh, table);
    record = std::move(fresh);
}

}  // namespace ca
