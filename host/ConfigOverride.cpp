#include "host/ConfigOverride.h"

#include "host/FileIo.h"
#include "host/HostError.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace {

constexpr const char* kVariable = "MOD_FOO_CONFIG";
constexpr const char* kName = "ZORNA/QetCryptoSvcConfig.ini";

bool IsFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

// The configuration that the module would read; "" when there is none.
std::string FindConfig() {
    if (const char* const given = std::getenv(kVariable); given != nullptr && *given != '\0') {
        return IsFile(given) ? given : "";
    }
    const char* const home = std::getenv("HOME");
    const std::string candidates[] = {
        home != nullptr ? std::string(home) + "/.config/" + kName : "",
        std::string("/etc/") + kName,
    };
    for (const std::string& candidate : candidates) {
        if (IsFile(candidate)) {
            return candidate;
        }
    }
    return "";
}

[[noreturn]] void Fail() {
    throw host::CHostError(host::kExitUsage,
                           std::string("cannot pass a configuration: ") + std::strerror(errno));
}

void Announce(const std::string& path) {
    if (::setenv(kVariable, path.c_str(), /*overwrite=*/1) != 0) {
        Fail();
    }
}

}  // namespace

namespace host {

CConfigOverride::CConfigOverride(const std::string& file, const std::string& language) {
    if (language.empty()) {
        if (!file.empty()) {
            Announce(std::filesystem::absolute(file).string());
        }
        return;
    }
    const std::string found = file.empty() ? FindConfig() : file;
    std::string content = found.empty() ? "" : ReadFile(found);
    // A section may be opened again, and the last value of a repeated key holds.
    content += "\n[Service settings]\nLanguage=" + language + "\n";
    OpenCopy(content);
    Announce("/proc/self/fd/" + std::to_string(m_copy));
}

CConfigOverride::~CConfigOverride() {
    if (m_copy >= 0) {
        ::close(m_copy);
    }
}

// An unnamed file: nothing is left behind, however the process ends.
void CConfigOverride::OpenCopy(const std::string& content) {
    m_copy = ::memfd_create("cmhost-config", MFD_CLOEXEC);
    if (m_copy < 0) {
        Fail();
    }
    for (std::size_t written = 0; written < content.size();) {
        const ssize_t count = ::write(m_copy, content.data() + written, content.size() - written);
        if (count < 0) {
            ::close(m_copy);
            Fail();
        }
        written += static_cast<std::size_t>(count);
    }
}

}  // namespace host
