// Files and streams that give too little, too much or nothing, and names that are not texts.

#include "tests/common/SampleObjects.h"
#include "tests/host/HostProcess.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include <cstring>

namespace {

using testing::HasSubstr;

// Every command line that reads a file; FILE stands for it.
const char* const kReaders[] = {"call GetCertInfo --file FILE",
                                "call 38 --json FILE",
                                "call 38 --config FILE",
                                "call 38 --pki-config FILE",
                                "run FILE",
                                "asn1 FILE",
                                "describe FILE",
                                "describe --json FILE",
                                "view FILE"};

class StreamsTest : public HostProcessTest {
  protected:
    HostResult Read(const char* reader, const std::string& file) const {
        std::string words = reader;
        words.replace(words.find("FILE"), 4, file);
        return RunScript("export QT_QPA_PLATFORM=offscreen\nexec cmhost " + words);
    }
};

TEST_F(StreamsTest, FileThatCannotBeReadIsTold) {
    const struct {
        const char* file;
        const char* reason;
    } cases[] = {{"none", "cannot open none: No such file or directory\n"},
                 {".", "cannot read .: Is a directory\n"},
                 {"/proc/self/mem", "cannot read /proc/self/mem: Input/output error\n"},
                 {"'no\nsuch\xFFone'", "cannot open no.such\xEF\xBF\xBDone: No such file"}};
    for (const auto& c : cases) {
        for (const char* reader : kReaders) {
            SCOPED_TRACE(std::string(reader) + " " + c.file);
            if (std::string_view(reader).starts_with("describe") && *c.file == '.') {
                continue;  // it walks folders
            }
            const HostResult result = Read(reader, c.file);
            EXPECT_EQ(2, result.exitCode);
            EXPECT_THAT(result.err, testing::StartsWith(std::string("cmhost: ") + c.reason));
        }
    }
    EXPECT_THAT(RunScript("cmhost asn1 - <&-").err, HasSubstr("standard input: Bad file"));
}

TEST_F(StreamsTest, OtherFilesAreDoneAllTheSame) {
    m_directory.Write("c.pem", kSampleCertificate);
    for (const std::string command : {"asn1 ", "describe "}) {
        const HostResult both = RunScript("cmhost " + command + "none c.pem");
        EXPECT_EQ(2, both.exitCode);
        EXPECT_THAT(both.out, HasSubstr("c.pem"));
    }
}

TEST_F(StreamsTest, WhatDoesNotEndIsRefusedAtOnce) {
    m_directory.Write("sparse", "");
    std::filesystem::resize_file(m_directory.File("sparse"), 1ULL << 40U);
    std::vector<std::pair<const char*, const char*>> cases = {
        {"call 38 --config FILE", "/dev/zero"},
        {"run FILE", "/dev/zero"},
        {"asn1 FILE", "/dev/zero"}};
    for (const char* reader : kReaders) {
        if (std::string_view(reader) != "run FILE") {  // a session may be long
            cases.emplace_back(reader, "sparse");
        }
    }
    for (const auto& [reader, file] : cases) {
        SCOPED_TRACE(std::string(reader) + " " + file);
        const HostResult result = Read(reader, file);
        EXPECT_EQ(2, result.exitCode);
        EXPECT_THAT(result.err, testing::ContainsRegex("goes on beyond 256 MiB|is too large: more "
                                                       "than|does not end within 256 MiB"));
        // Twice the most that is taken and what a sanitizer keeps of it.
        EXPECT_LT(result.peakKilobytes, 1200 << 10U);
    }
}

TEST_F(StreamsTest, OutputThatCannotBeWrittenIsTold) {
    m_directory.Write("c.pem", kSampleCertificate);
    for (const std::string command :
         {"modes", "modes --names", "--help", "asn1 --help", "--version", "call 38",
          "call Sign --interactive --file c.pem -o -", "run session", "asn1 c.pem",
          "asn1 --json c.pem", "asn1 --raw - c.pem", "describe c.pem",
          "describe --ndjson c.pem c.pem"}) {
        m_directory.Write("session", "{\"mode\":38}\n{\"mode\":38}\n");
        for (const char* target : {">/dev/full", ">&-"}) {
            SCOPED_TRACE(command + target);
            const HostResult result = RunScript("cmhost " + command + " " + target);
            EXPECT_EQ(2, result.exitCode);
            EXPECT_THAT(result.err, HasSubstr("cmhost: cannot write to the standard output: "));
        }
    }
    const HostResult reader = RunScript("{ sleep 0.2; cmhost asn1 c.pem; echo $? >&2; } | true");
    EXPECT_EQ("cmhost: cannot write to the standard output: Broken pipe\n2\n", reader.err);
}

TEST_F(StreamsTest, FullDiskLeavesTheOldFile) {
    m_directory.Write("big", std::string("\x04\x82\x20\0", 4) + std::string(0x2000, 'x'));
    m_directory.Write("old/out", "old");
    std::filesystem::create_symlink("old/out", m_directory.File("link"));
    const std::string command = "asn1 big --raw link >/dev/null";
    // Blocks of 512 octets.
    EXPECT_THAT(RunScript("ulimit -f 4\ncmhost " + command).err,
                HasSubstr("cannot write link: File too large"));
    EXPECT_EQ("old", TemporaryDir::Read(m_directory.File("old/out")));
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(m_directory.File("old")), {}));
    EXPECT_EQ(2, RunScript("cmhost asn1 big --raw /dev/full").exitCode);

    EXPECT_EQ(0, RunScript("umask 027\nchmod 604 old/out\ncmhost " + command +
                           "\ncmhost asn1 big --raw new >/dev/null")
                     .exitCode);
    EXPECT_EQ(TemporaryDir::Read(m_directory.File("big")),
              TemporaryDir::Read(m_directory.File("old/out")));
    EXPECT_EQ("604 640\n", RunScript("echo $(stat -c %a old/out new)").out);
}

