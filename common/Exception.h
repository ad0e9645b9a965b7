#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace ca {

/// Notes where this thread makes an exception. The exception itself has room for code and text
/// only.
void NoteRaised(std::uint32_t code, const char* file, long line) noexcept;

/// The one exception type below the request dispatch; thrown and caught by value.
struct Exception {
    /// The last two are the caller's own position, see RaisedAt().
    explicit Exception(std::uint32_t code, std::wstring text = {},
                       const char* file = __builtin_FILE(), long line = __builtin_LINE())
        : errorCode(code), message(std::move(text)) {
        NoteRaised(code, file, line);
    }

    std::uint32_t errorCode;  ///< One of ErrorCodes.h; its text comes from GetErrorMessage().
    std::wstring message;     ///< Empty unless the thrower has more to say than the code.
};

/// One whose words stand in the log already: whoever answers it says them no second time.
struct ReportedException : Exception {
    using Exception::Exception;
};

/// Source position of an exception just caught, as ca::LogError() takes it: "Base64.cpp:128".
/// It is the place where this thread made its latest exception of that code; when there is none,
/// the caller's own.
std::wstring RaisedAt(const Exception& exception, const char* file = __builtin_FILE(),
                      long line = __builtin_LINE());

}  // namespace ca
