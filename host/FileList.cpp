#include "host/FileList.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

// Walks one argument.
class FolderWalk {
  public:
    explicit FolderWalk(std::vector<host::ListedFile>& files) : m_files(files) {}

    void Walk(const std::string& root) {
        m_pending.push_back(root);
        while (!m_pending.empty()) {
            const std::string path = std::move(m_pending.back());
            m_pending.pop_back();
            Visit(path, /*isRoot=*/path == root);
        }
    }

  private:
    void Visit(const std::string& path, bool isRoot) {
        struct stat status {};
        if (::stat(path.c_str(), &status) != 0) {
            Fail(path);
        } else if (!S_ISDIR(status.st_mode)) {
            if (isRoot || S_ISREG(status.st_mode)) {
                m_files.push_back({path, ""});
            }
        } else if (m_seen.emplace(status.st_dev, status.st_ino).second) {
            Open(path);
        }
    }

    void Open(const std::string& path) {
        const std::unique_ptr<DIR, CloseFolder> folder(::opendir(path.c_str()));
        if (folder == nullptr) {
            Fail(path);
            return;
        }
        const auto first = static_cast<std::ptrdiff_t>(m_pending.size());
        while (const dirent* const entry = ::readdir(folder.get())) {
            const std::string name = static_cast<const char*>(entry->d_name);
            if (name != "." && name != "..") {
                m_pending.push_back(path.ends_with('/') ? path + name : path + "/" + name);
            }
        }
        // The last one is taken first.
        std::sort(m_pending.begin() + first, m_pending.end(), std::greater<>());
    }

    void Fail(const std::string& path) {
        const std::string reason = std::strerror(errno);
        m_files.push_back({path, "cannot open " + path + ": " + reason});
    }

    std::vector<host::ListedFile>& m_files;
    std::vector<std::string> m_pending;
    std::set<std::pair<dev_t, ino_t>> m_seen;
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
