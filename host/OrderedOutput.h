#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <map>
#include <mutex>
#include <string>

namespace host {

/// What comes of one line or file.
struct OutputPiece {
    std::string text;  ///< goes to the output as it stands
    std::string note;  ///< goes to the standard error after it, see Note(); "" for none
};

/// Puts pieces that several threads finish in any order back into the order of their numbers.
class COrderedOutput {
  public:
    /// \param stream  not owned.
    /// \param window  how far a piece may be ahead of the next one to be written; bounds the
    ///                pieces that are held.
    COrderedOutput(std::FILE* stream, std::size_t window) : m_stream(stream), m_window(window) {}

    /// Hands over piece `number` (from 0, each exactly once). Waits while it is too far ahead.
    /// Throws CHostError (usage) when writing fails; nothing is written from then on.
    void Put(std::size_t number, OutputPiece piece);

    /// Gives up: threads that wait in Put() return, nothing is written any more.
    void Abandon();

  private:
    void WriteReady();

    std::FILE* m_stream;
    std::size_t m_window;
    std::mutex m_mutex;
    std::condition_variable m_advanced;
    std::map<std::size_t, OutputPiece> m_held;
    std::size_t m_next = 0;
    bool m_abandoned = false;
};

}  // namespace host
