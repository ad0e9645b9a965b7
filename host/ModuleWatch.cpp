#include "host/ModuleWatch.h"

#include "host/HostError.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

using Nanoseconds = std::chrono::nanoseconds;

constexpr int kCrashes[] = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSYS, SIGTRAP};

// Values of Slot::start beside points in time, which are positive.
constexpr std::int64_t kIdle = 0;
constexpr std::int64_t kTaken = -1;  // by the one that ends the process: the name stays as it is
constexpr std::int64_t kUntimed = std::numeric_limits<std::int64_t>::max();

// What one thread has the module do. `name` is set before `start`.
// A cache line each, since every request writes to its own.
struct alignas(64) Slot {
    std::atomic<std::int64_t> start{kIdle};
    std::string_view name;
};

// For more threads than any command starts.
// An array of its own: handlers may not ask for memory, nor take a lock.
std::array<Slot, 512> slots;
std::atomic<std::size_t> slotCount{0};
constinit thread_local Slot* ownSlot = nullptr;

std::string* moduleName = nullptr;  // set once, never freed: the process may end at any time

std::int64_t Now() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::max<std::int64_t>(std::chrono::duration_cast<Nanoseconds>(now).count(), 1);
}

// The stack that handlers run on. Kept where there is one already, a sanitizer's for example.
class HandlerStack {
  public:
    HandlerStack() {
        stack_t old{};
        if (::sigaltstack(nullptr, &old) == 0 && (old.ss_flags & SS_DISABLE) != 0) {
            m_octets = std::make_unique_for_overwrite<char[]>(kSize);
            const stack_t own{.ss_sp = m_octets.get(), .ss_flags = 0, .ss_size = kSize};
            ::sigaltstack(&own, nullptr);
        }
    }
    HandlerStack(const HandlerStack&) = delete;
    HandlerStack& operator=(const HandlerStack&) = delete;
    ~HandlerStack() {
        if (m_octets != nullptr) {
            const stack_t none{.ss_sp = nullptr, .ss_flags = SS_DISABLE, .ss_size = 0};
            ::sigaltstack(&none, nullptr);
        }
    }

  private:
    static constexpr std::size_t kSize = std::size_t{1} << 16U;
    std::unique_ptr<char[]> m_octets;
};

// This thread's slot; null when there are none left.
Slot* OwnSlot() {
    if (ownSlot == nullptr) {
        thread_local const HandlerStack stack;
        const std::size_t number = slotCount.fetch_add(1);
        ownSlot = number < slots.size() ? &slots[number] : nullptr;
    }
    return ownSlot;
}

// A line of text put together without memory of its own, for handlers.
class Line {
  public:
    Line& operator<<(std::string_view text) {
        const std::size_t count = std::min(text.size(), m_text.size() - 1 - m_length);
        std::memcpy(m_text.data() + m_length, text.data(), count);
        m_length += count;
        return *this;
    }
    void Write() {
        m_text[m_length++] = '\n';
        [[maybe_unused]] const auto ignored = ::write(STDERR_FILENO, m_text.data(), m_length);
    }

  private:
    std::array<char, 8192> m_text;
    std::size_t m_length = 0;
};

// Past what _exit() is replaced by in a sanitized build: that is not for signal handlers.
[[noreturn]] void EndProcess() {
    for (;;) {
        ::syscall(SYS_exit_group, host::kExitModuleFailed);
    }
}

// One thread ends the process; others that come here wait for that.
void BeTheOne() {
    static std::atomic_flag isTaken = ATOMIC_FLAG_INIT;
    if (isTaken.test_and_set()) {
        for (;;) {
            ::pause();
        }
    }
}

bool IsBusy(const Slot* slot) {
    return slot != nullptr && slot->start.load(std::memory_order_acquire) != kIdle;
}

// Keeps a task from ending, so that its name can be read from another thread.
bool Take(Slot& slot) {
    std::int64_t start = slot.start.load(std::memory_order_acquire);
    return start > kIdle && slot.start.compare_exchange_strong(start, kTaken);
}

