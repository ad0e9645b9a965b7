#include "host/ModuleLoader.h"

#include "host/HostError.h"
#include "host/LogSink.h"
#include "host/ModuleWatch.h"

#include <cstdint>
#include <cxxabi.h>
#include <dlfcn.h>
#include <exception>
#include <filesystem>
#include <limits>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Where the library stands relative to the executable: beside it, in an installation, in a build
// tree. Last the bare name, which the loader looks for by itself.
std::vector<std::string> Candidates(const std::string& provider) {
    const std::string soName = "libmod_" + provider + ".so.1";
    std::error_code error;
    // Not argv[0], which is whatever the caller said.
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    std::vector<std::string> paths;
    for (const char* relative : {".", "../lib", CMHOST_LIBRARY_DIR, "../module"}) {
        const fs::path path = (folder / relative / soName).lexically_normal();
        if (!error && fs::exists(path, error)) {
            paths.push_back(path.string());
        }
        error.clear();
    }
    paths.push_back(soName);
    return paths;
}

std::string LoaderError() {
    const char* const text = ::dlerror();
    return text != nullptr ? text : "unknown reason";
}

template <class Function>
void Resolve(const host::CModuleLibrary& library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(library.Find(name));
    if (function == nullptr) {
        // A library of something else, or of a version without the function.
        throw host::CHostError(host::kExitNoModule,
                               library.GetPath() + " is not a module: it has no function " + name);
    }
}

}  // namespace

namespace host {

std::string FindModule(const std::string& path, const std::string& provider) {
    if (path.empty()) {
        return Candidates(provider).front();
    }
    // The loader would look for a bare name in the folders of the system instead.
    return path.find('/') == std::string::npos ? "./" + path : path;
}

CModuleLibrary::CModuleLibrary(const std::string& path) : m_path(path) {
    {
        const CModuleTask task("while it is loaded");
        // All symbols at once, so that what is missing is told here and not in the middle of a
        // request. Local, since two providers may define the same names.
        m_library = ::dlopen(m_path.c_str(), RTLD_NOW | RTLD_LOCAL);
    }
    if (m_library == nullptr) {
        throw CHostError(kExitNoModule, "the module does not load: " + LoaderError());
    }
    Resolve(*this, "CM_Init", m_init);
    Resolve(*this, "CM_ProcessClientRequest", m_process);
    Resolve(*this, "CM_Free", m_free);
}

void* CModuleLibrary::Find(const char* symbol) const {
    return ::dlsym(m_library, symbol);
}

CModule::CModule(const CModuleLibrary& library, bool silent)
    : m_library(library), m_handle(nullptr) {
    {
        const CModuleTask task("CM_Init");
        m_handle = library.m_init(silent ? 1 : 0, &PrintLogLine);
    }
    if (m_handle == nullptr) {
        throw CHostError(kExitNoModule, library.GetPath() + " gives no module (CM_Init failed)");
    }
}

CModule::~CModule() {
    const CModuleTask task("CM_Free");
    m_library.m_free(m_handle);
}

CAnswer CModule::Ask(CRequest& request) const {
    if (request.octets.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw CHostError(kExitUsage, "a request has to be smaller than 4 GiB");
    }
    CMPacket packet{};
    packet.request = request.octets.data();
    // The packet counts in 32 bits.
    packet.requestLength = static_cast<std::uint32_t>(request.octets.size());
    packet.interactive = request.interactive;
    const CModuleTask task(request.name);
    try {
        m_library.m_process(m_handle, &packet);
    } catch (const abi::__forced_unwind&) {
        // The run-time library ends the process when this one is not thrown on.
        throw;  // the thread is being cancelled
    } catch (const std::exception& error) {
        return CAnswer(std::string("the module threw an exception: ") + error.what());
    } catch (...) {
        return CAnswer("the module threw an exception");
    }
    return CAnswer(packet.response, packet.responseSize);
}

}  // namespace host
