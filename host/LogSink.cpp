#include "host/LogSink.h"

#include "common/Encode.h"
#include "host/Terminal.h"

#include <atomic>
#include <cstdio>
#include <exception>
#include <string>
#include <unistd.h>

namespace {

// Module threads log at any time, also while the program ends.
std::atomic<bool> shown{false};

constexpr const char* kRed = "\033[31m";
constexpr const char* kPlain = "\033[0m";

}  // namespace

namespace host {

void ShowLog(bool show) {
    shown = show;
}

bool PrintLogLine(const wchar_t* line, bool isError) noexcept {
    // The module hands over what a provider made: null is possible, and a line is a stranger's
    // text.
    if (line == nullptr) {
        return false;
    }
    // True: the line was taken, and the module need not keep it.
    if (!shown) {
        return true;
    }
    try {
        const bool coloured = isError && IsTerminal(STDERR_FILENO);
        std::string text = isError ? "log ! " : "log   ";
        text += ca::u16u8(Harmless(std::wstring_view(line)));
        text = (coloured ? kRed : "") + text + (coloured ? kPlain : "") + "\n";
        // One call a line: lines of several threads do not mix.
        return std::fwrite(text.data(), 1, text.size(), stderr) == text.size();
    } catch (const std::exception&) {
        return false;  // out of memory; the module goes on without the line
    }
}

}  // namespace host
