#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

/// True when the file descriptor is a terminal that can be written to in colour.
bool IsTerminal(int descriptor);

/// Columns of the terminal; `fallback` for anything else.
std::size_t TerminalWidth(int descriptor, std::size_t fallback);

/// The text with what is hidden (common/HiddenCharacters.h) replaced by ".", so that strangers'
/// octets cannot steer a terminal.
std::wstring Harmless(std::wstring_view text);
std::string Harmless(const std::string& utf8);

/// The same JSON, with each such character of its strings as \uXXXX. Whoever sees the text next may
/// see it on a terminal, so this is done to all JSON, wherever it goes.
/// \param json  a valid JSON text, UTF-8; outside its strings there are none of them.
std::string EscapeHidden(std::string json);

/// Columns the text takes: wide East Asian characters count two, combining marks none.
std::size_t DisplayWidth(std::wstring_view text);

/// The longest beginning that fits into `columns`, ended by "..." when something was cut.
std::wstring CutToWidth(std::wstring_view text, std::size_t columns);

}  // namespace host
