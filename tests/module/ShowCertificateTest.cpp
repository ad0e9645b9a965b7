// ShowCert and the viewer's entry point inside hosts of every kind: without an application, with
// one that has no windows, in its GUI thread, beside it, and while it ends.

#include "tests/common/SampleObjects.h"
#include "tests/module/ModuleLibrary.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QWidget>

#include <atomic>
#include <filesystem>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

// What Qt and its platform plugin keep until the process ends is not the module's.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\nleak:libQt5Gui.so\nleak:libQt5Core.so\n";
}

namespace {

constexpr unsigned kServiceMode = 16131;
constexpr const char* kShow = R"({"mode":39})";

std::vector<QWidget*> Viewers() {
    std::vector<QWidget*> viewers;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("CCertInfoDlg")) {
            viewers.push_back(widget);
        }
    }
    return viewers;
}

void CloseViewers() {
    for (QWidget* const viewer : Viewers()) {
        viewer->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(Viewers().empty());
}

class ShowCertificateTest : public LibraryTest {
  protected:
    ~ShowCertificateTest() override { EndApplication(); }

    template <class Application>
    void StartApplication() {
        m_application.reset(new Application(m_argc, m_argv));
    }
    void EndApplication() { m_application.reset(); }

    unsigned CodeOf(std::string request) const {
        return Answer(Process(request.data(), request.size())).Code();
    }
    // Runs events until the threads have counted down.
    static void RunEventsUntilZero(const std::atomic<int>& running) {
        QElapsedTimer timer;
        timer.start();
        while (running != 0 && timer.elapsed() < 60000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
    }

    std::unique_ptr<QCoreApplication> m_application;

  private:
    int m_argc = 1;
    char m_name[6] = "tests";
    char* m_argv[2] = {m_name, nullptr};
};

TEST_F(ShowCertificateTest, RefusesWithoutAnApplicationThatHasWidgets) {
    Init(/*silent=*/0);
    EXPECT_EQ(CodeOf(kShow), kServiceMode);
    StartApplication<QCoreApplication>();
    EXPECT_EQ(CodeOf(kShow), kServiceMode);
    EXPECT_EQ(ModuleLibrary::Get().createDialog(), nullptr);
    EndApplication();
    StartApplication<QGuiApplication>();
    EXPECT_EQ(CodeOf(kShow), kServiceMode);
    EndApplication();
    EXPECT_EQ(CodeOf(kShow), kServiceMode);
}

TEST_F(ShowCertificateTest, OpensAWindowInTheGuiThread) {
    StartApplication<QApplication>();
    Init(/*silent=*/0);
    EXPECT_EQ(Call(kShow).text, R"({"errorCode":0,"errorMessage":"DONE"})");
    EXPECT_EQ(CallRaw(R"("mode":39)", kSampleCertificate).Code(), 0U);
    const std::vector<QWidget*> viewers = Viewers();
    ASSERT_EQ(viewers.size(), 2U);
    for (const QWidget* viewer : viewers) {
        EXPECT_TRUE(viewer->isVisible());
        EXPECT_EQ(viewer->property("certificateCount").toInt(), 1);
        EXPECT_FALSE(viewer->testAttribute(Qt::WA_QuitOnClose));
    }
    CloseViewers();

    const struct {
        const char* request;
        unsigned code;
        const wchar_t* detail;  // in the log
    } refused[] = {
        {R"({"mode":39,"fileData":"SGVsbG8="})", 16113, L": Object 1: Certificate: "},
        {R"({"mode":39,"fileData":""})", 16118, L"No object in the file data, octets: 0"},
        {R"({"mode":39,"senderCertId":"unknown"})", 16102, L"\"unknown\""},
        {R"({"mode":39,"extInitParams":"SHOW_TIMEOUT=0"})", 16268, L": SHOW_TIMEOUT"},
    };
    for (const auto& c : refused) {
        LogRecorder::Take();
        EXPECT_EQ(CodeOf(c.request), c.code) << c.request;
        std::vector<LogLine> lines = LogRecorder::Take();
        std::erase_if(lines, [](const LogLine& line) { return !line.isError; });
        ASSERT_EQ(lines.size(), 2U);
        EXPECT_NE(lines[0].text.find(c.detail), std::wstring::npos)
            << testing::PrintToString(lines[0].text);
    }
    Init(/*silent=*/1);
    EXPECT_EQ(CodeOf(kShow), kServiceMode);
    EXPECT_TRUE(Viewers().empty());
}

TEST_F(ShowCertificateTest, KeepsTheScreenFromFillingUp) {
    StartApplication<QApplication>();
    Init(/*silent=*/0);
    std::size_t shown = 0;
    while (shown < 100 && CodeOf(kShow) == 0) {
        ++shown;
    }
    EXPECT_EQ(shown, 32U);
    Viewers().front()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(CodeOf(kShow), 0U);
    CloseViewers();
}

TEST_F(ShowCertificateTest, OpensWindowsForOtherThreads) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 3;
    StartApplication<QApplication>();
    Init(/*silent=*/0);
    std::atomic<int> running(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                EXPECT_EQ(CodeOf(R"({"mode":39,"extInitParams":"SHOW_TIMEOUT=60000"})"), 0U);
                EXPECT_EQ(CodeOf(R"({"mode":39,"fileData":"SGVsbG8="})"), 16113U);
            }
            --running;
        });
    }
    RunEventsUntilZero(running);
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(Viewers().size(), std::size_t{kThreads * kRounds});
    Free();  // the windows need no module
    CloseViewers();
}

