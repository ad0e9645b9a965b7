#include "host/OrderedOutput.h"

#include "host/HostError.h"

#include <utility>

namespace host {

void COrderedOutput::Put(std::size_t number, std::string line) {
    std::unique_lock lock(m_mutex);
    m_advanced.wait(lock, [&] { return number < m_next + m_window || m_failed || m_abandoned; });
    if (m_abandoned) {
        return;
    }
    if (!m_failed) {
        m_held.emplace(number, std::move(line));
        WriteReady();
    }
    if (m_failed) {
        throw CHostError(kExitUsage, "cannot write the answers");
    }
}

void COrderedOutput::Abandon() {
    const std::lock_guard lock(m_mutex);
    m_abandoned = true;
    m_advanced.notify_all();
}

void COrderedOutput::WriteReady() {
    const std::size_t before = m_next;
    for (auto first = m_held.begin(); first != m_held.end() && first->first == m_next;
         first = m_held.erase(first), ++m_next) {
        std::string& line = first->second;
        line += '\n';
        if (std::fwrite(line.data(), 1, line.size(), m_stream) != line.size()) {
            m_failed = true;
            break;
        }
    }
    // A reader at the other end of a pipe sees each answer when it is there.
    m_failed = m_failed || std::fflush(m_stream) != 0;
    if (m_failed || m_next != before) {
        m_advanced.notify_all();
    }
}

}  // namespace host
