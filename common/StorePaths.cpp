#include "common/StorePaths.h"

#include "common/Encode.h"

#include <algorithm>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace ca;

constexpr std::size_t kLongestName = 64;

// Where the user's data are (XDG Base Directory Specification); not what a caller says in a set-uid
// or set-gid program.
std::string UserData() {
    const char* const data = ::secure_getenv("XDG_DATA_HOME");
    if (data != nullptr && *data == '/') {
        return data;
    }
    if (const char* const home = ::secure_getenv("HOME"); home != nullptr && *home == '/') {
        return std::string(home) + "/.local/share";
    }
    std::vector<char> buffer(16384);
    struct passwd entry = {};
    struct passwd* found = nullptr;
    ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr ? std::string(found->pw_dir) + "/.local/share" : std::string();
}

std::string RootOf(const PkiStores& settings, bool isMachine) {
    if (isMachine) {
        return settings.machine.empty() ? "/var/lib/ZORNA/stores"
                                        : PathFromWString(settings.machine);
    }
    if (!settings.user.empty()) {
        return PathFromWString(settings.user);
    }
    const std::string data = UserData();
    return data.empty() ? data : data + "/ZORNA/stores";
}

// A store's name comes from a client: it may not lead out of the root. Those that every user has are
// written alike in whatever case they are asked for.
std::string DirectoryName(const std::wstring& name) {
    std::wstring lowered = name;
    tolower(lowered);
    for (const std::wstring known : kOwnStores) {
        std::wstring same = known;
        tolower(same);
        if (same == lowered) {
            return u16u8(known);
        }
    }
    const bool isName =
        !name.empty() && name.size() <= kLongestName && name.front() != L'.' &&
        std::ranges::all_of(name, [](wchar_t c) { return c >= L' ' && c != L'/' && c != 0x7F; });
    return isName ? u16u8(name) : std::string();
}

}  // namespace

namespace ca {

std::string StoreDirectoryPath(const PkiStores& settings, bool isMachine,
                               const std::wstring& name) {
    const std::string root = RootOf(settings, isMachine);
    const std::string directory = DirectoryName(name);
    return root.empty() || directory.empty() ? std::string() : root + '/' + directory;
}

}  // namespace ca
