#include "common/AtomicFile.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <signal.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using ca::FileStatus;
namespace fs = std::filesystem;

mode_t ModeOf(const std::string& path) {
    struct stat info = {};
    return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

class AtomicFileTest : public testing::Test {
  protected:
    TemporaryDir m_directory;
};

TEST_F(AtomicFileTest, ReplacesContentAndKeepsRights) {
    const std::string path = m_directory.File("new");
    ASSERT_EQ(ca::ReplaceFile(path, "one"), FileStatus::kDone);
    EXPECT_EQ(ModeOf(path), 0600U);
    for (const mode_t mode : {0640U, 0604U, 0400U}) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        ASSERT_EQ(ca::ReplaceFile(path, std::string(100000, 'x')), FileStatus::kDone);
        EXPECT_EQ(ModeOf(path), mode);
    }
    EXPECT_EQ(fs::file_size(path), 100000U);
    EXPECT_EQ(m_directory.EntryCount(), 1U);
}

TEST_F(AtomicFileTest, WritesThroughSymbolicLinks) {
    const std::string target = m_directory.Write("real/file", "old");
    const std::string link = m_directory.File("link");
    fs::create_symlink(target, link);
    ASSERT_EQ(ca::ReplaceFile(link, "new"), FileStatus::kDone);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(TemporaryDir::Read(target), "new");
}

TEST_F(AtomicFileTest, RefusesWhatIsNoFile) {
    EXPECT_EQ(ca::ReplaceFile(m_directory.Path(), "x"), FileStatus::kNotOpened);
    EXPECT_EQ(ca::ReplaceFile(m_directory.File("none/file"), "x"), FileStatus::kNotOpened);
    EXPECT_EQ(ca::ReplaceFile("", "x"), FileStatus::kNotOpened);
    EXPECT_EQ(m_directory.EntryCount(), 0U);
}

// A full disk, played by a limit on the size of files.
TEST_F(AtomicFileTest, LeavesTheOldFileAndNoLitterWhenWritingFails) {
    const std::string path = m_directory.Write("file", "old");
    struct rlimit old = {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
    const struct rlimit small = {1024, old.rlim_max};
    const auto oldHandler = ::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const FileStatus status = ca::ReplaceFile(path, std::string(5000, 'x'));
    ::setrlimit(RLIMIT_FSIZE, &old);
    ::signal(SIGXFSZ, oldHandler);

    EXPECT_EQ(status, FileStatus::kFailed);
    EXPECT_EQ(TemporaryDir::Read(path), "old");
    EXPECT_EQ(m_directory.EntryCount(), 1U);
}

TEST_F(AtomicFileTest, ReadsUpToTheLimit) {
    const std::string path = m_directory.Write("file", std::string("a\0c", 3));
    std::string content = "before";
    EXPECT_EQ(ca::ReadWholeFile(path, 3, content), FileStatus::kDone);
    EXPECT_EQ(content, std::string("a\0c", 3));
    EXPECT_EQ(ca::ReadWholeFile(path, 2, content), FileStatus::kTooLarge);
    EXPECT_EQ(content, "");
    EXPECT_EQ(ca::ReadWholeFile(m_directory.Write("empty", ""), 0, content), FileStatus::kDone);
}

TEST_F(AtomicFileTest, ReadsFilesThatStateNoSize) {
    std::string content;
    ASSERT_EQ(ca::ReadWholeFile("/proc/self/status", 1U << 20, content), FileStatus::kDone);
    EXPECT_GT(content.size(), 100U);
}

TEST_F(AtomicFileTest, TellsWhyNothingWasRead) {
    std::string content;
    EXPECT_EQ(ca::ReadWholeFile(m_directory.File("none"), 9, content), FileStatus::kMissing);
    EXPECT_EQ(ca::ReadWholeFile(m_directory.Write("f", "") + "/x", 9, content),
              FileStatus::kMissing);
    EXPECT_EQ(ca::ReadWholeFile(m_directory.Path(), 9, content), FileStatus::kNotOpened);
    EXPECT_EQ(ca::ReadWholeFile("/dev/zero", 9, content), FileStatus::kNotOpened);
    const std::string pipe = m_directory.File("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(ca::ReadWholeFile(pipe, 9, content), FileStatus::kNotOpened);
}

}  // namespace
