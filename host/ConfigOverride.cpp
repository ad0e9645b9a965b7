#include "host/ConfigOverride.h"

#include "common/ConfigFileParser.h"
#include "common/Encode.h"
#include "common/PKIConfigFileParser.h"
#include "host/FileIo.h"
#include "host/HostError.h"

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

bool IsFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

// The PKI configuration that the module would find beside its configuration, or beside the first
// of the places where it looks for one; "" when there is none.
std::string FindPkiConfig(const std::string& config) {
    for (const std::wstring& place :
         ca::PKIConfigFileParser::SearchPaths(ca::PathToWString(config))) {
        std::string path = std::filesystem::absolute(ca::PathFromWString(place));
        if (IsFile(path)) {
            return path;
        }
    }
    return "";
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

CConfigOverride::CConfigOverride(const std::string& file, const std::string& option,
                                 const std::string& pkiFile) {
    if (!pkiFile.empty()) {
        // The module takes defaults for one that it cannot read, and no more than logs that.
        static_cast<void>(ReadFile(pkiFile, kLargestConfig));
        Announce(kPkiVariable, std::filesystem::absolute(pkiFile).string());
    }
    const Configuration found = FindConfiguration(file);
    m_russian = host::IsRussian(option, found);
    const bool isPassed = file.empty() || IsFile(file);  // the module reads regular files alone
    // The file says the language already: the module reads it itself.
    if (isPassed && m_russian == MakesRussian(found)) {
        if (!file.empty()) {
            Announce(kVariable, std::filesystem::absolute(file).string());
        }
        return;
    }
    m_hiddenFault = found.path.empty() ? "there is no configuration file" : found.fault;
    // A section may be opened again, and the last value of a repeated key holds.
    OpenCopy(found.content + "\n[Service settings]\nLanguage=" + (m_russian ? "Ru" : "En") + "\n");
    // Nothing lies beside the copy.
    const std::string pki = FindPkiConfig(found.path);
    if (!pki.empty() && !ca::PKIConfigFileParser::GivenPath()) {
        Announce(kPkiVariable, pki);
    }
    Announce(kVariable, "/proc/self/fd/" + std::to_string(m_copy));
}

CConfigOverride::~CConfigOverride() {
    if (m_copy >= 0) {
        ::close(m_copy);
    }
}

// An unnamed file: nothing is left behind, however the process ends.
void CConfigOverride::OpenCopy(const std::string& content) {
    // Closed in programs that the module might start; the module opens it by its name.
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
