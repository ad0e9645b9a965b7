#include "host/FileIo.h"

#include "host/HostError.h"
#include "host/StandardStreams.h"

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

using host::CHostError;

// Octets; a pipe hands over about as many at once.
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
    // Without a size nothing could be refused before it was read.
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

// Writes through Qt: "cannot write ...", with the reason, when `did` is false.
void Check(bool did, const QFileDevice& file, const std::string& path) {
    if (!did) {
        throw CHostError(host::kExitUsage,
                         "cannot write " + path + ": " + file.errorString().toStdString());
    }
}

void Write(QFileDevice& file, const std::string& path, std::string_view octets) {
    Check(file.isOpen(), file, path);
    while (!octets.empty()) {
        const std::string_view piece = octets.substr(0, kLargestMove);
        const qint64 count = file.write(piece.data(), static_cast<qint64>(piece.size()));
        Check(count > 0, file, path);
        octets.remove_prefix(static_cast<std::size_t>(count));
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
    // A signal that is not meant to end the program interrupts a read.
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
    const QString name = QString::fromStdString(path);
    // The names there stand for open files, pipes for one, and not for a place in a folder. Qt
    // knows no names that are not UTF-8.
    if (path.starts_with("/dev/") || path.starts_with("/proc/") ||
        QFile::encodeName(name).toStdString() != path) {
        const int descriptor =
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY,
                   /*mode=*/0666);
        if (descriptor < 0) {
            Fail("create", path);
        }
        QFile file;
        file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered,
                  QFileDevice::AutoCloseHandle);
        Write(file, path, octets);
        return;
    }
    QSaveFile file(name);
    // Where nothing can be put beside the file, or it is a device, it is written in its place.
    file.setDirectWriteFallback(true);
    // Unbuffered, because what fails while the buffer is emptied at the end is not reported.
    file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    Write(file, path, octets);
    Check(file.commit(), file, path);
}

}  // namespace host
