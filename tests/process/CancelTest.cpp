// Threads that the host cancels, or that end inside its log callback, while they run a request.

#include "tests/module/ModuleLibrary.h"
#include "tests/process/ModeRequests.h"

#include <QApplication>

#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <functional>
#include <malloc.h>
#include <netinet/in.h>
#include <pthread.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

// What Qt and its platform plugin keep until the process ends is not the module's.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\nleak:libQt5Gui.so\nleak:libQt5Core.so\n";
}

// The address sanitizer does not see that frames of the C library were unwound, and takes its own
// look at the signal stack, where they were, for a fault.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_suppressions();
extern "C" const char* __asan_default_suppressions() {
    return "interceptor_name:sigaltstack";
}

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

enum class End { kNone, kCancel, kExit };

// Which line ends its thread, and how; of the thread that is asked at the time.
thread_local int linesLeft = -1;
thread_local End way = End::kNone;
thread_local bool throws = false;

bool EndsTheThread(const wchar_t*, bool) {
    if (throws) {
        throws = false;
        throw std::runtime_error("from the callback");
    }
    if (linesLeft > 0 && --linesLeft == 0) {
        if (way == End::kExit) {
            ::pthread_exit(PTHREAD_CANCELED);
        }
        ::pthread_cancel(::pthread_self());
        ::pthread_testcancel();
    }
    return true;
}

// Runs `work` in a thread of its own. Whether the thread was ended before the work was.
bool EndsEarly(std::function<void()> work) {
    pthread_t thread{};
    const auto start = [](void* function) -> void* {
        (*static_cast<std::function<void()>*>(function))();
        return nullptr;
    };
    EXPECT_EQ(::pthread_create(&thread, nullptr, start, &work), 0);
    void* result = nullptr;
    EXPECT_EQ(::pthread_join(thread, &result), 0);
    return result == PTHREAD_CANCELED;
}

std::size_t OpenFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

class CancelTest : public LibraryTest {
  protected:
    CancelTest() { Init(/*silent=*/1, &EndsTheThread); }

    void Ask(std::string octets) const {
        std::free(Process(octets.data(), octets.size()).response);
    }
    unsigned CodeOf(std::string octets) const {
        return Answer(Process(octets.data(), octets.size())).Code();
    }
};

TEST_F(CancelTest, EveryLineOfEveryModeMayEndItsThread) {
    const std::vector<ModeRequest> requests = ModeRequests();
    std::size_t used = 0;
    for (int round = 0; round < 6; ++round) {
        for (const ModeRequest& request : requests) {
            SCOPED_TRACE(request.mode);
            int line = 0;
            do {
                ++line;
            } while (EndsEarly([&] {
                linesLeft = line;
                way = round % 2 == 0 ? End::kCancel : End::kExit;
                Ask(request.octets);
            }));
            EXPECT_GT(line, 1);
            Ask(request.octets);  // it goes on serving
        }
        if (round == 3) {  // before that the heap still finds its shape
            used = ::mallinfo2().uordblks;
        }
    }
    EXPECT_LE(::mallinfo2().uordblks, used + 16 * 1024);  // of some 500 threads
    EXPECT_EQ(CodeOf(R"({"mode":38})"), 0U);
}

TEST_F(CancelTest, TheReportOfAFailureMayEndItsThread) {
    EXPECT_TRUE(EndsEarly([this] {
        throws = true;
        linesLeft = 1;
        way = End::kCancel;
        Ask(R"({"mode":38})");
    }));
    EXPECT_EQ(CodeOf(R"({"mode":38})"), 0U);
}

TEST_F(CancelTest, StartAndEndOfAModule) {
    EXPECT_TRUE(EndsEarly([] {
        linesLeft = 1;
        way = End::kCancel;
        ModuleLibrary::Get().free(ModuleLibrary::Get().init(/*silent=*/1, &EndsTheThread));
    }));
    EXPECT_TRUE(EndsEarly([] {
        void* const module = ModuleLibrary::Get().init(/*silent=*/1, &EndsTheThread);
        ::pthread_cancel(::pthread_self());
        ModuleLibrary::Get().free(module);
        ::pthread_testcancel();
    }));
    EXPECT_EQ(CodeOf(R"({"mode":38})"), 0U);
}

// What the thread waits for when it is cancelled.
bool EndsWhenCancelled(const std::function<void()>& work) {
    std::atomic<pthread_t> thread{};
    std::atomic<bool> isCancelled{false};
    std::thread canceller([&] {
        while (thread == pthread_t{}) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(milliseconds(200));
        isCancelled = true;
        ::pthread_cancel(thread);
    });
    const Clock::time_point start = Clock::now();
    const bool isEarly = EndsEarly([&] {
        thread = ::pthread_self();
        work();
        while (!isCancelled) {
            std::this_thread::yield();
        }
    });
    EXPECT_LT(Clock::now() - start, milliseconds(4000));
    canceller.join();
    return isEarly;
}

TEST_F(CancelTest, AThreadThatWaitsForTheGuiThread) {
    Init(/*silent=*/0, &EndsTheThread);
    EXPECT_TRUE(
        EndsWhenCancelled([this] { Ask(R"({"mode":39,"extInitParams":"SHOW_TIMEOUT=60000"})"); }));
    QCoreApplication::processEvents();
    EXPECT_TRUE(QApplication::topLevelWidgets().empty());  // nobody wants the window any more
}

TEST_F(CancelTest, AThreadThatWaitsForTheNetwork) {
    const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);  // takes, never answers
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ASSERT_EQ(::bind(server, reinterpret_cast<sockaddr*>(&address), size), 0);
    ASSERT_EQ(::listen(server, 16), 0);
    ::getsockname(server, reinterpret_cast<sockaddr*>(&address), &size);
    const auto fetch = [](unsigned port) {
        return R"({"mode":38,"fileDataUrl":"http://127.0.0.1:)" + std::to_string(port) + "/\"}";
    };
    EXPECT_EQ(CodeOf(fetch(1)), 16263U);
    const std::size_t before = OpenFiles();
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(EndsWhenCancelled([&] { Ask(fetch(ntohs(address.sin_port))); }));
    }
    EXPECT_EQ(OpenFiles(), before);
    EXPECT_EQ(CodeOf(fetch(1)), 16263U);
    ::close(server);
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    ::mallopt(M_ARENA_MAX, 1);  // what mallinfo2() counts
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
