#pragma once

#include "records/CertInfo.h"

#include <QString>

#include <cstddef>
#include <string_view>
#include <vector>

namespace ca {

/// One line of a certificate's description.
struct CertField {
    QString label;
    QString text;  ///< the whole value
    std::size_t parent;
    std::size_t row;  ///< among the children of its parent
    std::vector<std::size_t> children;
};

/// Every field and extension of a record as a tree of three levels, in the current language. What
/// the record does not have is left out; of the extensions kMaxListed are told.
class CCertFields {
  public:
    static constexpr std::size_t kRoot = 0;

    /// The root alone.
    CCertFields();
    explicit CCertFields(const CertInfo& record);

    std::size_t Size() const { return m_fields.size(); }
    /// Field `index`; kRoot has no texts, only children.
    const CertField& operator[](std::size_t index) const { return m_fields[index]; }

    /// All of it as lines, nested ones indented, for a file.
    QString AsText() const;

  private:
    std::size_t Add(std::size_t parent, const QString& label, std::wstring_view text);
    void AddIfAny(std::size_t parent, const QString& label, std::wstring_view text);
    void AddName(const CertInfo& record, bool isSubject);
    void AddPeriod(const CertInfo& record);
    void AddKey(const CertInfo& record);
    void AddExtensions(const CertInfo& record);
    void AddExtension(std::size_t parent, const CertInfoExtension& extension);
    void AppendLines(std::size_t index, int level, QString& text) const;

    std::vector<CertField> m_fields;
};

/// The common name among "TAG=value;" attributes, else the readable name's beginning: what a
/// certificate is called in one line.
QString ShortName(std::wstring_view tags, std::wstring_view readable);

}  // namespace ca