TEST_F(ShowCertificateTest, GivesUpOnABusyGuiThreadForGood) {
    StartApplication<QApplication>();
    Init(/*silent=*/0);
    std::thread([this] {
        EXPECT_EQ(CodeOf(R"({"mode":39,"extInitParams":"SHOW_TIMEOUT=30"})"), kServiceMode);
    }).join();
    Free();
    QCoreApplication::processEvents();  // what was queued finds nobody who waits
    EXPECT_TRUE(Viewers().empty());
}

TEST_F(ShowCertificateTest, SurvivesTheEndOfTheApplication) {
    Init(/*silent=*/0);
    std::atomic<int> running(1);
    std::atomic<bool> isEnough(false);
    std::thread worker([&] {
        while (!isEnough) {
            const unsigned code = CodeOf(kShow);
            EXPECT_TRUE(code == 0 || code == kServiceMode) << code;
        }
        --running;
    });
    for (int round = 0; round < 10; ++round) {
        StartApplication<QApplication>();
        for (int i = 0; i < round; ++i) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        }
        EndApplication();  // with its windows open, and calls on their way
    }
    isEnough = true;
    worker.join();
    EXPECT_EQ(running, 0);
}

TEST_F(ShowCertificateTest, WarnsOfAConfigurationFromAnotherThread) {
    StartApplication<QApplication>();
    RemoveConfig();
    std::atomic<int> running(1);
    std::thread worker([&] {
        Init(/*silent=*/0);
        --running;
    });
    RunEventsUntilZero(running);
    worker.join();
    const QWidgetList windows = QApplication::topLevelWidgets();
    ASSERT_EQ(windows.size(), 1);
    EXPECT_TRUE(windows.front()->inherits("QMessageBox"));
    EXPECT_TRUE(windows.front()->isModal());
    EXPECT_EQ(LogRecorder::Take().size(), 1U);  // what was shown is not logged too
}

TEST_F(ShowCertificateTest, StaysLoadedUnderItsWindow) {
    StartApplication<QApplication>();
    // A copy, which nobody else keeps loaded.
    const TemporaryDir directory;
    const std::string copy = directory.File("copy.so");
    std::filesystem::copy_file(MOD_FOO_LIBRARY, copy);
    void* const library = ::dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr);
    const auto create =
        reinterpret_cast<CCertInfoDlg* (*)()>(::dlsym(library, "_Z17createCertInfoDlgv"));
    auto* const viewer = reinterpret_cast<QWidget*>(create());
    ASSERT_NE(viewer, nullptr);
    viewer->show();
    ::dlclose(library);
    QCoreApplication::processEvents();
    CloseViewers();
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const TemporaryDir settings;  // instead of the user's: the viewer keeps its size there
    qputenv("XDG_CONFIG_HOME", settings.Path().c_str());
    return RUN_ALL_TESTS();
}
