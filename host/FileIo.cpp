#include "host/FileIo.h"

#include "host/HostError.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <sys/types.h>

namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16;

[[noreturn]] void Fail(const char* what, const std::string& path) {
    throw host::CHostError(host::kExitUsage, std::string("cannot ") + what + " " +
                                                 (path == "-" ? "the standard stream" : path) +
                                                 ": " + std::strerror(errno));
}

// An open file or one of the standard streams, which stay open.
class Handle {
  public:
    Handle(const std::string& path, const char* mode, FILE* standard)
        : m_file(path == "-" ? standard : std::fopen(path.c_str(), mode)),
          m_owned(m_file != standard) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (m_file != nullptr && m_owned) {
            std::fclose(m_file);
        }
    }

    FILE* Get() const { return m_file; }
    // Flushes, so that a full disk is noticed. The file closes with the object.
    bool Finish() { return std::fflush(m_file) == 0; }

  private:
    FILE* m_file;
    bool m_owned;
};

// Octets of a regular file; 0 for anything else.
std::size_t SizeOf(FILE* file) {
    struct stat status {};
    if (::fstat(::fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) {
        return 0;
    }
    return static_cast<std::size_t>(status.st_size);
}

}  // namespace

namespace host {

struct CLineReader::Stream {
    explicit Stream(const std::string& path) : handle(path, "rbe", stdin) {}
    ~Stream() { std::free(line); }  // getline() allocates it

    Handle handle;
    char* line = nullptr;
    std::size_t room = 0;
};

std::string ReadFile(const std::string& path) {
    const Handle handle(path, "rbe", stdin);
    if (handle.Get() == nullptr) {
        Fail("open", path);
    }
    std::string content;
    std::size_t used = 0;
    for (;;) {
        // One octet more than the file's size, so that the end is met without growing.
        content.resize(used == 0 ? SizeOf(handle.Get()) + kChunk : used * 2);
        used += std::fread(content.data() + used, 1, content.size() - used, handle.Get());
        if (used < content.size()) {
            break;
        }
    }
    if (std::ferror(handle.Get()) != 0) {
        Fail("read", path);
    }
    content.resize(used);
    return content;
}

void WriteFile(const std::string& path, std::span<const unsigned char> octets) {
    Handle handle(path, "wbe", stdout);
    if (handle.Get() == nullptr) {
        Fail("create", path);
    }
    if (std::fwrite(octets.data(), 1, octets.size(), handle.Get()) != octets.size() ||
        !handle.Finish()) {
        Fail("write", path);
    }
}

CLineReader::CLineReader(const std::string& path)
    : m_path(path), m_stream(std::make_unique<Stream>(path)) {
    if (m_stream->handle.Get() == nullptr) {
        Fail("open", path);
    }
    m_size = SizeOf(m_stream->handle.Get());
}

CLineReader::~CLineReader() = default;

bool CLineReader::Next(std::string& line) {
    FILE* const file = m_stream->handle.Get();
    const ssize_t count = ::getline(&m_stream->line, &m_stream->room, file);
    if (count < 0) {
        if (std::ferror(file) != 0) {
            Fail("read", m_path);
        }
        return false;
    }
    m_position += static_cast<std::size_t>(count);
    std::string_view text(m_stream->line, static_cast<std::size_t>(count));
    for (const char end : {'\n', '\r'}) {
        if (text.ends_with(end)) {
            text.remove_suffix(1);
        }
    }
    line.assign(text);
    return true;
}

}  // namespace host
