#pragma once

#include <string>
#include <vector>

namespace host {

/// A file to be read, or a place that cannot be.
struct ListedFile {
    std::string path;
    std::string fault;  ///< UTF-8; "" when nothing is known against it
};

/// The files that a command line names. "-" and anything but a folder stands for itself, a folder
/// for the regular files below it, sorted by name within each folder. Links are followed; a folder
/// that is met again below the same argument is left out, so links in a circle end. Devices, pipes
/// and sockets inside a folder are left out, too: reading one might never end.
/// Needs no stack for the depth of folders.
std::vector<ListedFile> ListFiles(const std::vector<std::string>& arguments);

}  // namespace host
