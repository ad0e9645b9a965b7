#pragma once

#include "common/Lazy.h"

#define CURL_DISABLE_DEPRECATION  // older libraries know only the older options
#include <curl/curl.h>

#include <array>
#include <filesystem>
#include <memory>
#include <string>

namespace ca {

// Only the declarations of libcurl's headers are used: the library itself is loaded at run time.

/// libcurl, loaded once a process from the file "Qlocurl.so" beside the running executable.
class CurlLibrary {
  public:
    /// Loads the library when nobody did yet; safe from any thread. A failed load is tried again by
    /// the next call, so a file put there later is found without a restart. A loaded library stays
    /// until the process ends: its name look-up threads may outlive a transfer.
    /// Throws ca::Exception 16302 with the loader's words.
    static const CurlLibrary& Get();

    CurlLibrary(const CurlLibrary&) = delete;
    CurlLibrary& operator=(const CurlLibrary&) = delete;

    decltype(&::curl_global_init) globalInit = nullptr;
    decltype(&::curl_easy_init) easyInit = nullptr;
    decltype(&::curl_easy_cleanup) easyCleanup = nullptr;
    decltype(&::curl_easy_setopt) easySetOption = nullptr;
    decltype(&::curl_easy_getinfo) easyGetInfo = nullptr;
    decltype(&::curl_easy_strerror) easyErrorText = nullptr;
    decltype(&::curl_slist_append) listAppend = nullptr;
    decltype(&::curl_slist_free_all) listFree = nullptr;
    decltype(&::curl_multi_init) multiInit = nullptr;
    decltype(&::curl_multi_cleanup) multiCleanup = nullptr;
    decltype(&::curl_multi_add_handle) multiAdd = nullptr;
    decltype(&::curl_multi_remove_handle) multiRemove = nullptr;
    decltype(&::curl_multi_perform) multiPerform = nullptr;
    decltype(&::curl_multi_poll) multiPoll = nullptr;
    decltype(&::curl_multi_info_read) multiRead = nullptr;

  private:
    CurlLibrary();

    static CLazy<CurlLibrary> s_loaded;
};

/// Where the library is looked for.
std::filesystem::path CurlLibraryPath();

/// One transfer handle with typed options. For one thread at a time.
class CurlEasy {
  public:
    /// Throws ca::Exception 16302 when the library or a handle is not to be had.
    CurlEasy();
    CurlEasy(const CurlEasy&) = delete;
    CurlEasy& operator=(const CurlEasy&) = delete;
    ~CurlEasy();

    // Each throws ca::Exception 16302 when the library does not take the option.
    void Set(CURLoption option, long value) { Check(option, SetRaw(option, value)); }
    void Set(CURLoption option, const std::string& text) {
        Check(option, SetRaw(option, text.c_str()));
    }
    /// The memory must live as long as the handle is used.
    void Set(CURLoption option, const void* data) { Check(option, SetRaw(option, data)); }
    void Set(CURLoption option, curl_write_callback function) {
        Check(option, SetRaw(option, function));
    }
    void Set(CURLoption option, curl_xferinfo_callback function) {
        Check(option, SetRaw(option, function));
    }
    void Set(CURLoption option, curl_opensocket_callback function) {
        Check(option, SetRaw(option, function));
    }
    void SetSize(CURLoption option, curl_off_t size) { Check(option, SetRaw(option, size)); }

    /// For options that older libraries lack: false when this one does.
    bool TrySet(CURLoption option, long value) { return SetRaw(option, value) == CURLE_OK; }
    bool TrySet(CURLoption option, const char* text) { return SetRaw(option, text) == CURLE_OK; }

    /// Adds one request header line ("Name: value"; "Name:" keeps the library from sending its
    /// own).
    void AddHeader(const char* line);

    /// Runs the transfer; a CurlCode. A SIGPIPE that it causes does not reach the process. A thread
    /// that is cancelled meanwhile unwinds while it waits for the network, not inside the
    /// library.
    int Perform();

    /// Status of the last answer; 0 when there was none.
    long Status() const { return GetLong(CURLINFO_RESPONSE_CODE); }
    /// Status of a proxy's last answer to CONNECT; 0 when there was none.
    long TunnelStatus() const { return GetLong(CURLINFO_HTTP_CONNECTCODE); }
    /// Whether a request's header went out.
    bool IsSent() const { return GetLong(CURLINFO_REQUEST_SIZE) > 0; }
    /// The absolute URL that the last answer sends the client to; empty when it does not.
    std::string RedirectUrl() const;
    /// What the answer announces, never to be trusted; -1 when it does not.
    curl_off_t AnnouncedLength() const;
    /// What went wrong in the last Perform(): the library's own words, at least the code's.
    std::string ErrorText(int code) const;

  private:
    template <class Value>
    int SetRaw(CURLoption option, Value value) {
        return m_library.easySetOption(m_handle.get(), option, value);
    }
    static void Check(CURLoption option, int code);
    long GetLong(CURLINFO info) const;

    const CurlLibrary& m_library;
    std::array<char, CURL_ERROR_SIZE> m_errorText{};  // written by the library
    std::unique_ptr<curl_slist, void (*)(curl_slist*)> m_headers;
    std::unique_ptr<CURL, void (*)(CURL*)> m_handle;
};

}  // namespace ca
