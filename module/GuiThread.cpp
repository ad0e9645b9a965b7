#include "module/GuiThread.h"

#include "common/CancelShield.h"
#include "common/ErrorCodes.h"
#include "common/ForkMutex.h"

#include <QApplication>
#include <QPointer>
#include <QThread>
#include <QWidget>

#include <condition_variable>
#include <dlfcn.h>
#include <memory>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace {

using std::chrono::milliseconds;

void LeaveApplicationToParent() noexcept;

// What every call and the application's end agree on.
struct GuiState {
    // Guards what follows, and the application's life while it is held.
    ca::CForkMutex mutex{&LeaveApplicationToParent};
    std::condition_variable changed;
    bool isEnding = false;  // of the application: from the start of its destruction to the next one
};

// Each caller holds the state, so that it outlives whoever still waits when the process ends.
const std::shared_ptr<GuiState> guiState = std::make_shared<GuiState>();

std::shared_ptr<GuiState> State() {
    return guiState;
}

// In a child that another thread than the application's has forked, nobody runs the event loop: a
// window would be waited for in vain. Who waited for the parent's is not there either.
void LeaveApplicationToParent() noexcept {
    if (guiState == nullptr) {  // the library is being loaded
        return;
    }
    const QCoreApplication* const application = QCoreApplication::instance();
    if (application != nullptr && QThread::currentThread() != application->thread()) {
        guiState->isEnding = true;
    }
    // Its waiters are threads that the child does not have; a destructor would wait for them.
    ::new (static_cast<void*>(&guiState->changed)) std::condition_variable;
}

// One task on its way. It is claimed once, by the GUI thread or by the caller who gives up.
class CGuiCall {
  public:
    explicit CGuiCall(ca::GuiTask task) : m_state(State()), m_task(std::move(task)) {}

    // In the GUI thread, from the event loop: nothing may leave but the end of that thread.
    void Run() {
        if (!Advance(Stage::kQueued, Stage::kRunning)) {
            return;
        }
        const ca::CCancelShield shield;  // Qt does not clean up after half a window
        const CFinish finish(*this);
        try {
            m_code = m_task();
        } catch (...) {
            ca::LetThreadEnd();
        }
    }

    std::uint32_t Wait(milliseconds wait) {
        std::unique_lock lock(m_state->mutex.Native());
        const auto isTaken = [this] { return m_stage != Stage::kQueued || m_state->isEnding; };
        try {
            m_state->changed.wait_for(lock, wait, isTaken);
        } catch (...) {  // this thread is cancelled
            GiveUp();
            throw;
        }
        GiveUp();
        // Once begun it is given as long again: its window is nearly there.
        m_state->changed.wait_for(lock, wait, [this] { return m_stage != Stage::kRunning; });
        return m_stage == Stage::kDone ? m_code : ca::kErrServiceMode;
    }

  private:
    enum class Stage : std::uint8_t { kQueued, kRunning, kDone, kAbandoned };

    // Whoever waits goes on, however the task ended.
    struct CFinish {
        explicit CFinish(CGuiCall& finished) : call(finished) {}
        CFinish(const CFinish&) = delete;
        CFinish& operator=(const CFinish&) = delete;
        ~CFinish() { call.Advance(Stage::kRunning, Stage::kDone); }
        CGuiCall& call;
    };

    // Nobody wants a task any more that has not begun. The mutex is held.
    void GiveUp() {
        if (m_stage == Stage::kQueued) {
            m_stage = Stage::kAbandoned;
        }
    }

    bool Advance(Stage from, Stage to) {
        {
            const std::lock_guard lock(m_state->mutex);
            if (m_stage != from) {
                return false;
            }
            m_stage = to;
        }
        m_state->changed.notify_all();
        return true;
    }

    const std::shared_ptr<GuiState> m_state;
    const ca::GuiTask m_task;
    Stage m_stage = Stage::kQueued;            // guarded by the state's mutex
    std::uint32_t m_code = ca::kErrExecution;  // written before kDone, read after it
};

// What ShowOwnWindow() has shown; the GUI thread's alone.
std::vector<QPointer<QWidget>> ownWindows;

// Runs at the start of the application's destruction, which waits here for a call being posted.
void OnApplicationEnd() {
    const std::shared_ptr<GuiState> state = State();
    {
        const std::lock_guard lock(state->mutex);
        state->isEnding = true;
    }
    state->changed.notify_all();
    for (const QPointer<QWidget>& window : std::exchange(ownWindows, {})) {
        delete window.data();  // null when it was closed
    }
}

// Runs for the application that is there, and for each that is created later.
void OnApplicationStart() {
    const std::shared_ptr<GuiState> state = State();
    {
        const std::lock_guard lock(state->mutex);
        state->isEnding = false;
    }
    qAddPostRoutine(&OnApplicationEnd);  // Qt forgets it once it has run
}

// The application, with the state's mutex held: it cannot go away meanwhile.
QApplication* WidgetApplication(const GuiState& state) {
    if (state.isEnding || QCoreApplication::closingDown()) {
        return nullptr;
    }
    return qobject_cast<QApplication*>(QCoreApplication::instance());
}

// Whether the call is in the event queue now.
bool Post(const std::shared_ptr<CGuiCall>& call) {
    const ca::CCancelShield shield;  // waking the event loop holds its locks
    const std::shared_ptr<GuiState> state = State();
    const std::lock_guard lock(state->mutex);
    QApplication* const application = WidgetApplication(*state);
    return application != nullptr &&
           QMetaObject::invokeMethod(
               application, [call] { call->Run(); }, Qt::QueuedConnection);
}

}  // namespace

namespace ca {

bool HasWidgetApplication() {
    const std::shared_ptr<GuiState> state = State();
    const std::lock_guard lock(state->mutex);
    return WidgetApplication(*state) != nullptr;
}

bool CanShowWidgets() {
    const std::shared_ptr<GuiState> state = State();
    const std::lock_guard lock(state->mutex);
    const QApplication* const application = WidgetApplication(*state);
    return application != nullptr && QThread::currentThread() == application->thread();
}

std::uint32_t RunInGuiThread(GuiTask task, milliseconds wait) {
    WatchApplication();
    const auto call = std::make_shared<CGuiCall>(std::move(task));
    if (CanShowWidgets()) {
        call->Run();
        // Between the question above and this the application may have ended: Post() asks again
        // under the lock.
    } else if (!Post(call)) {
        return kErrServiceMode;
    }
    return call->Wait(wait);
}

bool HasRoomForOwnWindow() {
    std::erase_if(ownWindows, [](const QPointer<QWidget>& each) { return each.isNull(); });
    return ownWindows.size() < kMaxOwnWindows;
}

bool ShowOwnWindow(std::unique_ptr<QWidget> window) {
    if (!HasRoomForOwnWindow()) {
        return false;
    }
    ownWindows.emplace_back(window.get());
    window->setAttribute(Qt::WA_QuitOnClose, false);
    window->setAttribute(Qt::WA_DeleteOnClose);
    QWidget* const shown = window.release();
    shown->show();
    shown->raise();
    shown->activateWindow();
    return true;
}

void WatchApplication() {
    static std::once_flag once;
    std::call_once(once, [] {
        KeepLibraryLoaded();  // Qt keeps the function's address
        qAddPreRoutine(&OnApplicationStart);
    });
}

void KeepLibraryLoaded() noexcept {
    Dl_info self{};
    if (::dladdr(reinterpret_cast<const void*>(&KeepLibraryLoaded), &self) != 0) {
        // The handle is never closed. Null in a program that has this code itself.
        ::dlopen(self.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    }
}

}  // namespace ca
