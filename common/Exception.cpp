#include "common/Exception.h"

#include "common/Log.h"

#include <cstring>

namespace {

struct Origin {
    std::uint32_t code;
    const char* file;  // static text
    long line;
};

constinit thread_local Origin latest{0, nullptr, 0};

// The build may give a path.
const char* FileName(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path;
}

}  // namespace

namespace ca {

void NoteRaised(std::uint32_t code, const char* file, long line) noexcept {
    latest = {code, file, line};
}

std::wstring RaisedAt(const Exception& exception, const char* file, long line) {
    if (latest.file != nullptr && latest.code == exception.errorCode) {
        file = latest.file;
        line = latest.line;
    }
    return GetLineString(FileName(file), line, "");
}

}  // namespace ca
