#pragma once

#include "module/viewer/ViewerText.h"

#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QWidget>

namespace ca {

/// A line to search with: what for, on to the next one and back, and what came of it.
class CSearchBar : public QWidget {
    Q_OBJECT
  public:
    /// \param name  of the text field; the result is called `name` with "Result" after it.
    CSearchBar(const char* name, QWidget* parent);

    QString Wanted() const { return m_text->text(); }
    /// Puts the cursor where one types what to search for.
    void Start();
    /// A few words; "" for none.
    void SetResult(const QString& words);
    void Translate(const QString& caption);

  Q_SIGNALS:
    void Changed(const QString& wanted);
    void Next(bool forward);

  private:
    QLabel* m_caption;
    QLineEdit* m_text;
    QToolButton* m_back;
    QToolButton* m_forward;
    QLabel* m_result;
};

}  // namespace ca
