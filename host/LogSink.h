#pragma once

namespace host {

/// Whether PrintLogLine() writes; set before the module is created.
void ShowLog(bool show);

/// The log sink given to the module: one line on the standard error, an error line marked with "!".
/// Safe from any thread; throws nothing. Returns whether the line was taken (a null one is not).
bool PrintLogLine(const wchar_t* line, bool isError) noexcept;

}  // namespace host
