#pragma once

#include "host/FileIo.h"

#include <cstddef>
#include <string>

namespace host {

/// Reads a file or the standard input ("-") line by line. A line of a pipe is there as soon as it
/// was written.
class CLineReader {
  public:
    /// Throws CHostError (usage) when the file does not open.
    explicit CLineReader(const std::string& path);

    /// The next line without its line feed and carriage return; false at the end.
    /// Throws CHostError (usage) when reading fails, and for a line that does not end within the
    /// file's bound.
    bool Next(std::string& line);

    /// "line 3 of session.jsonl": the line read last, counted from 1; made visible.
    std::string GetPlace() const;

    bool IsStandardInput() const { return m_file.IsStandardInput(); }
    /// Octets of the file; 0 when that is not known (a pipe).
    std::size_t GetSize() const { return m_file.GetSize(); }
    /// Octets read so far.
    std::size_t GetPosition() const { return m_position; }

  private:
    bool Fill();

    CInputFile m_file;
    std::string m_visibleName;
    std::string m_buffer;
    std::size_t m_begin = 0;  // of what no line was made of yet
    std::size_t m_end = 0;
    std::size_t m_position = 0;
    std::size_t m_number = 0;
};

}  // namespace host
