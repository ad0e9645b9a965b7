#pragma once

#include "common/AtomicFile.h"

#include <string>

namespace ca {

// What the configuration files have in common: UTF-8, at most 4 MiB, replaced in one step.

/// Whether the process has rights that its caller has not: set-uid, set-gid or capabilities of the
/// program's file (AT_SECURE). Environment and home directory are a stranger's then.
bool IsSecureExecution() noexcept;

/// Reads a file without its byte-order mark. `content` is empty on everything but kDone.
FileStatus ReadConfigText(const std::wstring& path, std::string& content);

/// Why ReadConfigText() failed, in the current language; `paths` tells which file or files.
std::wstring DescribeReadFailure(FileStatus status, const std::wstring& paths);

/// Replaces the file, see ReplaceFile().
/// \return false, with message 150 or 151 in `errorText`, when that failed; else the text is empty.
bool WriteConfigText(const std::wstring& path, const std::string& content, std::wstring& errorText);

}  // namespace ca
