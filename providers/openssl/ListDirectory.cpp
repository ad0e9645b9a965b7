#include "providers/openssl/ListDirectory.h"

#include "common/AtomicFile.h"
#include "common/Encode.h"
#include "common/Hex.h"
#include "common/Log.h"
#include "common/sha1.h"
#include "providers/openssl/ProviderWords.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::string_view kEnding = ".crl";
constexpr std::size_t kDigits = 40;  // of a SHA-1
constexpr std::size_t kMaxFiles = 256;

bool IsOurs(const std::string& name) {
    return name.size() == kDigits + kEnding.size() && name.ends_with(kEnding) &&
           std::all_of(name.begin(), name.begin() + kDigits,
                       [](char c) { return ca::IsHexDigit(c); });
}

}  // namespace

namespace ca {

CListDirectory::CListDirectory(const std::wstring& directory, std::size_t maxSize)
    : m_directory(PathFromWString(directory)), m_maxSize(maxSize) {}

std::string CListDirectory::PathOf(const std::wstring& url) const {
    const std::string text = u16u8(url);
    const auto* const octets = reinterpret_cast<const unsigned char*>(text.data());
    return m_directory + '/' + u16u8(Sha1Hex({octets, text.size()})) + std::string(kEnding);
}

std::optional<CListDirectory::File> CListDirectory::Find(const std::wstring& url,
                                                         int cacheTime) const {
    if (m_directory.empty()) {
        return std::nullopt;
    }
    const std::string path = PathOf(url);
    struct stat info {};
    if (lstat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode) || info.st_uid != geteuid() ||
        (info.st_mode & (S_IWGRP | S_IWOTH)) != 0) {
        return std::nullopt;
    }
    File file{.octets = {}, .age = std::time(nullptr) - info.st_mtime};
    const bool isInTime = file.age >= 0 && file.age < cacheTime;
    if (!isInTime || ReadWholeFile(path, m_maxSize, file.octets) != FileStatus::kDone) {
        return std::nullopt;
    }
    return file;
}

void CListDirectory::Keep(const std::wstring& url, std::span<const unsigned char> octets) const {
    if (m_directory.empty()) {
        return;
    }
    std::error_code error;
    if (std::filesystem::create_directories(m_directory, error)) {
        std::filesystem::permissions(m_directory, std::filesystem::perms::owner_all, error);
    }
    const std::string_view text(reinterpret_cast<const char*>(octets.data()), octets.size());
    if (ReplaceFile(PathOf(url), text) != FileStatus::kDone) {
        LogLine(Say(Words::kListNotKept) + u8u16(m_directory), /*isError=*/true);
        return;
    }
    Prune();
}

// The oldest go. Other files there are somebody else's.
void CListDirectory::Prune() const {
    struct Entry {
        std::filesystem::file_time_type time;
        std::filesystem::path path;
    };
    std::vector<Entry> files;
    std::error_code error;
    std::filesystem::directory_iterator at(m_directory, error);
    for (; !error && at != std::filesystem::directory_iterator(); at.increment(error)) {
        if (IsOurs(at->path().filename().string())) {
            std::error_code unknown;
            files.push_back({at->last_write_time(unknown), at->path()});
        }
    }
    if (files.size() <= kMaxFiles) {
        return;
    }
    std::ranges::sort(files, {}, &Entry::time);
    for (std::size_t i = 0; i < files.size() - kMaxFiles; ++i) {
        std::filesystem::remove(files[i].path, error);
    }
}

}  // namespace ca
