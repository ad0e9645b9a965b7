#pragma once

#include "asn1/Elements.h"
#include "module/viewer/ViewerText.h"
#include "records/CertInfoExtension.h"
#include "records/text/NameText.h"
#include "records/text/TimeText.h"

#include <QString>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ca {

/// A line of the general page.
struct SummaryRow {
    QString key;      ///< names the row in the window: "serial"; "" for a heading
    QString caption;  ///< in the current language
    QString text;     ///< whole
    QString mark;     ///< what to beware of in the text; "" for nothing
};

/// What an item is at a glance: rows with captions, some below headings. Empty texts make no row.
class CSummary {
  public:
    /// Attributes of one name that have a row; further ones are counted.
    static constexpr std::size_t kMaxAttributes = 40;

    const std::vector<SummaryRow>& Rows() const { return m_rows; }
    /// All of it as lines.
    QString AsText() const;

    void Row(const char* key, const QString& caption, const QString& text);
    void Row(const char* key, ViewerWord caption, const QString& text);
    /// \param member  the member of records that the text is, which the row is called after.
    void Row(const char* key, std::string_view member, std::wstring_view text);
    /// A heading for the rows that follow.
    void Heading(const QString& caption);
    void Append(const CSummary& other);
    /// A heading and, below it, a row for each attribute of a name; one row of the readable form
    /// where the attributes are not known.
    void Name(const char* key, const QString& caption, const NameTexts& texts);
    /// A row whose names are looked at as those of Name().
    void Names(const char* key, const QString& caption, const QString& text);
    void Time(const char* key, std::string_view member, const TimeTexts& time);
    /// SHA-1 and SHA-256 of an encoding; none of no octets.
    void Fingerprints(Octets encoding);
    /// What else the subject is called (RFC 5280, 4.2.1.6).
    void AlternativeNames(const CertInfoExtensionCollection& extensions);

  private:
    std::vector<SummaryRow> m_rows;
};

}  // namespace ca
