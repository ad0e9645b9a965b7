#pragma once

#include "common/Lazy.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <sys/socket.h>

namespace ca {

// The part of libcurl's documented interface (curl.se/libcurl/c) that is used here. Numbers and
// types are its ABI, which has not changed since libcurl.so.4; they are written out so that
// building needs no headers of it.

struct CurlHandle;  ///< CURL
struct CurlList;    ///< struct curl_slist
struct CurlMulti;   ///< CURLM
using CurlOffset = std::int64_t;

enum CurlOption : int {
    // long
    kCurlLowSpeedLimit = 19,
    kCurlLowSpeedTime = 20,
    kCurlSslVersion = 32,
    kCurlNoProgress = 43,
    kCurlFailOnError = 45,
    kCurlPost = 47,
    kCurlProxyPort = 59,
    kCurlSslVerifyPeer = 64,
    kCurlHttpGet = 80,
    kCurlSslVerifyHost = 81,
    kCurlBufferSize = 98,
    kCurlNoSignal = 99,
    kCurlProxyType = 101,
    kCurlProxyAuth = 111,
    kCurlTimeoutMs = 155,
    kCurlConnectTimeoutMs = 156,
    kCurlProtocols = 181,
    kCurlQuickExit = 322,
    // pointers; texts are copied by the library
    kCurlWriteData = 10001,
    kCurlUrl = 10002,
    kCurlProxy = 10004,
    kCurlErrorBuffer = 10010,
    kCurlPostFields = 10015,  ///< not copied
    kCurlUserAgent = 10018,
    kCurlHttpHeader = 10023,  ///< not copied
    kCurlHeaderData = 10029,
    kCurlProgressData = 10057,
    kCurlCaFile = 10065,
    kCurlCaPath = 10097,
    kCurlOpenSocketData = 10164,
    kCurlProxyUser = 10175,
    kCurlProxyPassword = 10176,
    kCurlNoProxy = 10177,
    kCurlProtocolsText = 10318,  ///< since 7.85
    // functions
    kCurlWriteFunction = 20011,
    kCurlHeaderFunction = 20079,
    kCurlOpenSocketFunction = 20163,
    kCurlProgressFunction = 20219,
    // CurlOffset
    kCurlMaxFileSize = 30117,
    kCurlPostFieldSize = 30120,
};

enum CurlInfo : int {
    kCurlInfoRedirectUrl = 0x10001F,    ///< text of the handle, or null
    kCurlInfoStatus = 0x200002,         ///< long
    kCurlInfoRequestSize = 0x20000C,    ///< long; header octets that were sent
    kCurlInfoTunnelStatus = 0x200016,   ///< long
    kCurlInfoContentLength = 0x60000F,  ///< CurlOffset, -1: not told
};

/// CURLMsg
struct CurlMessage {
    int kind;  ///< 1: a transfer is done
    CurlHandle* handle;
    union {
        void* unused;
        int code;  ///< a CurlCode
    } data;
};

/// Results that are told apart here; any other number is possible.
enum CurlCode : int {
    kCurlOk = 0,
    kCurlUnsupportedProtocol = 1,
    kCurlUrlMalformed = 3,
    kCurlCouldNotConnect = 7,
    kCurlWeirdServerReply = 8,
    kCurlHttp2 = 16,
    kCurlPartialFile = 18,
    kCurlHttpReturnedError = 22,
    kCurlWriteError = 23,
    kCurlOutOfMemory = 27,
    kCurlBadFunctionArgument = 43,
    kCurlTooManyRedirects = 47,
    kCurlBadContentEncoding = 61,
    kCurlFileSizeExceeded = 63,
    kCurlHttp2Stream = 92,
};

/// Of body octets, and of header lines.
using CurlWriteFunction = std::size_t (*)(char* data, std::size_t size, std::size_t count,
                                          void* user);
/// struct curl_sockaddr, an address that is to be connected to.
struct CurlSocketAddress {
    int family;
    int type;
    int protocol;
    unsigned length;
    sockaddr address;  ///< `length` octets from here on
};
/// Gives the connection's socket; -1 for none, so that the library tries its next address.
using CurlOpenSocketFunction = int (*)(void* user, int purpose, CurlSocketAddress* address);
using CurlProgressFunction = int (*)(void* user, CurlOffset downloadTotal, CurlOffset downloaded,
                                     CurlOffset uploadTotal, CurlOffset uploaded);

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

