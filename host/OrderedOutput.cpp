#include "host/OrderedOutput.h"

#include "host/StandardStreams.h"

#include <utility>

namespace host {

void COrderedOutput::Put(std::size_t number, OutputPiece piece) {
    std::unique_lock lock(m_mutex);
    // Whoever is far ahead waits: the answers that are held back are bounded by that.
    m_advanced.wait(lock, [&] { return number < m_next + m_window || m_abandoned; });
    if (m_abandoned) {
        return;
    }
    m_held.emplace(number, std::move(piece));
    try {
        WriteReady();
    } catch (...) {
        // Others wait for a piece that will never be written now.
        m_abandoned = true;
        m_advanced.notify_all();
        throw;
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
        // A note stands after the text it is about, though it goes to another stream.
        host::Put(first->second.text, m_stream);
        if (!first->second.note.empty()) {
            Flush(m_stream);
            Note(first->second.note);
        }
    }
    // A reader at the other end of a pipe sees each answer when it is there.
    Flush(m_stream);
    if (m_next != before) {
        m_advanced.notify_all();
    }
}

}  // namespace host
