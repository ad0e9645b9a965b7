#pragma once

#include "common/Lng.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ca {

/// Characters of a text that is laid out on one line of a tree or a title.
inline constexpr int kMaxLineText = 256;
/// The same of a text in a box of its own, and of the one in the box for reading at length.
inline constexpr int kMaxBoxText = 4096;
inline constexpr int kMaxPageText = 16384;

/// Texts of the viewer's own.
enum class ViewerWord : std::uint8_t {
#define VIEWER_TEXT(name, english, russian) name,
#include "module/viewer/ViewerTable.inc"
#undef VIEWER_TEXT
};

/// The text of a message in the current language.
QString MessageText(Sentence id);
QString Word(ViewerWord word);

/// "152 certificates": a number with the form of a noun that goes with it.
/// \param noun  a text of forms, see ViewerTable.inc.
QString Counted(std::size_t count, ViewerWord noun);

/// A text from outside as plain text: line ends stay, other characters that would not show are
/// written as \uXXXX. Whole: a widget gets what LaidOut() leaves of it.
QString ShownText(std::wstring_view text);

/// The first line of such a text, cut with a mark after `longest` characters.
QString ShownLine(std::wstring_view text, int longest = kMaxLineText);

/// What a widget may lay out of a text: `longest` characters, then how many more there are. Of the
/// marks above and below one letter kMaxMarks stay, since a letter with thousands of them takes
/// seconds; how many were left out stands in their place. Cost is linear in what is left.
QString LaidOut(const QString& text, int longest);
inline constexpr int kMaxMarks = 32;

/// The text itself, or a dash in the place of an empty one.
QString OrDash(const QString& text);

}  // namespace ca
