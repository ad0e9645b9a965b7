#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <map>
#include <mutex>
#include <string>

namespace host {

/// Puts lines that several threads finish in any order back into the order of their numbers.
class COrderedOutput {
  public:
    /// \param stream  not owned.
    /// \param window  how far a line may be ahead of the next one to be written; bounds the lines
    ///                that are held.
    COrderedOutput(std::FILE* stream, std::size_t window) : m_stream(stream), m_window(window) {}

    /// Hands over line `number` (from 0, each exactly once). Waits while it is too far ahead.
    /// Throws CHostError (usage) when writing fails, here and from then on.
    void Put(std::size_t number, std::string line);

    /// Gives up: threads that wait in Put() return, nothing is written any more.
    void Abandon();

  private:
    void WriteReady();

    std::FILE* m_stream;
    std::size_t m_window;
    std::mutex m_mutex;
    std::condition_variable m_advanced;
    std::map<std::size_t, std::string> m_held;
    std::size_t m_next = 0;
    bool m_failed = false;
    bool m_abandoned = false;
};

}  // namespace host
