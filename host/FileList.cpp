#include "host/FileList.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <set>
#include <system_error>
#include <utility>

namespace {

namespace fs = std::filesystem;

// Walks one argument.
class FolderWalk {
  public:
    explicit FolderWalk(std::vector<host::ListedFile>& files) : m_files(files) {}

    void Walk(const std::string& root) {
        m_pending.emplace_back(root);
        while (!m_pending.empty()) {
            const fs::path path = std::move(m_pending.back());
            m_pending.pop_back();
            Visit(path, /*isRoot=*/path == root);
        }
    }

  private:
    void Visit(const fs::path& path, bool isRoot) {
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (!fs::exists(status)) {
            Fail(path, error);
        } else if (!fs::is_directory(status)) {
            // A pipe or device in a folder would be waited for in vain; one that was named is
            // meant.
            if (isRoot || fs::is_regular_file(status)) {
                m_files.push_back({path.string(), ""});
            }
        } else {
            Open(path);
        }
    }

    void Open(const fs::path& path) {
        std::error_code error;
        const fs::path place = fs::canonical(path, error);
        // A link back to a folder above would be walked without an end.
        if (!error && !m_seen.insert(place).second) {
            return;
        }
        const auto first = static_cast<std::ptrdiff_t>(m_pending.size());
        fs::directory_iterator entry(path, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            // A list instead of a call for each folder: strangers choose how deep they nest.
            m_pending.push_back(entry->path());
        }
        // The last one is taken first.
        std::sort(m_pending.begin() + first, m_pending.end(), std::greater<>());
        if (error) {
            Fail(path, error);
        }
    }

    void Fail(const fs::path& path, const std::error_code& error) {
        m_files.push_back({path.string(), "cannot open " + path.string() + ": " + error.message()});
    }

    std::vector<host::ListedFile>& m_files;
    std::vector<fs::path> m_pending;
    std::set<fs::path> m_seen;  // folders, by their names without links
};

}  // namespace

namespace host {

std::vector<ListedFile> ListFiles(const std::vector<std::string>& arguments) {
    std::vector<ListedFile> files;
    for (const std::string& argument : arguments) {
        if (argument == "-") {
            files.push_back({argument, ""});
        } else {
            FolderWalk(files).Walk(argument);
        }
    }
    return files;
}

}  // namespace host
