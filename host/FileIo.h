#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace host {

/// The whole of a file; "-" is the standard input. No size limit but memory.
/// Throws CHostError (usage) with the system's reason.
std::string ReadFile(const std::string& path);

/// Creates or replaces a file; "-" is the standard output. Throws CHostError (usage).
void WriteFile(const std::string& path, std::span<const unsigned char> octets);

inline std::span<const unsigned char> AsOctets(std::string_view text) {
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

/// Reads a file or the standard input ("-") line by line, lines of any length.
class CLineReader {
  public:
    /// Throws CHostError (usage) when the file does not open.
    explicit CLineReader(const std::string& path);
    CLineReader(const CLineReader&) = delete;
    CLineReader& operator=(const CLineReader&) = delete;
    ~CLineReader();

    /// The next line without its line feed and carriage return; false at the end.
    /// Throws CHostError (usage) when reading fails.
    bool Next(std::string& line);

    /// Octets of the file; 0 when that is not known (a pipe).
    std::size_t GetSize() const { return m_size; }
    /// Octets read so far.
    std::size_t GetPosition() const { return m_position; }

  private:
    struct Stream;

    std::string m_path;
    std::unique_ptr<Stream> m_stream;
    std::size_t m_size = 0;
    std::size_t m_position = 0;
};

}  // namespace host
