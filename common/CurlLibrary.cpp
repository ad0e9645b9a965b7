#include "common/CurlLibrary.h"

#include "common/CancelShield.h"
#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/ForkMutex.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <dlfcn.h>
#include <mutex>
#include <new>
#include <pthread.h>
#include <unistd.h>
#include <vector>

namespace ca {
namespace {

constexpr char kLibraryFile[] = "Qlocurl.so";
constexpr char kOwnExecutable[] = "/proc/self/exe";

// Handles are made under a lock of libcurl's own, which says whether the library is initialised; a
// child would wait for a thread that held it as the parent forked. curl_multi_init() makes an easy
// handle, too.
CForkMutex makingMutex;

template <class Make>
auto MakeHandle(Make make) {
    const std::lock_guard lock(makingMutex);
    return make();
}

struct LibraryCloser {
    void operator()(void* library) const { dlclose(library); }
};
using LibraryHandle = std::unique_ptr<void, LibraryCloser>;

[[noreturn]] void ThrowLoaderError() {
    const char* text = dlerror();
    throw Exception(kErrCurlInit, u8u16(std::string(text != nullptr ? text : "")));
}

template <class Function>
void Resolve(const LibraryHandle& library, const char* name, Function& function) {
    void* symbol = dlsym(library.get(), name);
    if (symbol == nullptr) {
        ThrowLoaderError();
    }
    function = reinterpret_cast<Function>(symbol);
}

// Keeps a SIGPIPE of this thread from the process: writing to a connection that the server has
// closed raises it inside TLS libraries, and its default is the end of the process. The signal goes
// to the thread that wrote, so blocking it here and taking it off is enough.
class SigPipeGuard {
  public:
    SigPipeGuard() {
        sigemptyset(&m_pipe);
        sigaddset(&m_pipe, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        m_wasPending = sigismember(&pending, SIGPIPE) == 1;
        m_active = !m_wasPending && pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before) == 0;
    }
    SigPipeGuard(const SigPipeGuard&) = delete;
    SigPipeGuard& operator=(const SigPipeGuard&) = delete;
    ~SigPipeGuard() {
        if (m_active) {
            const CCancelShield shield;
            const std::timespec noWait{};
            while (sigtimedwait(&m_pipe, nullptr, &noWait) < 0 && errno == EINTR) {
            }
            pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
        }
    }

  private:
    sigset_t m_pipe{};
    sigset_t m_before{};
    bool m_wasPending = false;
    bool m_active = false;
};

// One transfer as the library's own loop would run it, but in steps.
class Steps {
  public:
    Steps(const CurlLibrary& library, CURL* handle)
        : m_library(library), m_handle(handle), m_multi(MakeHandle(library.multiInit)) {
        m_code = m_multi == nullptr ? CURLM_OUT_OF_MEMORY : m_library.multiAdd(m_multi, m_handle);
    }
    Steps(const Steps&) = delete;
    Steps& operator=(const Steps&) = delete;
    ~Steps() {
        const CCancelShield shield;  // closes connections
        if (m_multi != nullptr) {
            m_library.multiRemove(m_multi, m_handle);
            m_library.multiCleanup(m_multi);
        }
    }

    // False once there is nothing more to do.
    bool Step() {
        const CCancelShield shield;
        int running = 0;
        if (m_code == CURLM_OK) {
            m_code = m_library.multiPerform(m_multi, &running);
        }
        return m_code == CURLM_OK && running != 0;
    }
    // A cancellation comes into effect here: the library's state is whole.
    void Wait() { m_code = m_library.multiPoll(m_multi, nullptr, 0, kLongestWaitMs, nullptr); }
    int Result() const {
        if (m_code != CURLM_OK) {
            return m_code == CURLM_OUT_OF_MEMORY ? CURLE_OUT_OF_MEMORY
                                                 : CURLE_BAD_FUNCTION_ARGUMENT;
        }
        int left = 0;
        const CURLMsg* const message = m_library.multiRead(m_multi, &left);
        return message != nullptr ? message->data.result : CURLE_BAD_FUNCTION_ARGUMENT;
    }

  private:
    static constexpr int kLongestWaitMs = 1000;  // the library ends it earlier for its own timers

