#pragma once

#include "common/Lng.h"

#include <QString>

#include <cstddef>
#include <string_view>

namespace ca {

/// Characters of a text that stands on one line of a tree or a title.
inline constexpr std::size_t kMaxLineText = 256;

/// The text of a message in the current language.
QString MessageText(ZornaMessage id);

/// A text from outside for a widget that takes plain text: line ends stay, other characters that
/// would not show are written as \uXXXX, and what is longer than kMaxValueText is cut, with a mark.
QString ShownText(std::wstring_view text);

/// The first line of such a text, cut with a mark after `longest` characters.
QString ShownLine(std::wstring_view text, std::size_t longest = kMaxLineText);

/// The text itself, or a dash in the place of an empty one.
QString OrDash(const QString& text);

}  // namespace ca