TEST_F(StreamsTest, JsonNamesItsFile) {
    m_directory.Write("c.pem", std::string(kSampleCertificate) + kSampleCertificate);
    m_directory.Write("odd\xFF\xC2\x9B", "\x02\x01\x07");
    const struct {
        const char* command;
        const char* file;
        const char* member;
    } cases[] = {{"describe --ndjson", "odd\xFF\xC2\x9B", "error"},
                 {"describe --json", "odd\xFF\xC2\x9B", "errorCode"},
                 {"describe --json", "none\xFF\xC2\x9B", "hostError"},
                 {"describe --json", "c.pem", "certInfos"},
                 {"asn1 --json", "odd\xFF\xC2\x9B", "structure"},
                 {"asn1 --json", "c.pem", "item"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.command) + " " + c.file);
        const HostResult result = RunScript(std::string("cmhost ") + c.command + " " + c.file);
        rapidjson::Document object;
        object.Parse<rapidjson::kParseStopWhenDoneFlag>(result.out.c_str());
        ASSERT_TRUE(object.IsObject()) << result.out;
        EXPECT_TRUE(object.HasMember(c.member)) << result.out;
        const bool isText = *c.file == 'c';
        EXPECT_EQ(isText, !object.HasMember("fileBase64"));
        EXPECT_EQ(isText ? "c.pem"
                         : std::string(c.file, std::strlen(c.file) - 3) + "\xEF\xBF\xBD\xC2\x9B",
                  object["file"].GetString());
        EXPECT_THAT(result.out, HasSubstr(isText ? "c.pem" : "\\u009B\""));
    }
    EXPECT_THAT(RunScript("cmhost describe --ndjson odd*").out,
                HasSubstr(",\"fileBase64\":\"b2Rk/8Kb\","));
}

}  // namespace
