#pragma once

#include <QString>

#include <string_view>
#include <vector>

namespace ca {

/// One attribute of a name.
struct NameTag {
    QString tag;   ///< short name of its type, "CN", or the type's dotted text
    QString text;  ///< as plain text, hidden characters as \uXXXX
};

/// Reads "TAG=value;TAG=value;" with `\` before what is meant as it stands, `\n` for the end of a
/// line and `\uXXXX` for a character that does not show, which stays as it is.
/// \return in order, at most kMaxListed.
std::vector<NameTag> ReadTagList(std::wstring_view tags);

}  // namespace ca
