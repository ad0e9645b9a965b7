#pragma once

#include "common/Lng.h"
#include "module/viewer/TextBox.h"
#include "records/CertInfo.h"

#include <QDateTime>
#include <QLabel>
#include <QWidget>

#include <vector>

class QFormLayout;

namespace ca {

/// What a certificate is, at a glance: whom it names, who issued it, how long it holds, what for.
class CGeneralPage : public QWidget {
    Q_OBJECT
  public:
    explicit CGeneralPage(QWidget* parent = nullptr);

    /// Without a record: nothing.
    void ShowRecord(const CertInfo* record);
    void Translate();

  private:
    struct Row {
        ZornaMessage caption;
        QLabel* label;
        CTextBox* text;
    };

    CTextBox* AddRow(QFormLayout& form, ZornaMessage caption, const char* name);
    void ShowStatus(const CertInfo& record, const QDateTime& now);

    QLabel* m_icon;
    CTextBox* m_title;
    CTextBox* m_subject;
    CTextBox* m_issuer;
    CTextBox* m_period;
    CTextBox* m_serial;
    CTextBox* m_usage;
    CTextBox* m_status;
    std::vector<Row> m_rows;
};

/// How long a certificate still holds, in words of the current language: "days left: 12". "" for
/// times that cannot be read and for the one that says that there is no end (RFC 5280 4.1.2.5).
/// \param fromUtc, toUtc  as records have them, "dd.mm.yyyy hh:mm:ss".
QString RemainingText(const QString& fromUtc, const QString& toUtc, const QDateTime& now);

}  // namespace ca
