#pragma once

#include "host/FileIo.h"
#include "host/ModuleLoader.h"
#include "host/OrderedOutput.h"
#include "host/ProgressBar.h"

#include <atomic>
#include <cstddef>
#include <exception>
#include <mutex>
#include <string>

namespace host {

/// Plays the lines of a file to one module instance and writes one answer a line, in the order of
/// the lines, however many threads ask.
class CSession {
  public:
    /// The references outlive the session.
    CSession(const CModule& module, CLineReader& lines, COrderedOutput& output,
             CProgressBar& progress, bool interactive);

    /// Returns when every line is answered. Empty lines are skipped.
    /// \return whether every answer was good.
    /// Throws CHostError (usage) when the lines cannot be read or the answers not be written.
    bool Play(unsigned threads);

  private:
    bool NextLine(std::string& line, std::size_t& number);
    std::string AnswerLine(std::string line);
    void Work() noexcept;

    const CModule& m_module;
    CLineReader& m_lines;
    COrderedOutput& m_output;
    CProgressBar& m_progress;
    bool m_interactive;

    std::mutex m_mutex;  // guards the reader, the progress bar and what follows
    std::size_t m_count = 0;
    std::exception_ptr m_failure;

    std::atomic<bool> m_allGood{true};
};

}  // namespace host
