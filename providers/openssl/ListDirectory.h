#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace ca {

/// Fetched revocation lists in the files of `crl.cacheDirectory`, so that another process finds
/// them: one a URL, named by its SHA-1, at most 256. What somebody else could have put there, or
/// left there to hide a newer list, is not taken: files of another user, or that others may write,
/// links, files of the future. Nothing is believed of a list here.
class CListDirectory {
  public:
    struct File {
        std::string octets;
        std::int64_t age;  ///< seconds since it was fetched
    };

    /// \param directory  "": nothing is found or kept.
    /// \param maxSize    octets of a file that is read.
    CListDirectory(const std::wstring& directory, std::size_t maxSize);

    /// None for a file that is not there or not good, or is `cacheTime` seconds old.
    std::optional<File> Find(const std::wstring& url, int cacheTime) const;
    /// Every reader sees the old file or the whole new one. A failure is told in the log.
    void Keep(const std::wstring& url, std::span<const unsigned char> octets) const;

  private:
    std::string PathOf(const std::wstring& url) const;
    void Prune() const;

    std::string m_directory;
    std::size_t m_maxSize;
};

}  // namespace ca
