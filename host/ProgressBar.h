#pragma once

#include <chrono>
#include <cstddef>

namespace host {

/// A bar on the standard error's terminal that appears once a job has taken a second, and goes
/// when it ends. One thread at a time.
class CProgressBar {
  public:
    /// \param enabled  false shows nothing ever.
    /// \param unit     what is counted; static text.
    explicit CProgressBar(bool enabled, const char* unit = "requests");
    CProgressBar(const CProgressBar&) = delete;
    CProgressBar& operator=(const CProgressBar&) = delete;
    ~CProgressBar();

    /// What a line on the standard error begins with, so that it does not mix with a bar.
    static const char* Erase();

    /// \param done   how many so far
    /// \param share  of the input that is read, 0 to 1; negative when its size is not known.
    void Show(std::size_t done, double share);

  private:
    using Clock = std::chrono::steady_clock;

    bool m_enabled;
    const char* m_unit;
    Clock::time_point m_nextTime;
};

}  // namespace host
