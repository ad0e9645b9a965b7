#pragma once

#include <QPlainTextEdit>

#include <cstdint>

namespace ca {

/// A text that can be read, selected and copied, and is never taken for markup. As high as its
/// lines up to a bound, then it scrolls; words of any length are broken. Of a text longer than
/// kMaxBoxText the beginning is shown; who selects all of that copies the whole text.
class CTextBox : public QPlainTextEdit {
    Q_OBJECT
  public:
    explicit CTextBox(QWidget* parent = nullptr);

    void SetText(const QString& text);

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    bool FitsWithoutBar() const;
    void FitHeight();

    QString m_whole;
    std::uint32_t m_language = 0;  // of the text
};

}  // namespace ca
