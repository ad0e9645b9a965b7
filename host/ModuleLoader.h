#pragma once

#include "host/Answer.h"
#include "host/Request.h"
#include "module/mod_foo.h"

#include <string>

namespace host {

/// The library that a user means by `path`: "" looks for the provider's ("foo": libmod_foo.so.1)
/// beside the executable, where an installation and a build tree have it, and leaves it to the
/// loader's own path at last. A bare name is a file here.
std::string FindModule(const std::string& path, const std::string& provider);

/// A provider of the module interface, loaded with dlopen and known by its C entry points only.
class CModuleLibrary {
  public:
    /// \param path  as FindModule() gives it.
    /// Throws CHostError (no module) when it does not load or lacks an entry point.
    explicit CModuleLibrary(const std::string& path);

    const std::string& GetPath() const { return m_path; }

    /// An entry point by its symbol's name; null when the library has none.
    void* Find(const char* symbol) const;

  private:
    friend class CModule;

    // Deliberate: never dlclose()d. A provider may have started threads or registered exit
    // handlers whose code must not vanish before the process ends.
    void* m_library = nullptr;
    std::string m_path;
    decltype(&CM_Init) m_init = nullptr;
    decltype(&CM_ProcessClientRequest) m_process = nullptr;
    decltype(&CM_Free) m_free = nullptr;
};

/// One module instance. Ask() may be called from several threads.
class CModule {
  public:
    /// \param library  outlives the instance.
    /// Throws CHostError (no module) when the provider gives none.
    CModule(const CModuleLibrary& library, bool silent);
    CModule(const CModule&) = delete;
    CModule& operator=(const CModule&) = delete;
    ~CModule();

    /// Runs one request. Whatever the provider leaves in the packet becomes an answer, see CAnswer.
    /// The module may write into the request's text. An exception of the provider's is an improper
    /// answer.
    CAnswer Ask(CRequest& request) const;

  private:
    const CModuleLibrary& m_library;
    void* m_handle;
};

}  // namespace host
