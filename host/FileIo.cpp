#include "host/FileIo.h"

#include "common/AtomicFile.h"
#include "host/HostError.h"
#include "host/StandardStreams.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

using host::CHostError;

constexpr std::size_t kChunk = std::size_t{1} << 16U;
// The system moves less than 2 GiB at a time.
constexpr std::size_t kLargestMove = std::size_t{1} << 30U;

[[noreturn]] void Fail(const std::string& what, const std::string& name) {
    throw CHostError(host::kExitUsage, "cannot " + what + " " + name + ": " + std::strerror(errno));
}

std::string SizeText(std::size_t octets) {
    const std::size_t mebibytes = octets >> 20U;
    return mebibytes != 0 ? std::to_string(mebibytes) + " MiB" : std::to_string(octets) + " octets";
}

[[noreturn]] void RefuseSize(const host::CInputFile& file, std::size_t limit) {
    if (file.GetSize() == 0 && limit == file.GetBound()) {
        throw CHostError(host::kExitUsage, file.GetName() + " goes on beyond " + SizeText(limit) +
                                               "; more is taken of a regular file alone");
    }
    throw CHostError(host::kExitUsage,
                     file.GetName() + " is too large: more than " + SizeText(limit));
}

// Ends the reading of a file of which all that may be was taken.
void CheckEnd(host::CInputFile& file, std::size_t limit, std::size_t used) {
    char next = 0;
    if (used > limit || file.Read(&next, 1) != 0) {
        RefuseSize(file, limit);
    }
}

// The permissions of a new file. umask() could tell only by changing it.
mode_t NewFileMode() {
    constexpr mode_t kAll = 0666;
    constexpr std::string_view kMask = "Umask:";
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(kMask)) {
            return kAll & ~static_cast<mode_t>(
                              std::strtoul(line.c_str() + kMask.size(), nullptr, /*base=*/8));
        }
    }
    // Without /proc nobody but the owner: too few rights can be mended later.
    return kAll & ~mode_t{077};
}

// Writes to what has no content to be replaced, as devices and pipes, or where no file can be put
// beside it.
void WriteInPlace(const std::string& path, std::string_view octets) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY,
                            /*mode=*/0666);
    if (file < 0) {
        Fail("create", path);
    }
    int fault = 0;
    // A device or pipe takes what it has room for at the time.
    while (fault == 0 && !octets.empty()) {
        const ssize_t count = ::write(file, octets.data(), std::min(octets.size(), kLargestMove));
        fault = count < 0 && errno != EINTR ? errno : 0;
        octets.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    // Some file systems report a full disk only here.
    if (::close(file) != 0 && fault == 0) {
        fault = errno;
    }
    if (fault != 0) {
        errno = fault;
        Fail("write", path);
    }
}

}  // namespace

namespace host {

CInputFile::CInputFile(const std::string& path)
    : m_isStandardInput(path == "-"),
      m_name(m_isStandardInput ? "the standard input" : path),
      m_descriptor(m_isStandardInput ? STDIN_FILENO
                                     : ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY)) {
    struct stat status {};
    if (m_descriptor < 0 || ::fstat(m_descriptor, &status) != 0) {
        Fail("open", m_name);
    }
    // The sizes that others state mean nothing: pipes and devices say 0.
    m_size = S_ISREG(status.st_mode) ? static_cast<std::size_t>(status.st_size) : 0;
}

CInputFile::~CInputFile() {
    if (!m_isStandardInput) {
        ::close(m_descriptor);
    }
}

std::size_t CInputFile::Read(char* octets, std::size_t room) {
    ssize_t count = 0;
    do {
        count = ::read(m_descriptor, octets, std::min(room, kLargestMove));
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        Fail("read", m_name);
    }
    return static_cast<std::size_t>(count);
}

std::string ReadFile(const std::string& path, std::size_t limit) {
    CInputFile file(path);
    limit = std::min(limit, file.GetBound());
    if (file.GetSize() > limit) {
        RefuseSize(file, limit);
    }
    // One octet more than the file's size, so that the end is met without growing.
    std::string content(file.GetSize() != 0 ? file.GetSize() + 1 : kChunk, '\0');
    std::size_t used = 0;
    while (const std::size_t count = file.Read(content.data() + used, content.size() - used)) {
        used += count;
        if (used >= limit) {
            CheckEnd(file, limit, used);
            break;
        }
        if (used == content.size()) {
            // Doubled, so that all copies together cost no more than the content once again.
            content.resize(std::min(2 * used, limit));
        }
    }
    content.resize(used);
    return content;
}

void WriteFile(const std::string& path, std::string_view octets) {
    if (path == "-") {
        Put(octets);
        Flush();
        return;
    }
    // The names there stand for open files, pipes for one, and not for a place in a folder.
    if (path.starts_with("/dev/") || path.starts_with("/proc/")) {
        WriteInPlace(path, octets);
        return;
    }
    errno = 0;
    switch (ca::ReplaceFile(path, octets, NewFileMode())) {
        case ca::FileStatus::kDone:
            return;
        case ca::FileStatus::kNotOpened:
            // The folder may not be written to while the file in it may. A full disk is no such
            // reason: writing in place would destroy the old content and then fail.
            if (errno != ENOSPC && errno != EDQUOT) {
                WriteInPlace(path, octets);
                return;
            }
            break;
        default:
            break;
    }
    Fail("write", path);
}

}  // namespace host
