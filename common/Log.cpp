#include "common/Log.h"

#include "common/DecimalText.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/Hex.h"
#include "common/HiddenCharacters.h"
#include "common/LogClaim.h"
#include "common/WideTextLock.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cwchar>
#include <memory>
#include <stdexcept>

namespace {

// A code as it is looked up: the large ones are known by their hexadecimal digits.
std::wstring CodeText(unsigned code) {
    constexpr unsigned kFirstHex = 0x80000000;
    if (code < kFirstHex) {
        return ca::DecimalText(code);
    }
    std::wstring text = L"0x";
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += static_cast<wchar_t>(ca::HexDigit(code >> shift, ca::kUpperHexDigits));
    }
    return text;
}

// Length of the formatted text, or a number below 1. vswprintf only says "does not fit", so the
// text is written once to the null device; opened for UTF-8, because the stream of a process in the
// "C" locale refuses every letter outside ASCII.
int MeasureFormatted(const wchar_t* format, std::va_list arguments) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> sink(
        std::fopen("/dev/null", "w,ccs=UTF-8"), &std::fclose);
    return sink != nullptr ? std::vfwprintf(sink.get(), format, arguments) : -1;
}

// Formats into `room` characters; false, with `line` of no use, when they do not do.
bool FormatInto(std::wstring& line, std::size_t room, const wchar_t* format,
                std::va_list arguments) {
    line.resize(room);
    std::va_list again;
    va_copy(again, arguments);
    errno = 0;
    const int length = std::vswprintf(line.data(), line.size(), format, again);
    va_end(again);
    line.resize(length >= 0 ? static_cast<std::size_t>(length) : 0);
    return length >= 0;
}

// The formatted text, of any length; empty when the format or an argument cannot be written.
// Lines that occur fit into a guess. Only longer ones are measured, since glibc keeps some memory
// of each stream that was opened for a character set.
std::wstring Format(const wchar_t* format, std::va_list arguments) {
    constexpr std::size_t kFirstRoom = 256;
    constexpr std::size_t kLastGuess = std::size_t{1} << 24;  // characters
    const ca::CWideTextLock lock;
    std::wstring line;
    for (std::size_t room = kFirstRoom; room <= kLastGuess; room *= 4) {
        if (FormatInto(line, room, format, arguments)) {
            return line;
        }
        if (errno == EILSEQ) {
            return {};
        }
    }
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = MeasureFormatted(format, measured);
    va_end(measured);
    if (length > 0) {
        FormatInto(line, static_cast<std::size_t>(length) + 1, format, arguments);
    }
    return line;
}

}  // namespace

bool LogInit(LogCallback callback, std::vector<std::wstring>& customTexts) {
    ca::GlobalErrorMessageHelper().SetCustomTexts(customTexts);
    ca::SetLogCallback(callback);
    return true;
}

bool LogEvent(const wchar_t* line, bool isError) {
    return ca::CallLog(line, isError);
}

namespace ca {

bool LogEventFmt(const wchar_t* format, bool isError, ...) {
    std::va_list arguments;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wvarargs"
    // Deliberate: the signature is fixed; a promoted last parameter does no harm with these ABIs.
    va_start(arguments, isError);
#pragma GCC diagnostic pop
    const std::wstring line = Format(format, arguments);
    va_end(arguments);
    return LogEvent(line.c_str(), isError);
}

void MakePrintable(std::wstring& text) noexcept {
    std::ranges::replace_if(text, IsHiddenCharacter, L'?');
}

bool LogLine(std::wstring line, bool isError) {
    MakePrintable(line);
    return LogEvent(line.c_str(), isError);
}

void LogError(const wchar_t* text, const wchar_t* location, unsigned code, bool throwIt) {
    if (location == nullptr) {
        throw std::logic_error("LogError: null location");
    }
    const std::wstring prefix = std::wstring(location) + L": ";
    LogLine(prefix + (text != nullptr ? text : L""), /*isError=*/true);

    const std::wstring errorText = ::GetErrorMessage(code, /*prefix=*/true);
    // Deliberate: the table's text as it is, line breaks of its own included.
    LogEvent((prefix + (errorText.empty() ? CodeText(code) : errorText)).c_str(), /*isError=*/true);

    if (throwIt) {
        throw ReportedException(code, ::GetErrorMessage(code, /*prefix=*/false));
    }
}

std::wstring GetLineString(const char* file, long line, [[maybe_unused]] const char* build) {
    std::wstring result;
    for (const char* c = file; c != nullptr && *c != '\0'; ++c) {
        result += static_cast<wchar_t>(static_cast<unsigned char>(*c));
    }
    return result += L':' + ca::DecimalText(line);
}

}  // namespace ca
