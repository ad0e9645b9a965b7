#pragma once

#include <QString>

namespace ca {

/// What a reader of a name should beware of, a sentence a line; "" for nothing: letters of the
/// Latin, the Cyrillic and the Greek alphabet in one word, since many of them look alike, and
/// characters that do not show, which records write as \uXXXX.
QString NameMarks(const QString& shown);

}  // namespace ca
