#include "host/Session.h"

#include "host/AnswerPrinter.h"
#include "host/FileIo.h"
#include "host/SessionLine.h"

#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace host {

CSession::CSession(const CModule& module, CLineReader& lines, COrderedOutput& output,
                   CProgressBar& progress, bool interactive)
    : m_module(module),
      m_lines(lines),
      m_output(output),
      m_progress(progress),
      m_interactive(interactive) {}

ExitCode CSession::Play(unsigned threads) {
    // The caller works as one of the threads, so that one thread needs no other.
    std::vector<std::jthread> others;
    for (unsigned i = 1; i < threads; ++i) {
        others.emplace_back([this] { Work(); });
    }
    Work();
    others.clear();  // joins
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
    return !m_allDone ? kExitUsage : m_allGood ? kExitDone : kExitAnsweredBad;
}

bool CSession::NextLine(Line& line) {
    const std::lock_guard lock(m_mutex);
    do {
        if (m_failure || !m_lines.Next(line.text)) {
            return false;
        }
    } while (line.text.empty());  // they separate requests, for people
    line.place = m_lines.GetPlace();
    // Counted under the lock that reads: answers are put out in the order of the lines.
    line.number = m_count++;
    const auto size = static_cast<double>(m_lines.GetSize());
    m_progress.Show(line.number, size > 0 ? static_cast<double>(m_lines.GetPosition()) / size : -1);
    return true;
}

OutputPiece CSession::AnswerLine(Line& line) {
    OutputPiece piece;
    try {
        SessionRequest session = ReadSessionLine(
            std::move(line.text), {line.place, m_lines.IsStandardInput(), m_interactive});
        const CAnswer answer = m_module.Ask(session.request);
        if (!answer.IsGood()) {
            m_allGood = false;
        }
        // Written here, where the answer's order does not matter.
        if (!session.output.empty()) {
            if (const std::optional<std::string> octets = answer.ExtractOctets()) {
                WriteFile(session.output, *octets);
            }
        }
        piece.text = LineAnswer(answer);
    } catch (const CHostError& error) {
        // The line's own fault: it gets a line, the session goes on.
        m_allDone = false;
        piece.text = LineError(error.what());
        piece.note = line.place + ": " + error.what();
    }
    piece.text += '\n';
    return piece;
}

void CSession::Work() noexcept {
    try {
        for (Line line; NextLine(line);) {
            m_output.Put(line.number, AnswerLine(line));
        }
    } catch (...) {
        const std::lock_guard lock(m_mutex);
        // The first failure is told; the others are mostly its consequences.
        m_failure = m_failure ? m_failure : std::current_exception();
        m_output.Abandon();
    }
}

}  // namespace host
