#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The host's log sink: a line and a mark (true: an error); its result says whether it took the
/// line. It may be entered from every thread that runs a request.
using LogCallback = bool (*)(const wchar_t* line, bool isError);

/// Stores the host's callback and copies the custom error texts; replaces what was there.
/// Always true. Call it before requests run. A ca::CLogClaim ends it.
bool LogInit(LogCallback callback, std::vector<std::wstring>& customTexts);

/// Hands one line to the host and returns its answer; false while no callback is set.
bool LogEvent(const wchar_t* line, bool isError);

namespace ca {

/// LogEvent() of a text formatted as swprintf does, of any length. A text that cannot be formatted
/// logs an empty line.
bool LogEventFmt(const wchar_t* format, bool isError, ...);

/// Replaces by '?' what would end a line of the host's log, change how the rest of it reads, leave
/// no trace, or cannot be written (HiddenCharacters.h). Texts without that stay as they are, at the
/// cost of a look at each character.
void MakePrintable(std::wstring& text) noexcept;

/// LogEvent() of a line that holds a text from outside the module, made printable.
bool LogLine(std::wstring line, bool isError);

/// Reports one error as two lines, both marked as errors: "location: text", then "location: " and
/// the code's text with its prefix. A code without a text stands for itself: in decimal, from
/// 0x80000000 on (the ASN.1 engine's) in hexadecimal.
/// \param text      the caller's words; made printable.
/// \param location  where the error arose, as GetLineString() gives it; std::logic_error for null.
/// \param throwIt   true: throws ca::ReportedException with the code and its text without prefix.
void LogError(const wchar_t* text, const wchar_t* location, unsigned code, bool throwIt);

/// "file:line". The third text is for the caller's own use and does not appear.
std::wstring GetLineString(const char* file, long line, const char* build);

}  // namespace ca

/// The source position of the call, as ca::LogError() takes it.
#define CA_HERE (::ca::GetLineString(__FILE_NAME__, __LINE__, "").c_str())
