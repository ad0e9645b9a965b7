#pragma once

// Runs the host tool as its user does and tells what came of it.

#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <utility>
#include <vector>

struct HostResult {
    int exitCode = -1;  ///< negative: the signal that ended it
    std::string out;
    std::string err;
    long peakKilobytes = 0;  ///< resident
};

/// Each test has a directory of its own as home and working directory, and no configuration, in an
/// English locale.
class HostProcessTest : public ::testing::Test {
  protected:
    HostResult Run(std::vector<std::string> arguments, const std::string& input = "") const {
        arguments.insert(arguments.begin(), MOD_FOO_CMHOST);
        return Spawn(std::move(arguments), input);
    }

    /// A shell script that calls the tool "cmhost".
    HostResult RunScript(const std::string& script) const {
        const std::string folder = std::filesystem::path(MOD_FOO_CMHOST).parent_path().string();
        return Spawn({"/bin/sh", "-c", "PATH='" + folder + "':$PATH\n" + script}, "");
    }

    TemporaryDir m_directory;

  private:
    HostResult Spawn(std::vector<std::string> words, const std::string& input) const {
        const std::string in = m_directory.Write("stdin", input);
        const std::string out = m_directory.File("stdout");
        const std::string err = m_directory.File("stderr");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 0, in.c_str(), O_RDONLY, 0);
        constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
        posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), kWrite, 0600);
        posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), kWrite, 0600);
        posix_spawn_file_actions_addchdir_np(&actions, m_directory.Path().c_str());

        std::vector<char*> argv;
        for (std::string& word : words) {
            argv.push_back(word.data());
        }
        argv.push_back(nullptr);
        pid_t child = 0;
        const int error = ::posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        HostResult result;
        int status = 0;
        rusage usage{};
        if (error == 0 && ::wait4(child, &status, 0, &usage) == child) {
            result.peakKilobytes = usage.ru_maxrss;
            result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
        }
        result.out = TemporaryDir::Read(out);
        result.err = TemporaryDir::Read(err);
        return result;
    }

    ScopedVariable m_home{"HOME", m_directory.Path().c_str()};
    ScopedVariable m_config{"MOD_FOO_CONFIG", nullptr};
    ScopedVariable m_locale{"LC_ALL", "C"};
};
