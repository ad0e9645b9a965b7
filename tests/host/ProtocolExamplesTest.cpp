// The examples of the documents are what the host tool really says.

#include "tests/common/SampleObjects.h"
#include "tests/host/HostProcess.h"

#include <sstream>

namespace {

struct Example {
    std::string command;  // with the lines of its here-document
    std::string output;
};

// The commands ("$ ", continued by "> ") of the console blocks, each with what stands below it.
std::vector<Example> ReadExamples(const std::string& document) {
    std::vector<Example> examples;
    std::istringstream lines(document);
    bool isConsole = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("```")) {
            isConsole = line == "```console";
        } else if (isConsole && line.starts_with("$ ")) {
            examples.push_back({line.substr(2) + "\n", ""});
        } else if (isConsole && line.starts_with("> ")) {
            examples.back().command += line.substr(2) + "\n";
        } else if (isConsole) {
            examples.back().output += line + "\n";
        }
    }
    return examples;
}

class ProtocolExamplesTest : public HostProcessTest {
  protected:
    void ExpectExamples(const char* document, std::size_t least);
};

void ProtocolExamplesTest::ExpectExamples(const char* document, std::size_t least) {
    const std::vector<Example> examples = ReadExamples(TemporaryDir::Read(document));
    ASSERT_GE(examples.size(), least);
    // One shell for all of them, as a reader has it; a mark ends each example's output.
    const std::string mark = "\x1D\n";
    std::string script;
    for (const Example& example : examples) {
        script += "{\n" + example.command + "} 2>&1\nprintf '\\035\\n'\n";
    }
    std::string outputs = RunScript(script).out;
    for (const Example& example : examples) {
        const std::size_t end = outputs.find(mark);
        ASSERT_NE(std::string::npos, end) << example.command;
        EXPECT_EQ(example.output, outputs.substr(0, end)) << example.command;
        outputs.erase(0, end + mark.size());
    }
}

TEST_F(ProtocolExamplesTest, AreWhatTheToolAnswers) {
    ExpectExamples(MOD_FOO_PROTOCOL, /*least=*/11);
}

TEST_F(ProtocolExamplesTest, ShowRecordsAsTheyAre) {
    m_directory.Write("certificate.pem", kSampleCertificate);
    m_directory.Write("list.pem", kSampleCrl);
    m_directory.Write("message.pem", kSampleMessage);
    m_directory.Write("envelope.pem", kSampleEnvelope);
    ExpectExamples(MOD_FOO_RECORDS, /*least=*/10);
}

}  // namespace
