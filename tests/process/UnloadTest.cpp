// Ends of modules and libraries in a host that goes on: what was unloaded is not called any more.

#include "tests/module/ModuleLibrary.h"

#include <QApplication>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <malloc.h>
#include <memory>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

// What Qt and its platform plugin keep until the process ends is not the module's.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\nleak:libQt5Gui.so\nleak:libQt5Core.so\n";
}

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr char kEnumCerts[] = R"({"mode":38})";
constexpr char kDamaged[] =
    "\x30\x0B\x30\x03\x04\x07"
    "outside";  // of what holds it

// A library of its own, which nobody else keeps loaded.
class CLoaded {
  public:
    explicit CLoaded(const char* file) : m_path(m_directory.File("copy.so")) {
        std::filesystem::copy_file(file, m_path);
        m_library = ::dlopen(m_path.c_str(), RTLD_NOW | RTLD_LOCAL);
        EXPECT_NE(m_library, nullptr) << ::dlerror();
    }
    CLoaded(const CLoaded&) = delete;
    CLoaded& operator=(const CLoaded&) = delete;
    ~CLoaded() = default;

    template <class Function>
    Function Find(const char* name) const {
        return reinterpret_cast<Function>(::dlsym(m_library, name));
    }
    // Whether it is gone afterwards.
    bool Unload() {
        ::dlclose(m_library);
        return ::dlopen(m_path.c_str(), RTLD_NOW | RTLD_NOLOAD) == nullptr;
    }

  private:
    TemporaryDir m_directory;
    std::string m_path;
    void* m_library = nullptr;
};

class UnloadTest : public LibraryTest {
  protected:
    void* Start(CMLogCallback callback) {
        return ModuleLibrary::Get().init(/*silent=*/1, callback);
    }
    static void Free(void* module) { ModuleLibrary::Get().free(module); }
    static void Ask(void* module, std::string request = kEnumCerts) {
        CMPacket packet{};
        packet.request = request.data();
        packet.requestLength = static_cast<std::uint32_t>(request.size());
        ModuleLibrary::Get().process(module, &packet);
        std::free(packet.response);
    }
};

TEST_F(UnloadTest, AWindowOutlivesTheCodeOfTheLog) {
    CLoaded plugIn(PLUG_IN);
    const auto lines = plugIn.Find<int (*)()>("PlugInLines");
    void* const module = Start(plugIn.Find<CMLogCallback>("PlugInLog"));
    const std::unique_ptr<QObject> viewer(
        reinterpret_cast<QObject*>(ModuleLibrary::Get().createDialog()));
    ASSERT_NE(viewer, nullptr);
    const auto show = [&viewer] {
        return QMetaObject::invokeMethod(viewer.get(), "setStructure",
                                         Q_ARG(QByteArray, QByteArray(kDamaged)));
    };
    const int before = lines();
    EXPECT_TRUE(show());
    EXPECT_GT(lines(), before);

    Free(module);
    ASSERT_TRUE(plugIn.Unload());
    EXPECT_TRUE(show());
}

// ---- One process, several modules: the callback is that of the newest one alive.

std::atomic<bool> isNewerFreed{false};
std::atomic<int> newerLines{0};
std::atomic<int> olderLines{0};
std::atomic<int> lateLines{0};

bool Newer(const wchar_t*, bool) {
    lateLines += isNewerFreed ? 1 : 0;
    ++newerLines;
    std::this_thread::sleep_for(std::chrono::microseconds(50));
    lateLines += isNewerFreed ? 1 : 0;
    return true;
}

bool Older(const wchar_t*, bool) {
    ++olderLines;
    return true;
}

TEST_F(UnloadTest, NoCallIsRunningOrBeginsOnceAModuleIsFreed) {
    constexpr int kThreads = 3;
    constexpr int kRounds = 60;
    void* const older = Start(&Older);
    std::atomic<bool> isEnough{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            while (!isEnough) {
                Ask(older);
            }
        });
    }
    for (int round = 0; round < kRounds; ++round) {
        isNewerFreed = false;
        void* const newer = Start(&Newer);
        std::this_thread::sleep_for(milliseconds(2));
        Free(newer);
        isNewerFreed = true;
        std::this_thread::sleep_for(milliseconds(1));
    }
    isEnough = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(lateLines, 0);
    EXPECT_GT(newerLines, kRounds);
    const int before = olderLines;
    Ask(older);
    EXPECT_GT(olderLines, before);  // the log is its again
    Free(older);
}

// ---- Callbacks that do what they may not.

void* toBeFreed = nullptr;
std::atomic<bool> isHeld{false};
std::atomic<bool> isInside{false};

bool FreesAModule(const wchar_t*, bool) {
    ModuleLibrary::Get().free(std::exchange(toBeFreed, nullptr));
    return true;
}

bool StaysInside(const wchar_t*, bool) {
    while (isHeld) {
        isInside = true;
        std::this_thread::sleep_for(milliseconds(1));
    }
    return true;
}

TEST_F(UnloadTest, FreesInSpiteOfCallbacksThatMisbehave) {
    void* const asking = Start(&Older);
    toBeFreed = nullptr;
    toBeFreed = Start(&FreesAModule);
    Clock::time_point start = Clock::now();
    Ask(asking);
    EXPECT_EQ(toBeFreed, nullptr);
    EXPECT_LT(Clock::now() - start, milliseconds(2000));

    void* const stuck = Start(&StaysInside);
    isHeld = true;
    std::thread thread([asking] { Ask(asking); });
    while (!isInside) {
        std::this_thread::yield();
    }
    start = Clock::now();
    Free(stuck);
    EXPECT_GE(Clock::now() - start, milliseconds(3000));   // it was waited for,
    EXPECT_LT(Clock::now() - start, milliseconds(20000));  // but not for ever
    isHeld = false;
    thread.join();
    Free(asking);
}

// ---- The library itself.

TEST_F(UnloadTest, IsLoadedAndUnloadedAgainAndAgain) {
    constexpr int kWarmUp = 5;
    constexpr int kRounds = 15;
    std::size_t used = 0;
    for (int round = 0; round < kRounds; ++round) {
        CLoaded library(MOD_FOO_LIBRARY);
        const auto init = library.Find<void* (*)(int, CMLogCallback)>("CM_Init");
        const auto process = library.Find<void (*)(void*, CMPacket*)>("CM_ProcessClientRequest");
        const auto free = library.Find<void (*)(void*)>("CM_Free");
        void* const module = init(/*silent=*/1, &Older);
        ASSERT_NE(module, nullptr);
        std::thread([&] {
            std::string request = R"({"mode":22,"clientId":"a"})";
            CMPacket packet{};
            packet.request = request.data();
            packet.requestLength = static_cast<std::uint32_t>(request.size());
            process(module, &packet);
            EXPECT_EQ(Answer(packet).Code(), 0U);
        }).join();
        free(module);
        ASSERT_TRUE(library.Unload());
        // Nothing of it is left that the process would call at a fork.
        const pid_t child = ::fork();
        if (child == 0) {
            ::_exit(0);
        }
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
        if (round == kWarmUp) {
            used = ::mallinfo2().uordblks;
        }
    }
    EXPECT_LE(::mallinfo2().uordblks, used + 20 * 1024);
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const TemporaryDir settings;  // instead of the user's: the viewer keeps its size there
    qputenv("XDG_CONFIG_HOME", settings.Path().c_str());
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
