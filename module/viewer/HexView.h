#pragma once

#include <QAbstractScrollArea>

#include <cstddef>
#include <span>

namespace ca {

/// Octets as hexadecimal digits and characters, with one range marked. Paints the lines in sight
/// alone, so any number of octets costs nothing. The cursor is moved by keys and mouse, and told to
/// screen readers.
class CHexView : public QAbstractScrollArea {
    Q_OBJECT
  public:
    explicit CHexView(QWidget* parent = nullptr);

    /// \param octets  outlive the view, or the next call.
    void SetOctets(std::span<const unsigned char> octets);
    /// Marks [begin, end), up to `content` in another way, and brings its beginning in sight.
    void SetMarked(std::size_t begin, std::size_t content, std::size_t end);

    std::size_t MarkedBegin() const { return m_begin; }
    std::size_t MarkedEnd() const { return m_end; }
    std::size_t Cursor() const { return m_cursor; }
    std::span<const unsigned char> Octets() const { return m_octets; }
    /// Octets in a line.
    std::size_t PerLine() const { return m_perLine; }
    /// Puts the cursor on an octet, as the user does; the last one for those after it.
    void PutCursor(std::size_t offset);
    /// Scrolls to an octet that is not in sight.
    void Reveal(std::size_t offset);
    /// The octet whose digits or character are at a place of the viewport; false for none.
    bool OctetAt(const QPoint& place, std::size_t& offset) const;
    /// An octet's digits and the blank after them, in the viewport.
    QRect RectOf(std::size_t offset) const;
    /// The middle of an octet's digits, in the viewport.
    QPoint PlaceOf(std::size_t offset) const;
    QSize sizeHint() const override;

  Q_SIGNALS:
    /// The user put the cursor on an octet.
    void Chosen(qulonglong offset);
    /// The user asks for the marked octets.
    void CopyWanted();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void Measure();
    void PaintLine(QPainter& painter, std::size_t line, int y) const;
    void PaintOctet(QPainter& painter, std::size_t offset, int y) const;
    void MoveCursor(std::ptrdiff_t distance);
    void TellReaders();
    int DigitsX(std::size_t column) const;
    int CharacterX(std::size_t column) const;
    std::size_t LinesInSight() const;

    std::span<const unsigned char> m_octets;
    std::size_t m_begin = 0;
    std::size_t m_content = 0;
    std::size_t m_end = 0;
    std::size_t m_cursor = 0;
    std::size_t m_perLine = 16;
    int m_charWidth = 1;
    int m_lineHeight = 1;
};

}  // namespace ca
