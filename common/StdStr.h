#pragma once

#include "common/WideTextLock.h"

#include <cstdarg>
#include <cwchar>
#include <string>
#include <utility>

/// A string that takes a null pointer as the empty text and formats into itself.
template <class Char>
class CStdStr : public std::basic_string<Char> {
  public:
    using Base = std::basic_string<Char>;

    CStdStr() = default;
    CStdStr(const Char* text) {  // NOLINT(google-explicit-constructor): stands for a literal
        if (text != nullptr) {
            Base::assign(text);
        }
    }
    CStdStr(Base text) : Base(std::move(text)) {}  // NOLINT(google-explicit-constructor): same text

    /// Formats as vswprintf does.
    /// Deliberate: the result is cut at the format's length plus 1023 characters; callers rely on
    /// the bound. A text that does not fit or cannot be formatted keeps what was written so far.
    void Fmt(const wchar_t* format, ...);
};

template <>
inline void CStdStr<wchar_t>::Fmt(const wchar_t* format, ...) {
    const std::size_t limit = (format != nullptr ? std::wcslen(format) : 0) + 1023;
    Base buffer(limit + 1, L'\0');
    if (format != nullptr) {
        const ca::CWideTextLock lock;
        std::va_list arguments;
        va_start(arguments, format);
        std::vswprintf(buffer.data(), limit, format, arguments);
        va_end(arguments);
    }
    buffer.resize(std::wcslen(buffer.c_str()));
    Base::operator=(std::move(buffer));
}
