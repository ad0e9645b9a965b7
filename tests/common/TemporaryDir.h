#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <stdlib.h>
#include <string>

/// An empty directory of its own for one test, removed with everything in it.
class TemporaryDir {
  public:
    TemporaryDir() : m_path(std::filesystem::temp_directory_path() / "mod_foo_test.XXXXXX") {
        if (::mkdtemp(m_path.data()) == nullptr) {
            throw std::runtime_error("mkdtemp");
        }
    }
    TemporaryDir(const TemporaryDir&) = delete;
    TemporaryDir& operator=(const TemporaryDir&) = delete;
    ~TemporaryDir() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::string& Path() const { return m_path; }
    std::string File(const std::string& name) const { return m_path + "/" + name; }

    /// Writes a file, with its directories, and returns its path.
    std::string Write(const std::string& name, const std::string& content) const {
        const std::filesystem::path path = File(name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    }
    static std::string Read(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::size_t EntryCount() const {
        const std::filesystem::directory_iterator entries(m_path);
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

  private:
    std::string m_path;
};

/// Sets or (null) removes an environment variable; puts the old value back.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, const char* value) : m_name(name) {
        if (const char* const old = std::getenv(name)) {
            m_old = old;
            m_wasSet = true;
        }
        Set(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { Set(m_wasSet ? m_old.c_str() : nullptr); }

  private:
    void Set(const char* value) const {
        if (value != nullptr) {
            ::setenv(m_name, value, /*overwrite=*/1);
        } else {
            ::unsetenv(m_name);
        }
    }

    const char* m_name;
    std::string m_old;
    bool m_wasSet = false;
};
