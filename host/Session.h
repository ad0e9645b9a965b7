#pragma once

#include "host/HostError.h"
#include "host/LineReader.h"
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

    /// Returns when every line is answered. Empty lines are skipped; for a line that could not be
    /// sent, and for a result that could not be written, there is a note on the standard error too.
    /// \return kExitDone when every answer is good, kExitUsage when there was such a line, else
    ///         kExitAnsweredBad.
    /// Throws CHostError (usage) when the lines cannot be read or the answers not be written.
    ExitCode Play(unsigned threads);

  private:
    struct Line {
        std::string text;
        std::string place;
        std::size_t number = 0;  // among those that are not empty, from 0
    };

    bool NextLine(Line& line);
    OutputPiece AnswerLine(Line& line);
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
    std::atomic<bool> m_allDone{true};  // lines sent, results written
};

}  // namespace host
