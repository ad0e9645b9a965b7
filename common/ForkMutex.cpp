#include "common/ForkMutex.h"

#include <new>
#include <pthread.h>

namespace ca {

// All of this library, and what a fork does with them. The handlers are registered with the first
// one; the C library forgets them when this library is unloaded. None is made or destroyed while
// another one is held: a fork holds the list and waits for that one.
class CForkMutexes {
  public:
    static void Add(CForkMutex& mutex) {
        const std::lock_guard lock(s_mutex);
        if (!s_isRegistered) {
            if (::pthread_atfork(&Prepare, &InParent, &InChild) != 0) {
                throw std::bad_alloc();
            }
            s_isRegistered = true;
        }
        mutex.m_next = s_first;
        if (s_first != nullptr) {
            s_first->m_previous = &mutex;
        }
        s_first = &mutex;
    }

    static void Remove(CForkMutex& mutex) {
        const std::lock_guard lock(s_mutex);
        (mutex.m_previous != nullptr ? mutex.m_previous->m_next : s_first) = mutex.m_next;
        if (mutex.m_next != nullptr) {
            mutex.m_next->m_previous = mutex.m_previous;
        }
    }

  private:
    // As std::lock() does it: waits for one at a time while it holds none, since a thread may hold
    // one and wait for another.
    static void Prepare() {
        s_mutex.lock();
        for (CForkMutex* waited = s_first; waited != nullptr;) {
            waited->lock();
            waited = TakeOthers(*waited);
        }
    }

    // Null when all are taken; else the one that is not to be had, and none is held.
    static CForkMutex* TakeOthers(CForkMutex& taken) {
        for (CForkMutex* each = s_first; each != nullptr; each = each->m_next) {
            if (each == &taken || each->try_lock()) {
                continue;
            }
            for (CForkMutex* held = s_first; held != each; held = held->m_next) {
                if (held != &taken) {
                    held->unlock();
                }
            }
            taken.unlock();
            return each;
        }
        return nullptr;
    }

    static void Release() {
        for (CForkMutex* each = s_first; each != nullptr; each = each->m_next) {
            each->unlock();
        }
        s_mutex.unlock();
    }

    static void InParent() { Release(); }

    static void InChild() {
        for (const CForkMutex* each = s_first; each != nullptr; each = each->m_next) {
            if (each->m_inChild != nullptr) {
                each->m_inChild();
            }
        }
        Release();
    }

    static constinit inline std::mutex s_mutex;  // guards the list
    static constinit inline CForkMutex* s_first = nullptr;
    static constinit inline bool s_isRegistered = false;
};

CForkMutex::CForkMutex(ChildStep inChild) : m_inChild(inChild) {
    CForkMutexes::Add(*this);
}

CForkMutex::~CForkMutex() {
    CForkMutexes::Remove(*this);
}

}  // namespace ca
