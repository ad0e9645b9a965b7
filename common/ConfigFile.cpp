#include "common/ConfigFile.h"

#include "common/Encode.h"
#include "common/Lng.h"

#include <string_view>
#include <sys/auxv.h>

namespace {

// A configuration has some kilobytes; more is a file named by mistake.
constexpr std::size_t kMaxFileSize = 4U << 20;

}  // namespace

namespace ca {

bool IsSecureExecution() noexcept {
    // Set by the kernel for set-user-ID programs, whose environment is a stranger's.
    return ::getauxval(AT_SECURE) != 0;
}

FileStatus ReadConfigText(const std::wstring& path, std::string& content) {
    const FileStatus status = ReadWholeFile(PathFromWString(path), kMaxFileSize, content);
    content.erase(0, content.size() - WithoutByteOrderMark(content).size());
    return status;
}

std::wstring DescribeReadFailure(FileStatus status, const std::wstring& paths) {
    const Sentence message = status == FileStatus::kMissing    ? kMsgConfigNotFound
                             : status == FileStatus::kTooLarge ? kMsgConfigTooLarge
                                                               : kMsgConfigUnreadable;
    return SetZORNAMessage(message) + paths;
}

// Replaced as a whole: a crash in between leaves the old file.
bool WriteConfigText(const std::wstring& path, const std::string& content,
                     std::wstring& errorText) {
    const FileStatus status = ReplaceFile(PathFromWString(path), content);
    errorText.clear();
    if (status != FileStatus::kDone) {
        errorText = SetZORNAMessage(status == FileStatus::kNotOpened ? kMsgConfigOpenFailed
                                                                     : kMsgConfigWriteFailed);
    }
    return status == FileStatus::kDone;
}

}  // namespace ca
