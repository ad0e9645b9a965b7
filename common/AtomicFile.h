#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace ca {

/// How a whole-file operation ended.
enum class FileStatus {
    kDone,
    kMissing,    ///< reading: there is no such file
    kNotOpened,  ///< not a regular file, no permission, no such directory ...
    kTooLarge,   ///< reading: more than the limit
    kFailed,     ///< reading or writing broke off
};

/// Reads a whole regular file. Never blocks on a pipe or device put in its place.
/// \param path     UTF-8.
/// \param limit    octets; a longer file gives kTooLarge.
/// \param content  the octets on kDone, empty on everything else.
FileStatus ReadWholeFile(const std::string& path, std::size_t limit, std::string& content);

/// Replaces a file's content so that every reader sees the old or the new one, never a mixture,
/// also after a crash: temporary file beside it, fsync, rename, fsync of the directory.
///
/// A symbolic link is followed, not replaced. An existing file keeps its permissions, and owner and
/// group where the process may set them; when the group is lost, its rights shrink to those of
/// others. Fails without a trace: nothing is left behind.
/// \param newMode  permissions of a file that was not there before.
/// \return kDone, kNotOpened (nothing could be created) or kFailed (writing broke off).
FileStatus ReplaceFile(const std::string& path, std::string_view content, mode_t newMode = 0600);

}  // namespace ca