    int (*globalInit)(long flags) = nullptr;
    CurlHandle* (*easyInit)() = nullptr;
    void (*easyCleanup)(CurlHandle* handle) = nullptr;
    int (*easySetOption)(CurlHandle* handle, int option, ...) = nullptr;
    int (*easyGetInfo)(CurlHandle* handle, int info, ...) = nullptr;
    const char* (*easyErrorText)(int code) = nullptr;
    CurlList* (*listAppend)(CurlList* list, const char* text) = nullptr;
    void (*listFree)(CurlList* list) = nullptr;
    CurlMulti* (*multiInit)() = nullptr;
    int (*multiCleanup)(CurlMulti* multi) = nullptr;
    int (*multiAdd)(CurlMulti* multi, CurlHandle* handle) = nullptr;
    int (*multiRemove)(CurlMulti* multi, CurlHandle* handle) = nullptr;
    int (*multiPerform)(CurlMulti* multi, int* running) = nullptr;
    int (*multiPoll)(CurlMulti* multi, void* extra, unsigned extraCount, int timeoutMs,
                     int* ready) = nullptr;
    CurlMessage* (*multiRead)(CurlMulti* multi, int* left) = nullptr;

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
    void Set(CurlOption option, long value) { Check(option, SetRaw(option, value)); }
    void Set(CurlOption option, const std::string& text) {
        Check(option, SetRaw(option, text.c_str()));
    }
    /// The memory must live as long as the handle is used.
    void Set(CurlOption option, const void* data) { Check(option, SetRaw(option, data)); }
    void Set(CurlOption option, CurlWriteFunction function) {
        Check(option, SetRaw(option, function));
    }
    void Set(CurlOption option, CurlProgressFunction function) {
        Check(option, SetRaw(option, function));
    }
    void Set(CurlOption option, CurlOpenSocketFunction function) {
        Check(option, SetRaw(option, function));
    }
    void SetSize(CurlOption option, CurlOffset size) { Check(option, SetRaw(option, size)); }

    /// For options that older libraries lack: false when this one does.
    bool TrySet(CurlOption option, long value) { return SetRaw(option, value) == kCurlOk; }
    bool TrySet(CurlOption option, const char* text) { return SetRaw(option, text) == kCurlOk; }

    /// Adds one request header line ("Name: value"; "Name:" keeps the library from sending its
    /// own).
    void AddHeader(const char* line);

    /// Runs the transfer; a CurlCode. A SIGPIPE that it causes does not reach the process. A thread
    /// that is cancelled meanwhile unwinds while it waits for the network, not inside of the
    /// library.
    int Perform();

    /// Status of the last answer; 0 when there was none.
    long Status() const { return GetLong(kCurlInfoStatus); }
    /// Status of a proxy's last answer to CONNECT; 0 when there was none.
    long TunnelStatus() const { return GetLong(kCurlInfoTunnelStatus); }
    /// Whether a request's header went out.
    bool IsSent() const { return GetLong(kCurlInfoRequestSize) > 0; }
    /// The absolute URL that the last answer sends the client to; empty when it does not.
    std::string RedirectUrl() const;
    /// What the answer announces, never to be trusted; -1 when it does not.
    CurlOffset AnnouncedLength() const;
    /// What went wrong in the last Perform(): the library's own words, at least the code's.
    std::string ErrorText(int code) const;

  private:
    template <class Value>
    int SetRaw(CurlOption option, Value value) {
        return m_library.easySetOption(m_handle.get(), option, value);
    }
    static void Check(CurlOption option, int code);
    long GetLong(CurlInfo info) const;

    static constexpr std::size_t kErrorTextSize = 256;  // CURL_ERROR_SIZE

    const CurlLibrary& m_library;
    std::array<char, kErrorTextSize> m_errorText{};  // written by the library
    std::unique_ptr<CurlList, void (*)(CurlList*)> m_headers;
    std::unique_ptr<CurlHandle, void (*)(CurlHandle*)> m_handle;
};

}  // namespace ca
