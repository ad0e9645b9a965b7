// Every allocation of every mode fails once, alone or with all after it: there is an answer, or
// null and size 0; nothing leaks, and the next request is served.

#include "tests/module/ModuleLibrary.h"
#include "tests/process/CountedHeap.h"
#include "tests/process/ModeRequests.h"

namespace {

using CountedHeap::Refusal;

constexpr unsigned kExecution = 16197;

bool Ignore(const wchar_t*, bool) {
    return true;
}

struct Outcome {
    bool isRefused = false;  // some allocation
    bool isAnswered = false;
    std::ptrdiff_t leftBlocks = 0;  // that were not there before
    std::string octets;
};

class NoMemoryTest : public LibraryTest {
  protected:
    // Asks while the heap refuses the allocation of this number; 0 refuses none.
    Outcome Ask(const std::string& request, std::size_t refused = 0,
                Refusal refusal = Refusal::kOnce) const {
        Outcome outcome;
        std::string own = request;
        const std::size_t before = CountedHeap::LiveBlocks();
        if (refused != 0) {
            CountedHeap::RefuseAt(refused, refusal);
        }
        const CMPacket packet = Process(own.data(), own.size());
        outcome.isRefused = refused != 0 && CountedHeap::Relent();
        outcome.isAnswered = packet.response != nullptr;
        const std::size_t left = CountedHeap::LiveBlocks() - (outcome.isAnswered ? 1 : 0);
        outcome.leftBlocks = static_cast<std::ptrdiff_t>(left - before);
        if (packet.response == nullptr) {
            EXPECT_EQ(packet.responseSize, 0U);
        } else {
            outcome.octets.assign(packet.response, packet.responseSize);
        }
        std::free(packet.response);
        return outcome;
    }

    // Refuses each allocation in turn, until a request needs no more.
    void RefuseEach(const std::string& request, Refusal refusal, bool isWarm) const {
        const std::string served = isWarm ? Ask(request).octets : std::string();
        for (std::size_t refused = 1;; refused += 1 + refused / 1000) {
            SCOPED_TRACE(refused);
            const Outcome outcome = Ask(request, refused, refusal);
            if (!outcome.isRefused) {
                break;
            }
            if (outcome.isAnswered) {
                Judge(outcome.octets, served);
            }
            if (isWarm) {
                const Outcome next = Ask(request);
                EXPECT_EQ(next.octets, served);
                // A context that could not be released yet is released now.
                EXPECT_EQ(outcome.leftBlocks + next.leftBlocks, 0);
            }
            ASSERT_FALSE(HasFailure());
        }
    }

    // What an answer without the memory may be: the whole one, or a failure that says so.
    static void Judge(const std::string& octets, const std::string& served) {
        const unsigned code = CodeOf(octets);
        const bool isTransfer = !served.empty() && IsOfTransfer(CodeOf(served));
        if (code != kExecution && !served.empty() && !(isTransfer && IsOfTransfer(code))) {
            EXPECT_EQ(octets, served);
        }
    }
    static unsigned CodeOf(const std::string& octets) {
        rapidjson::Document json;
        json.Parse(octets.c_str());
        EXPECT_FALSE(json.HasParseError()) << octets;
        return json.IsObject() ? json["errorCode"].GetUint() : 0;
    }
    // No handle, no connection, no upload.
    static bool IsOfTransfer(unsigned code) {
        return code == 16302 || code == 16263 || code == 16305;
    }
};

TEST_F(NoMemoryTest, EveryModeAnswers) {
    SetConfig("Language=En\nLogMode=3\n");
    Init(/*silent=*/1, &Ignore);
    // The loader does not get over a lack of memory: what it breaks off stays broken.
    Ask(R"({"mode":38,"fileDataUrl":"http://127.0.0.1:1/"})");
    std::vector<ModeRequest> requests = ModeRequests();
    // Other ways of a request.
    for (
        const char* text : {
            "{",
            R"({"mode":14,"fileDataEncodedSize":8,"fileData":"SGVsbG8=","isAttached":true})",
            R"({"mode":38,"fileDataUrl":"http://127.0.0.1:1/"})",
            R"({"mode":14,"uploadUrl":"http://127.0.0.1:1/","streamFinalChunk":true})",
            R"({"mode":38,"config":{"Service settings":{"Language":"Ru"}},"PKIConfig":{"crl":{}}})",
        }) {
        requests.push_back({0, text});
    }
    // First what is made at a first request.
    for (const bool isWarm : {false, true}) {
        for (const ModeRequest& request : requests) {
            for (const Refusal refusal : {Refusal::kFromThen, Refusal::kOnce}) {
                SCOPED_TRACE(testing::Message() << request.octets.c_str() << " warm " << isWarm
                                                << ", once " << (refusal == Refusal::kOnce));
                RefuseEach(request.octets, refusal, isWarm);
                ASSERT_FALSE(HasFatalFailure());
            }
        }
    }
}

TEST_F(NoMemoryTest, AModuleIsCreatedOrNot) {
    SetPkiConfig(R"({"tsp":{"servers":[{"url":"http://tsp/","timeout":5}]}})");
    const std::string kRequest = R"({"mode":38})";
    std::size_t made = 0;
    for (const Refusal refusal : {Refusal::kFromThen, Refusal::kOnce}) {
        Init(/*silent=*/1, &Ignore);
        Ask(kRequest);
        for (std::size_t refused = 1;; ++refused) {
            SCOPED_TRACE(refused);
            Free();
            const std::size_t before = CountedHeap::LiveBlocks();
            CountedHeap::RefuseAt(refused, refusal);
            m_module = ModuleLibrary::Get().init(/*silent=*/1, &Ignore);
            const bool isRefused = CountedHeap::Relent();
            if (m_module != nullptr) {
                ++made;
                EXPECT_TRUE(Ask(kRequest).isAnswered);
            }
            Free();
            ASSERT_EQ(CountedHeap::LiveBlocks(), before);
            if (!isRefused) {
                break;
            }
        }
    }
    EXPECT_GE(made, 2U);
}

}  // namespace
