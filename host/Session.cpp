#include "host/Session.h"

#include "host/AnswerPrinter.h"
#include "host/HostError.h"
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

bool CSession::Play(unsigned threads) {
    std::vector<std::jthread> others;
    for (unsigned i = 1; i < threads; ++i) {
        others.emplace_back([this] { Work(); });
    }
    Work();
    others.clear();  // joins
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
    return m_allGood;
}

bool CSession::NextLine(std::string& line, std::size_t& number) {
    const std::lock_guard lock(m_mutex);
    do {
        if (m_failure || !m_lines.Next(line)) {
            return false;
        }
    } while (line.empty());
    number = m_count++;
    const auto size = static_cast<double>(m_lines.GetSize());
    m_progress.Show(number, size > 0 ? static_cast<double>(m_lines.GetPosition()) / size : -1);
    return true;
}

std::string CSession::AnswerLine(std::string line) {
    try {
        SessionRequest session = ReadSessionLine(std::move(line), m_interactive);
        const CAnswer answer = m_module.Ask(session.request);
        if (!answer.IsGood()) {
            m_allGood = false;
        }
        if (!session.output.empty()) {
            if (const std::optional<std::string> octets = answer.ExtractOctets()) {
                WriteFile(session.output, AsOctets(*octets));
            }
        }
        return LineAnswer(answer);
    } catch (const CHostError& error) {
        // The line's own fault: it gets a line, the session goes on.
        m_allGood = false;
        return LineError(error.what());
    }
}

void CSession::Work() noexcept {
    try {
        std::string line;
        for (std::size_t number = 0; NextLine(line, number);) {
            m_output.Put(number, AnswerLine(std::move(line)));
        }
    } catch (...) {
        const std::lock_guard lock(m_mutex);
        m_failure = m_failure ? m_failure : std::current_exception();
        m_output.Abandon();
    }
}

}  // namespace host
