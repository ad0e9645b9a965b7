#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace host {

/// Octets of the largest file that is read, which the interface's 32-bit sizes set.
inline constexpr std::size_t kLargestFile = 0xFFFFFFFF;
/// Octets taken of what does not tell its size, as pipes and devices do not: it may never end.
inline constexpr std::size_t kLargestStream = std::size_t{256} << 20U;
/// Octets of the largest configuration that the module reads.
inline constexpr std::size_t kLargestConfig = std::size_t{4} << 20U;

/// A file that is read, or the standard input ("-").
class CInputFile {
  public:
    /// Throws CHostError (usage) with the system's reason when it does not open.
    explicit CInputFile(const std::string& path);
    CInputFile(const CInputFile&) = delete;
    CInputFile& operator=(const CInputFile&) = delete;
    ~CInputFile();

    bool IsStandardInput() const { return m_isStandardInput; }
    /// What it is called in messages.
    const std::string& GetName() const { return m_name; }
    /// Octets of a regular file; 0 when that is not known.
    std::size_t GetSize() const { return m_size; }
    /// What may be taken of it at once: kLargestFile, or kLargestStream when its size is not known.
    std::size_t GetBound() const { return m_size != 0 ? kLargestFile : kLargestStream; }

    /// Reads at most `room` octets, as soon as some are there. Returns 0 at the end.
    /// Throws CHostError (usage) with the system's reason.
    std::size_t Read(char* octets, std::size_t room);

  private:
    bool m_isStandardInput;
    std::string m_name;
    int m_descriptor;
    std::size_t m_size = 0;
};

/// The whole of a file; "-" is the standard input. What is too large is refused as soon as that
/// shows: a regular file before anything is read, a stream at its bound or at `limit`.
/// Throws CHostError (usage).
std::string ReadFile(const std::string& path, std::size_t limit = kLargestFile);

/// Creates or replaces a file; "-" is the standard output. A regular file is replaced in one step,
/// so that a full disk leaves no half of it. Throws CHostError (usage) with the system's reason.
void WriteFile(const std::string& path, std::string_view octets);

inline std::span<const unsigned char> AsOctets(std::string_view text) {
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

}  // namespace host