// Names this thread's task or, in a thread of the module's own, all that are under way.
// Returns false in a thread of this program that does its own work.
bool NameTasks(Line& line) {
    if (IsBusy(ownSlot)) {
        line << ": " << ownSlot->name;
        return true;
    }
    if (ownSlot != nullptr) {
        return false;
    }
    line << " in a thread of its own";
    const char* between = ", beside: ";
    for (Slot& slot : slots) {
        if (Take(slot)) {
            line << between << slot.name;
            between = "; ";
        }
    }
    return true;
}

extern "C" void OnCrash(int number) {
    BeTheOne();
    const char* const name = ::sigabbrev_np(number);
    const char* const meaning = ::sigdescr_np(number);
    Line line;
    line << "cmhost: the module " << *moduleName
         << (number == SIGABRT ? " stopped the process" : " crashed") << " (SIG"
         << (name != nullptr ? name : "?") << ", " << (meaning != nullptr ? meaning : "?") << ")";
    if (!NameTasks(line)) {
        std::signal(number, SIG_DFL);  // not the module's doing
        std::raise(number);
        return;
    }
    // The interface has such a module stop the process; it looks like a crash to whoever does not
    // know.
    if (number == SIGABRT) {
        line << "; a request key of the wrong JSON type may do that (--log shows which)";
    }
    line.Write();
    EndProcess();
}

void OnExit() {
    if (IsBusy(ownSlot)) {
        BeTheOne();
        Line line;
        line << "cmhost: the module " << *moduleName << " ended the process: " << ownSlot->name;
        line.Write();
        EndProcess();
    }
}

void InstallHandlers() {
    struct sigaction action {};
    action.sa_handler = &OnCrash;
    action.sa_flags = SA_ONSTACK;
    ::sigemptyset(&action.sa_mask);
    for (const int number : kCrashes) {
        ::sigaction(number, &action, nullptr);
    }
    // Both ways in which a module could end the process without a signal.
    std::atexit(&OnExit);
    std::at_quick_exit(&OnExit);
}

// Ends the process when a task has lasted too long; else returns when to look again.
std::int64_t Check(std::int64_t now, Nanoseconds timeout, const std::string& limit) {
    std::int64_t next = now + timeout.count();
    for (Slot& slot : slots) {
        std::int64_t start = slot.start.load(std::memory_order_acquire);
        if (start <= kIdle || start == kUntimed) {
            continue;
        }
        if (now - start < timeout.count()) {
            next = std::min(next, start + timeout.count());
        } else if (slot.start.compare_exchange_strong(start, kTaken)) {
            BeTheOne();
            Line line;
            line << "cmhost: the module " << *moduleName << " did not answer within " << limit
                 << ": " << slot.name;
            line.Write();
            EndProcess();
        }
    }
    return next;
}

}  // namespace

namespace host {

CModuleWatch::CModuleWatch(const std::string& module, std::chrono::milliseconds timeout) {
    moduleName = new std::string(module);
    InstallHandlers();
    if (timeout.count() > 0) {
        m_thread =
            std::jthread([this, timeout](const std::stop_token& stop) { Watch(stop, timeout); });
    }
}

void CModuleWatch::Watch(const std::stop_token& stop, Nanoseconds timeout) {
    const double seconds = std::chrono::duration<double>(timeout).count();
    std::array<char, 32> limit{};
    std::snprintf(limit.data(), limit.size(), "%g s", seconds);
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested()) {
        const std::int64_t next = Check(Now(), timeout, limit.data());
        const std::chrono::steady_clock::time_point time{
            std::chrono::duration_cast<std::chrono::steady_clock::duration>(Nanoseconds(next))};
        m_stopped.wait_until(lock, stop, time, [] { return false; });
    }
}

CModuleTask::CModuleTask(std::string_view name, Limit limit)
    : m_start(limit == Limit::kNone ? kUntimed : Now()) {
    if (Slot* const slot = OwnSlot()) {
        slot->name = name;
        slot->start.store(m_start, std::memory_order_release);
    }
}

CModuleTask::~CModuleTask() {
    if (Slot* const slot = OwnSlot();
        slot != nullptr && !slot->start.compare_exchange_strong(m_start, kIdle)) {
        for (;;) {
            ::pause();  // the process is ending, with this task's name on its lips
        }
    }
}

}  // namespace host
