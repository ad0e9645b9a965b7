#include "host/ProgressBar.h"

#include "host/Terminal.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace {

// What is done within a second needs no bar, and flickers with one.
constexpr std::chrono::milliseconds kFirst{1000};
constexpr std::chrono::milliseconds kInterval{100};
constexpr std::size_t kColumns = 30;
// To the front of the line; then the control sequence EL of ECMA-48.
constexpr const char* kEraseLine = "\r\033[K";

std::atomic<bool> isVisible{false};

}  // namespace

namespace host {

CProgressBar::CProgressBar(bool enabled, const char* unit)
    : m_enabled(enabled && IsTerminal(STDERR_FILENO)),
      m_unit(unit),
      m_nextTime(Clock::now() + kFirst) {}

CProgressBar::~CProgressBar() {
    // Also when nothing is visible: it is then the empty text.
    std::fputs(Erase(), stderr);
    isVisible = false;
}

const char* CProgressBar::Erase() {
    return isVisible ? kEraseLine : "";
}

void CProgressBar::Show(std::size_t done, double share) {
    if (!m_enabled || Clock::now() < m_nextTime) {
        return;
    }
    m_nextTime = Clock::now() + kInterval;
    isVisible = true;
    std::string bar;
    // Of a stream nobody knows the end: it is counted only.
    if (share >= 0) {
        const auto filled =
            std::min(kColumns, static_cast<std::size_t>(share * static_cast<double>(kColumns)));
        bar = "[" + std::string(filled, '#') + std::string(kColumns - filled, '.') + "] " +
              std::to_string(static_cast<int>(share * 100)) + " %  ";
    }
    std::fprintf(stderr, "%s%s%zu %s", kEraseLine, bar.c_str(), done, m_unit);
}

}  // namespace host
