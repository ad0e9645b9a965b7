#include "host/ConfigOverride.h"

#include "host/FileIo.h"
#include "host/HostError.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

constexpr const char* kVariable = "MOD_FOO_CONFIG";
constexpr const char* kPkiVariable = "MOD_FOO_PKI_CONFIG";
constexpr const char* kName = "ZORNA/QetCryptoSvcConfig.ini";
constexpr const char* kPkiName = "QetCryptoSvcPKIConfig.json";

bool IsFile(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

// Where the module looks for its configuration, in order.
std::vector<std::string> SearchPaths() {
    if (std::string given = Variable(kVariable); !given.empty()) {
        return {given};
    }
    const std::string home = Variable("HOME");
    std::vector<std::string> paths = {std::string("/etc/") + kName};
    if (!home.empty()) {
        paths.insert(paths.begin(), home + "/.config/" + kName);
    }
    return paths;
}

// The first of them that is there; "" when none is.
std::string FirstFile(const std::vector<std::string>& paths) {
    const auto found = std::find_if(paths.begin(), paths.end(), IsFile);
    return found != paths.end() ? *found : "";
}

// The PKI configuration that belongs to the first of these configurations that has one; "" when
// none does.
std::string FindPkiConfig(std::vector<std::string> configs) {
    for (std::string& path : configs) {
        path = std::filesystem::absolute(path).replace_filename(kPkiName).string();
    }
    return FirstFile(configs);
}

[[noreturn]] void Fail() {
    throw host::CHostError(host::kExitUsage,
                           std::string("cannot pass a configuration: ") + std::strerror(errno));
}

void Announce(const char* variable, const std::string& path) {
    if (::setenv(variable, path.c_str(), /*overwrite=*/1) != 0) {
        Fail();
    }
}

}  // namespace

namespace host {

CConfigOverride::CConfigOverride(const std::string& file, const std::string& language,
                                 const std::string& pkiFile) {
    if (!pkiFile.empty()) {
        // The module takes defaults for one that it cannot read, and no more than logs that.
        static_cast<void>(ReadFile(pkiFile, kLargestConfig));
        Announce(kPkiVariable, std::filesystem::absolute(pkiFile).string());
    }
    if (language.empty()) {
        if (!file.empty()) {
            static_cast<void>(ReadFile(file, kLargestConfig));
            Announce(kVariable, std::filesystem::absolute(file).string());
        }
        return;
    }
    const std::vector<std::string> places =
        file.empty() ? SearchPaths() : std::vector<std::string>{file};
    const std::string found = file.empty() ? FirstFile(places) : file;
    std::string content = found.empty() ? "" : ReadFile(found, kLargestConfig);
    // A section may be opened again, and the last value of a repeated key holds.
    content += "\n[Service settings]\nLanguage=" + language + "\n";
    OpenCopy(content);
    Announce(kVariable, "/proc/self/fd/" + std::to_string(m_copy));
    // Nothing lies beside the copy.
    const std::string pki = FindPkiConfig(found.empty() ? places : std::vector<std::string>{found});
    if (!pki.empty() && Variable(kPkiVariable).empty()) {
        Announce(kPkiVariable, pki);
    }
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