    const CurlLibrary& m_library;
    CURL* const m_handle;
    CURLM* const m_multi;
    int m_code;
};

}  // namespace

std::filesystem::path CurlLibraryPath() {
    std::vector<char> target(256);
    for (;;) {
        const ssize_t length = readlink(kOwnExecutable, target.data(), target.size());
        if (length < 0) {
            throw Exception(kErrCurlInit);
        }
        const auto size = static_cast<std::size_t>(length);
        if (size < target.size()) {
            const std::filesystem::path executable(target.begin(), target.begin() + length);
            return executable.parent_path() / kLibraryFile;
        }
        target.resize(target.size() * 2);  // may have been cut
    }
}

const CurlLibrary& CurlLibrary::Get() {
    return s_loaded.Get();
}

CLazy<CurlLibrary> CurlLibrary::s_loaded([] { return CurlLibrary(); });

CurlLibrary::CurlLibrary() {
    LibraryHandle library(dlopen(CurlLibraryPath().c_str(), RTLD_NOW | RTLD_LOCAL));
    if (!library) {
        ThrowLoaderError();
    }
    Resolve(library, "curl_global_init", globalInit);
    Resolve(library, "curl_easy_init", easyInit);
    Resolve(library, "curl_easy_cleanup", easyCleanup);
    Resolve(library, "curl_easy_setopt", easySetOption);
    Resolve(library, "curl_easy_getinfo", easyGetInfo);
    Resolve(library, "curl_easy_strerror", easyErrorText);
    Resolve(library, "curl_slist_append", listAppend);
    Resolve(library, "curl_slist_free_all", listFree);
    Resolve(library, "curl_multi_init", multiInit);
    Resolve(library, "curl_multi_cleanup", multiCleanup);
    Resolve(library, "curl_multi_add_handle", multiAdd);
    Resolve(library, "curl_multi_remove_handle", multiRemove);
    Resolve(library, "curl_multi_perform", multiPerform);
    Resolve(library, "curl_multi_poll", multiPoll);
    Resolve(library, "curl_multi_info_read", multiRead);
    if (const CURLcode code = globalInit(CURL_GLOBAL_ALL); code != CURLE_OK) {
        throw Exception(kErrCurlInit, u8u16(std::string(easyErrorText(code))));
    }
    // Deliberate: never closed, see Get().
    static_cast<void>(library.release());
}

CurlEasy::CurlEasy()
    : m_library(CurlLibrary::Get()),
      m_headers(nullptr, m_library.listFree),
      m_handle(MakeHandle(m_library.easyInit), m_library.easyCleanup) {
    if (!m_handle) {
        throw Exception(kErrCurlInit);
    }
    Set(CURLOPT_ERRORBUFFER, static_cast<const void*>(m_errorText.data()));
}

CurlEasy::~CurlEasy() {
    const CCancelShield shield;
    m_handle.reset();
}

void CurlEasy::Check(CURLoption option, int code) {
    if (code == CURLE_OUT_OF_MEMORY) {
        throw std::bad_alloc();
    }
    if (code != CURLE_OK) {
        throw Exception(kErrCurlInit, L"option " + DecimalText(static_cast<int>(option)));
    }
}

void CurlEasy::AddHeader(const char* line) {
    curl_slist* longer = m_library.listAppend(m_headers.get(), line);
    if (longer == nullptr) {
        throw std::bad_alloc();  // the old list is still ours
    }
    static_cast<void>(m_headers.release());
    m_headers.reset(longer);
    Set(CURLOPT_HTTPHEADER, static_cast<const void*>(longer));
}

int CurlEasy::Perform() {
    const SigPipeGuard guard;
    m_errorText[0] = '\0';
    Steps steps(m_library, m_handle.get());
    while (steps.Step()) {
        steps.Wait();
    }
    return steps.Result();
}

long CurlEasy::GetLong(CURLINFO info) const {
    long value = 0;
    m_library.easyGetInfo(m_handle.get(), info, &value);
    return value;
}

std::string CurlEasy::RedirectUrl() const {
    const char* url = nullptr;
    m_library.easyGetInfo(m_handle.get(), CURLINFO_REDIRECT_URL, &url);
    return url != nullptr ? url : "";
}

curl_off_t CurlEasy::AnnouncedLength() const {
    curl_off_t length = -1;
    m_library.easyGetInfo(m_handle.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
    return length;
}

std::string CurlEasy::ErrorText(int code) const {
    const auto end = std::ranges::find(m_errorText, '\0');
    std::string text(m_errorText.begin(), end);
    return text.empty() ? std::string(m_library.easyErrorText(static_cast<CURLcode>(code))) : text;
}

}  // namespace ca
