#include "common/AtomicFile.h"

#include "common/CancelShield.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

using ca::FileStatus;

/// Owns one file descriptor.
class Descriptor {
  public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    int Get() const { return m_fd; }
    explicit operator bool() const { return m_fd >= 0; }
    /// False when the kernel reports a late write error.
    bool Close() {
        const ca::CCancelShield shield;
        return m_fd < 0 || ::close(std::exchange(m_fd, -1)) == 0;
    }

  private:
    int m_fd;
};

/// A file beside the target that disappears unless it takes the target's place.
class TemporaryFile {
  public:
    explicit TemporaryFile(std::string target)
        : m_target(std::move(target)),
          m_name(Directory() + "." + m_target.substr(Directory().size()) + ".XXXXXX"),
          m_file(::mkostemp(m_name.data(), O_CLOEXEC)) {}
    ~TemporaryFile() {
        if (m_file) {
            ::unlink(m_name.c_str());
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int Get() const { return m_file.Get(); }
    explicit operator bool() const { return static_cast<bool>(m_file); }
    /// The target's directory with its final slash; empty for a bare name.
    std::string Directory() const {
        const std::size_t slash = m_target.rfind('/');
        return slash != std::string::npos ? m_target.substr(0, slash + 1) : std::string();
    }

    bool TakePlace() {
        if (::fsync(m_file.Get()) != 0 || ::rename(m_name.c_str(), m_target.c_str()) != 0) {
            return false;
        }
        return m_file.Close();  // nothing left to unlink
    }

  private:
    std::string m_target;
    std::string m_name;
    Descriptor m_file;
};

bool WriteAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = ::write(fd, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        content.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

// Gives the new file the rights of the old one. Rights come last: a change of owner clears bits.
bool CopyRights(int fd, const struct stat& old) {
    mode_t mode = old.st_mode & 07777;
    if (::fchown(fd, old.st_uid, old.st_gid) != 0 &&
        ::fchown(fd, static_cast<uid_t>(-1), old.st_gid) != 0) {
        // The group's rights would now go to another group: leave it what everybody has.
        mode &= ~static_cast<mode_t>(070) | ((mode & 07) << 3);
    }
    return ::fchmod(fd, mode) == 0;
}

// The file behind symbolic links; the path itself when it does not exist yet.
std::string Resolve(const std::string& path) {
    struct Freer {
        void operator()(char* text) const { std::free(text); }  // realpath() allocates by malloc
    };
    const std::unique_ptr<char, Freer> real(::realpath(path.c_str(), nullptr));
    return real ? std::string(real.get()) : path;
}

}  // namespace

namespace ca {

FileStatus ReadWholeFile(const std::string& path, std::size_t limit, std::string& content) {
    content.clear();
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) {
        return errno == ENOENT || errno == ENOTDIR ? FileStatus::kMissing : FileStatus::kNotOpened;
    }
    struct stat info = {};
    if (::fstat(file.Get(), &info) != 0 || !S_ISREG(info.st_mode)) {
        return FileStatus::kNotOpened;
    }
    // The stated size is only a first guess: a file may grow meanwhile, or state none at all. One
    // octet more than allowed is asked for, which tells a file of the limit from a longer one.
    const std::size_t guess = static_cast<std::size_t>(info.st_size);
    std::string text(std::min(guess, limit) + 1, '\0');
    std::size_t filled = 0;
    for (;;) {
        const ssize_t count = ::read(file.Get(), text.data() + filled, text.size() - filled);
        if (count < 0 && errno != EINTR) {
            return FileStatus::kFailed;
        }
        filled += count > 0 ? static_cast<std::size_t>(count) : 0;
        if (filled > limit) {
            return FileStatus::kTooLarge;
        }
        if (count == 0) {
            break;
        }
        if (filled == text.size()) {
            text.resize(std::min(2 * filled, limit + 1));
        }
    }
    text.resize(filled);
    content = std::move(text);
    return FileStatus::kDone;
}

FileStatus ReplaceFile(const std::string& path, std::string_view content, mode_t newMode) {
    const std::string target = Resolve(path);
    struct stat old = {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (target.empty() || (exists && !S_ISREG(old.st_mode))) {
        return FileStatus::kNotOpened;
    }
    TemporaryFile file(target);
    if (!file) {
        return FileStatus::kNotOpened;
    }
    const bool ready = exists ? CopyRights(file.Get(), old) : ::fchmod(file.Get(), newMode) == 0;
    if (!ready || !WriteAll(file.Get(), content) || !file.TakePlace()) {
        return FileStatus::kFailed;
    }
    // The new name itself survives a crash only with its directory; a file system that cannot do
    // that has replaced the file nevertheless.
    const std::string directoryName = file.Directory();
    const Descriptor directory(::open(directoryName.empty() ? "." : directoryName.c_str(),
                                      O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory) {
        ::fsync(directory.Get());
    }
    return FileStatus::kDone;
}

}  // namespace ca
