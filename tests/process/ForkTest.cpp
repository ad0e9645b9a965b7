// Processes that fork while threads of theirs are anywhere in the module: the child goes on asking.

#include "tests/module/ModuleLibrary.h"
#include "tests/process/ModeRequests.h"

#include <QApplication>

#include <atomic>
#include <chrono>
#include <csignal>
#include <memory>
#include <pthread.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr unsigned kServiceMode = 16131;

// Threads log, and are inside the callback for a while.
bool Log(const wchar_t*, bool) {
    if (::gettid() % 4 == 0) {
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    return true;
}

class ForkTest : public LibraryTest {
  protected:
    unsigned CodeOf(std::string octets) const {
        return Answer(Process(octets.data(), octets.size())).Code();
    }

    // What `work` returns in a child, below 64; 100 and more when the child crashed or hung.
    template <class Work>
    static int InChild(Work work) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(20);
            ::_exit(work());
        }
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 100 + WTERMSIG(status);
    }

    // Every mode once, a fetch, and the end of the module. The number of the step that failed.
    int AskEverything() {
        for (const ModeRequest& request : ModeRequests()) {
            CodeOf(request.octets);
        }
        if (CodeOf(R"({"mode":38,"clientId":"a new one"})") != 0) {
            return 1;
        }
        if (CodeOf(R"({"mode":38,"fileDataUrl":"http://127.0.0.1:1/"})") != 16263) {
            return 2;
        }
        const Clock::time_point start = Clock::now();
        Free();
        if (Clock::now() - start > milliseconds(2000)) {  // for threads that are not there
            return 3;
        }
        Init(/*silent=*/0, &Log);
        return CodeOf(R"({"mode":38})") == 0 ? 0 : 4;
    }

    // Keeps threads asking while `work` runs.
    template <class Work>
    void WhileThreadsAsk(Work work) {
        constexpr std::size_t kThreads = 4;
        const std::vector<ModeRequest> requests = ModeRequests();
        std::atomic<bool> isEnough{false};
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                for (std::size_t next = i * 7; !isEnough; ++next) {
                    CodeOf(requests[next % requests.size()].octets);
                    if (i == 0) {
                        CodeOf(R"({"mode":38,"fileDataUrl":"http://127.0.0.1:1/"})");
                    }
                }
            });
        }
        work();
        isEnough = true;
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
};

TEST_F(ForkTest, AChildAsksWhereverTheOtherThreadsAre) {
    constexpr int kForks = 60;
    Init(/*silent=*/1, &Log);
    WhileThreadsAsk([this] {
        for (int i = 0; i < kForks; ++i) {
            std::this_thread::sleep_for(std::chrono::microseconds(i * 37 % 1000));
            ASSERT_EQ(InChild([this] { return AskEverything(); }), 0) << i;
        }
    });
}

// What is made at the first request is half made as the process forks.
TEST_F(ForkTest, AChildAsksWhileTheFirstRequestsRun) {
    constexpr int kProcesses = 40;
    for (int i = 0; i < kProcesses; ++i) {
        ASSERT_EQ(InChild([this, i] {
                      Init(/*silent=*/1, &Log);
                      int result = -1;
                      WhileThreadsAsk([&] {
                          std::this_thread::sleep_for(std::chrono::microseconds(i * 50));
                          result = InChild([this] { return AskEverything(); });
                      });
                      return result;
                  }),
                  0)
            << i;
    }
}

void* askedInCallback = nullptr;
int resultOfChild = -1;

bool Forks(const wchar_t* line, bool) {
    if (askedInCallback != nullptr && std::wstring_view(line) == L"> EnumCerts") {
        void* const module = std::exchange(askedInCallback, nullptr);
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(20);
            const Clock::time_point start = Clock::now();
            ModuleLibrary::Get().free(ModuleLibrary::Get().init(/*silent=*/1, &Log));
            char request[] = R"({"mode":37})";
            CMPacket packet{};
            packet.request = request;
            packet.requestLength = sizeof request - 1;
            ModuleLibrary::Get().process(module, &packet);
            ::_exit(packet.response != nullptr && Clock::now() - start < milliseconds(2000) ? 0
                                                                                            : 1);
        }
        ::waitpid(child, &resultOfChild, 0);
    }
    return true;
}

TEST_F(ForkTest, TheLogCallbackMayFork) {
    askedInCallback = Init(/*silent=*/1, &Forks);
    EXPECT_EQ(CodeOf(R"({"mode":38})"), 0U);
    EXPECT_EQ(resultOfChild, 0);
}

TEST_F(ForkTest, AWindowIsForTheProcessWithTheEventLoop) {
    int count = 1;
    char name[] = "fork_tests";
    char* arguments[] = {name, nullptr};
    const QApplication application(count, arguments);
    Init(/*silent=*/0, &Log);
    std::thread([this] {
        EXPECT_EQ(InChild([this] {
                      const Clock::time_point start = Clock::now();
                      const bool isRefused = CodeOf(R"({"mode":39})") == kServiceMode;
                      return isRefused && Clock::now() - start < milliseconds(2000) ? 0 : 1;
                  }),
                  0);
    }).join();
    EXPECT_EQ(InChild([this] { return CodeOf(R"({"mode":39})") == 0 ? 0 : 1; }), 0);
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return RUN_ALL_TESTS();
}
