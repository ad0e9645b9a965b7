#include "common/Log.h"

#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cwchar>
#include <memory>
#include <stdexcept>

namespace {

std::atomic<LogCallback> logCallback{nullptr};

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Length of the formatted text, or a number below 1. vswprintf only says "does not fit", so the
// text is written once to the null device; opened for UTF-8, because the stream of a process in the
// "C" locale refuses every letter outside ASCII.
int MeasureFormatted(const wchar_t* format, std::va_list arguments) {
    const std::unique_ptr<std::FILE, FileCloser> sink(std::fopen("/dev/null", "w,ccs=UTF-8"));
    return sink ? std::vfwprintf(sink.get(), format, arguments) : -1;
}

}  // namespace

bool LogInit(LogCallback callback, std::vector<std::wstring>& customTexts) {
    ca::GlobalErrorMessageHelper().SetCustomTexts(customTexts);
    logCallback.store(callback, std::memory_order_release);
    return true;
}

bool LogEvent(const wchar_t* line, bool flag) {
    const LogCallback callback = logCallback.load(std::memory_order_acquire);
    return callback != nullptr && callback(line, flag);
}

namespace ca {

bool LogEventFmt(const wchar_t* format, bool flag, ...) {
    std::va_list arguments;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wvarargs"
    // Deliberate: the signature is fixed; a promoted last parameter does no harm with these ABIs.
    va_start(arguments, flag);
#pragma GCC diagnostic pop
    std::va_list again;
    va_copy(again, arguments);
    const int length = MeasureFormatted(format, arguments);
    va_end(arguments);

    std::wstring line;
    if (length > 0) {
        const auto size = static_cast<std::size_t>(length);
        line.resize(size + 1);
        const int written = std::vswprintf(line.data(), line.size(), format, again);
        line.resize(written > 0 ? size : 0);
    }
    va_end(again);
    return LogEvent(line.c_str(), flag);
}

void LogError(const wchar_t* text, const wchar_t* location, unsigned code, bool throwIt) {
    if (location == nullptr) {
        throw std::logic_error("LogError: null location");
    }
    std::wstring line = std::wstring(location) + L": ";
    const std::size_t prefixLength = line.size();
    line += text != nullptr ? text : L"";
    LogEvent(line.c_str(), true);

    const std::wstring errorText = ::GetErrorMessage(code, true);
    line.resize(prefixLength);
    line += errorText.empty() ? std::to_wstring(code) : errorText;
    LogEvent(line.c_str(), true);

    if (throwIt) {
        throw Exception(code, ::GetErrorMessage(code, false));
    }
}

std::wstring GetLineString(const char* file, long line, [[maybe_unused]] const char* build) {
    std::wstring result;
    for (const char* c = file; c != nullptr && *c != '\0'; ++c) {
        result += static_cast<wchar_t>(static_cast<unsigned char>(*c));
    }
    return result += L':' + std::to_wstring(line);
}

}  // namespace ca
