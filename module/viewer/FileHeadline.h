#pragma once

#include "module/viewer/FileDocument.h"

#include <QString>

namespace ca {

/// What a file is, in a line: "Signed message, 2 signatures, content enclosed", "152 certificates".
/// With several files how many there are, and after it the name and the line of one of them.
/// \param item  any of the file's; kNoItem for a document without files.
QString Headline(const CFileDocument& document, ItemIndex item);

}  // namespace ca
