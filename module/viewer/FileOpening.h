#pragma once

#include "module/viewer/FileDocument.h"

#include <QString>
#include <QStringList>

namespace ca {

/// Files that are shown at a time, and octets of all of them.
inline constexpr int kMaxFiles = 1000;
inline constexpr std::size_t kMaxFileOctets = std::size_t{256} << 20;

/// What came of opening files.
struct OpenedFiles {
    CFileDocument document;
    QStringList faults;  ///< "name: why not", one for each file that is not in the document
    unsigned code = 0;   ///< of the first fault
};

/// Reads files of this machine as CFileDocument::OfFile() does. Folders, devices and pipes are no
/// files. What is beyond kMaxFiles or kMaxFileOctets is a fault.
OpenedFiles OpenFiles(const QStringList& paths);

}  // namespace ca
