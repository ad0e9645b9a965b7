// A process that has rights its caller has not must not take its settings from the caller.

#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t kNobody = 65534;

// What the program prints when somebody without rights runs it, with an environment of his own.
std::string RunAsNobody(const std::string& program, const std::string& output) {
    const pid_t child = ::fork();
    if (child == 0) {
        const int file = ::open(output.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
        const char* const arguments[] = {program.c_str(), nullptr};
        const char* const environment[] = {"HOME=/caller", "MOD_FOO_CONFIG=/caller/own.ini",
                                           "MOD_FOO_PKI_CONFIG=/caller/own.json", nullptr};
        if (::dup2(file, STDOUT_FILENO) >= 0 && ::setgroups(0, nullptr) == 0 &&
            ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0) {
            ::execve(program.c_str(), const_cast<char* const*>(arguments),
                     const_cast<char* const*>(environment));
        }
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    return TemporaryDir::Read(output);
}

}  // namespace

TEST(SecureExecutionTest, TakesNothingFromTheCaller) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can lend its rights";
    }
    const TemporaryDir directory;
    const std::string program = directory.File("search_paths");
    std::filesystem::copy_file(MOD_FOO_SEARCH_PATHS, program);
    ASSERT_EQ(::chmod(directory.Path().c_str(), 0755), 0);
    const std::string machines = "secure\n/etc/ZORNA/QetCryptoSvcConfig.ini\nuser ";
    const std::string rest = "/.config/ZORNA\n";
    const struct {
        const char* name;
        mode_t mode;
        std::string output;
    } cases[] = {
        {"plain", 0755,
         "plain\n/caller/own.ini\nuser /caller/.config/ZORNA\nPKI of the environment\n"},
        {"set-uid", 04755, machines + ::getpwuid(0)->pw_dir + rest},
        {"set-gid", 02755, machines + ::getpwuid(kNobody)->pw_dir + rest},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_EQ(::chmod(program.c_str(), c.mode), 0);
        const std::string output = RunAsNobody(program, directory.File("output"));
        if (c.mode != 0755 && output.starts_with("plain")) {
            GTEST_SKIP() << "the file system gives no rights";
        }
        EXPECT_EQ(output, c.output);
    }
}
