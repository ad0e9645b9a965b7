#pragma once

#include "common/Json.h"
#include "records/RecordLabels.h"
#include "records/text/NameText.h"

#include <QString>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ca {

/// One line of a record's description.
struct RecordField {
    QString label;
    QString text;  ///< the whole value
    std::size_t parent;
    std::size_t row;  ///< among the children of its parent
    std::vector<std::size_t> children;
};

/// Every member of a record as a tree, in the words of RecordLabels.inc and the current language:
/// other forms of a value stand below it, extensions and attributes with what they are made of.
/// Empty members are left out; of a list kMaxListed elements are told.
class CRecordFields {
  public:
    static constexpr std::size_t kRoot = 0;

    /// The root alone.
    CRecordFields();
    /// \param json  the text of one record, or of an object of records as answers are.
    /// \param sort  as FindRecordLabel() has it.
    explicit CRecordFields(const std::string& json, RecordSort sort = RecordSort::kRecord);

    std::size_t Size() const { return m_fields.size(); }
    /// Field `index`; kRoot has no texts, only children.
    const RecordField& operator[](std::size_t index) const { return m_fields[index]; }

    std::size_t Add(std::size_t parent, const QString& label, const QString& text);

    /// All of it as lines, nested ones indented, for a file.
    QString AsText() const;

  private:
    void AddObject(std::size_t parent, const JsonValue& object, int depth);
    void AddMember(std::size_t parent, const QString& label, const JsonValue& value, int depth);
    void AddArray(std::size_t parent, const QString& label, const JsonValue& array, int depth);
    void AddElement(std::size_t list, const QString& label, const JsonValue& value, int depth);
    bool AddNamedText(std::size_t parent, const JsonValue& value);
    void AppendLines(std::size_t index, int level, QString& text) const;

    std::vector<RecordField> m_fields;
    RecordSort m_sort = RecordSort::kRecord;
};

/// The common name among "TAG=value;" attributes, else the readable name's beginning: what a
/// certificate is called in one line.
QString ShortName(const NameTexts& name);

/// What a member is called, in the current language.
QString LabelOf(std::string_view key, RecordSort sort = RecordSort::kRecord);

}  // namespace ca
