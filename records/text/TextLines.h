#pragma once

#include "common/Lng.h"
#include "records/text/VisibleText.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace ca {

class CSignerCertificates;

/// Builds a text of lines: "\n" between them, two blanks a nesting level in front. Appends only, so
/// its cost is that of the text. Past MaxValueText() characters lines are counted instead of shown.
///
/// What is handed in as a line, a label or a value is taken as it stands: texts from outside go
/// through Visible() first.
class CTextLines {
  public:
    CTextLines() = default;
    /// \param signers  the certificates of the message that the text is about, for the names of
    ///                 signers; null for none, else it outlives this.
    explicit CTextLines(CSignerCertificates* signers) : m_signers(signers) {}
    CSignerCertificates* Signers() const { return m_signers; }

    /// Starts a line.
    void Line(std::wstring_view text);
    /// A line "label: value"; without a value "label:".
    void Line(std::wstring_view label, std::wstring_view value);
    void Line(Sentence label, std::wstring_view value) { Line(SetZORNAMessage(label), value); }
    void Line(Sentence text) { Line(SetZORNAMessage(text)); }
    /// The lines of a text made elsewhere, each at the current level on top of its own.
    void Block(std::wstring_view lines);
    /// Continues the last line.
    void Append(std::wstring_view text);

    /// What is said while one lives stands one level deeper.
    class Level {
      public:
        explicit Level(CTextLines& lines) : m_lines(lines) { ++m_lines.m_level; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { --m_lines.m_level; }

      private:
        CTextLines& m_lines;
    };

    /// The level of the lines that follow, for walks that keep their own stack.
    void SetLevel(std::size_t level) { m_level = level; }

    /// For a loop over a list that strangers made: true while element `index` is to be shown. At
    /// the bound says how many of `count` are left and ends the loop.
    bool Shows(std::size_t index, std::size_t count);

    /// Counts lines that are not said; the text ends with how many there were.
    void LeaveOut(std::size_t lines);

    /// Keeps what the text does not say as it should, "; " between faults; an empty text is no
    /// fault. What is left out or cut is kept of itself, and who takes the text takes the faults.
    void Fault(std::wstring_view fault);

    /// An element that is not what should stand there, outlined as far as it is one, with its
    /// fault.
    void Unreadable(std::span<const unsigned char> octets);
    /// The same for octets that are not an element of their own.
    void Unreadable(std::wstring_view label, std::span<const unsigned char> octets);

    /// Elements of a value that are outlined in the midst of it because they are not what they
    /// should be. A value with more of them is taken for something else as a whole.
    static constexpr std::size_t kMaxOdd = 16;
    /// Counts one; false when there were enough.
    bool TakesOdd() { return ++m_odd <= kMaxOdd; }

    /// What was said so far, to go back to.
    struct Mark {
        std::size_t text;
        std::size_t faults;
        std::size_t level;
        std::size_t hidden;
        bool isEmpty;
    };
    Mark Here() const { return {m_text.size(), m_faults.size(), m_level, m_hidden, m_isEmpty}; }
    /// Unsays all after the mark, which is of the same text.
    void GoBack(const Mark& mark);

    /// The text; the object is empty then, but for its faults.
    std::wstring Take();
    /// The same, `otherwise` when no line was said: for lists that may be empty.
    std::wstring TakeOr(Sentence otherwise);
    /// After Take(), which may add to them.
    std::wstring TakeFaults();

  private:
    bool Start();
    void SayMore(std::size_t count);

    CSignerCertificates* m_signers = nullptr;
    std::wstring m_text;
    std::wstring m_faults;
    std::size_t m_level = 0;
    std::size_t m_hidden = 0;  // lines past the bound
    std::size_t m_odd = 0;
    bool m_isEmpty = true;
    bool m_isOpen = false;  // Append() has a line to continue
};

/// What Shows() says when `count` elements are left: "\u2026 and N more".
std::wstring MoreText(std::size_t count);

}  // namespace ca
