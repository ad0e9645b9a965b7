#include "module/ClientContext.h"

#include <ctime>
#include <limits>
#include <new>
#include <string>
#include <system_error>
#include <utility>

namespace {

// Octets that a block takes on the heap of the C library.
constexpr std::size_t HeapSize(std::size_t octets) {
    // A pointer's size in front of the block, all in units of 16: that is how glibc has it.
    return (octets + sizeof(void*) + 15) / 16 * 16;
}

constexpr std::size_t kShared = 2 * sizeof(void*);  // counts and class of a shared object

std::size_t TextMemory(std::size_t characters) {
    static const std::size_t inner = std::wstring().capacity();
    return characters > inner ? HeapSize((characters + 1) * sizeof(wchar_t)) : 0;
}

std::size_t StateMemory(const ca::StoreAddresses& stores) {
    if (stores.empty()) {
        return 0;  // one list for all
    }
    std::size_t memory =
        HeapSize(sizeof(stores) + kShared) + HeapSize(stores.capacity() * sizeof(ca::StoreAddress));
    // Capacities, not sizes: what a text has reserved is taken, too.
    for (const ca::StoreAddress& store : stores) {
        memory += TextMemory(store.address.capacity()) + TextMemory(store.name.capacity());
    }
    return memory;
}

using Encoding = std::vector<unsigned char>;

std::size_t StateMemory(const std::vector<Encoding>& certificates) {
    if (certificates.empty()) {
        return 0;  // likewise
    }
    std::size_t memory = HeapSize(sizeof(std::vector<Encoding>) + kShared) +
                         HeapSize(certificates.capacity() * sizeof(Encoding));
    for (const Encoding& certificate : certificates) {
        memory += HeapSize(certificate.capacity());
    }
    return memory;
}

std::size_t StateMemory(const CClientContext& context) {
    return StateMemory(*context.stores) + StateMemory(*context.certificates);
}

// Made as the library loads: at its first use it would be made under a lock.
const StoresSnapshot noStores = std::make_shared<const ca::StoreAddresses>();
const CertificatesSnapshot noCertificates =
    std::make_shared<const std::vector<std::vector<unsigned char>>>();

// Of two time stamps less than 24 days apart.
bool IsNotBefore(std::uint32_t later, std::uint32_t earlier) {
    return later - earlier <= std::uint32_t{std::numeric_limits<std::int32_t>::max()};
}

}  // namespace

std::uint32_t RealTimeMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const auto milliseconds = static_cast<std::uint64_t>(now.tv_sec) * 1000 +
                              static_cast<std::uint64_t>(now.tv_nsec) / 1000000;
    return static_cast<std::uint32_t>(milliseconds);
}

CClientContext::CClientContext(CStdStr<wchar_t> id)
    : stores(noStores), certificates(noCertificates), m_id(std::move(id)) {}

CClientContextArray::CUse::~CUse() {
    if (m_context) {
        m_owner->EndUse(std::move(m_context));
    }
}

CClientContextArray::CClientContextArray(CCryptoModule* module, Clock clock)
    : m_module(module), m_clock(clock), m_lastSweep(clock()) {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is fixed
CClientContext* CClientContextArray::AcquireContext(CStdStr<wchar_t> id) {
    return Acquire(id).get();
}

CClientContextArray::CUse CClientContextArray::Use(std::wstring_view id) {
    return {*this, Acquire(id)};
}

std::shared_ptr<CClientContext> CClientContextArray::Acquire(std::wstring_view id) {
    const std::uint32_t now = m_clock();
    // Swept on the way of a request, so that no thread of its own is needed.
    if (now - m_lastSweep.load(std::memory_order_relaxed) > kSweepIntervalMs) {
        RemoveOld();
        m_lastSweep.store(now, std::memory_order_relaxed);
    }
    const ClientKey key(id);
    // Declared before the lock, so that what is dropped is destroyed after it is free.
    Dropped dropped;
    const std::lock_guard lock(m_mutex);
    std::shared_ptr<CClientContext> context = FindOrCreate(key);  // in use from here on
    MarkUsed(*context);
    DropForMemory(dropped);
    return context;
}

void CClientContextArray::EndUse(std::shared_ptr<CClientContext> context) noexcept {
    context.reset();
    if (!m_isOver.load(std::memory_order_relaxed)) {
        return;  // the usual case takes no lock
    }
    try {
        Dropped dropped;
        const std::lock_guard lock(m_mutex);
        DropForMemory(dropped);
    } catch (const std::system_error&) {
        // Deliberate: the next request of any client drops what is too much, or reports the lock.
    }
}

StoresSnapshot CClientContextArray::CurrentStores(std::wstring_view id) const {
    const ClientKey key(id);
    const std::lock_guard lock(m_mutex);
    const auto* found = m_table.Find(key);
    return found != nullptr ? (*found)->stores : noStores;
}

bool CClientContextArray::ReplaceStores(std::wstring_view id, ca::StoreAddresses stores) {
    return Replace(
        id, &CClientContext::stores,
        stores.empty() ? noStores : std::make_shared<const ca::StoreAddresses>(std::move(stores)));
}

CertificatesSnapshot CClientContextArray::TempCertificates(std::wstring_view id) const {
    const ClientKey key(id);
    const std::lock_guard lock(m_mutex);
    const auto* found = m_table.Find(key);
    // A client without a context is one without certificates: asking makes none.
    return found != nullptr ? (*found)->certificates : noCertificates;
}

bool CClientContextArray::ReplaceTempCertificates(
    std::wstring_view id, std::vector<std::vector<unsigned char>> certificates) {
    return Replace(id, &CClientContext::certificates,
                   certificates.empty()
                       ? noCertificates
                       : std::make_shared<const std::vector<std::vector<unsigned char>>>(
                             std::move(certificates)));
}

template <class Snapshot>
bool CClientContextArray::Replace(std::wstring_view id, Snapshot CClientContext::*member,
                                  Snapshot snapshot) {
    const ClientKey key(id);
    Dropped dropped;
    const std::lock_guard lock(m_mutex);
    std::size_t memory = MemoryOf(id) + StateMemory(*snapshot);
    if (const auto* found = m_table.Find(key)) {
        // What the client would keep afterwards: the old value of this member goes.
        memory += StateMemory(**found) - StateMemory(*((**found).*member));
    }
    if (memory > m_maxMemory) {
        return false;
    }
    CClientContext& context = *FindOrCreate(key);
    (context.*member).swap(snapshot);
    // As a difference: unsigned arithmetic brings it back where the client keeps less.
    m_memory += memory - context.m_memory;
    context.m_memory = memory;
    DropForMemory(dropped);
    return true;
}

// Octets that a context without stores takes, its place in the table included.
std::size_t CClientContextArray::MemoryOf(std::wstring_view id) {
    return HeapSize(sizeof(CClientContext) + kShared) + CClientTable::EntrySize() +
           TextMemory(id.size());
}

const std::shared_ptr<CClientContext>& CClientContextArray::FindOrCreate(const ClientKey& key) {
    if (const auto* found = m_table.Find(key)) {
        return *found;
    }
    auto context = std::make_shared<CClientContext>(std::wstring(key.id));
    context->m_hash = key.hash;
    context->m_memory = MemoryOf(key.id);
    context->lastUse = m_clock();
    m_table.Add(key, context);
    m_memory += context->m_memory;
    Append(*context);
    return *m_table.Find(key);
}

void CClientContextArray::Append(CClientContext& context) noexcept {
    // A clock that was put back breaks the order, and sweeps go through the whole list until it is
    // right again.
    m_isInOrder =
        m_isInOrder && (m_last == nullptr || IsNotBefore(context.lastUse, m_last->lastUse));
    context.m_previous = m_last;
    context.m_next = nullptr;
    (m_last != nullptr ? m_last->m_next : m_first) = &context;
    m_last = &context;
}

void CClientContextArray::Unlink(CClientContext& context) noexcept {
    (context.m_previous != nullptr ? context.m_previous->m_next : m_first) = context.m_next;
    (context.m_next != nullptr ? context.m_next->m_previous : m_last) = context.m_previous;
}

void CClientContextArray::MarkUsed(CClientContext& context) {
    // Read under the lock: a stamp that is later than the next one would look like a clock that was
    // put back.
    context.lastUse = m_clock();
    Unlink(context);
    Append(context);
}

void CClientContextArray::Drop(CClientContext& context, Dropped& dropped) noexcept {
    Unlink(context);
    m_memory -= context.m_memory;
    std::shared_ptr<CClientContext> taken = m_table.Take({context.Id(), context.m_hash});
    try {
        dropped.push_back(std::move(taken));
    } catch (const std::bad_alloc&) {
        // Deliberate: then it is destroyed here, under the lock.
    }
}

void CClientContextArray::DropOld(Dropped& dropped) {
    // Read under the lock: a last use that is later than this time would look like 49 days of
    // idleness.
    const std::uint32_t now = m_clock();
    bool isInOrder = true;
    for (CClientContext* next = m_first; next != nullptr;) {
        CClientContext& context = *std::exchange(next, next->m_next);
        if (now - context.lastUse > kMaxIdleMs) {
            Drop(context, dropped);
            continue;
        }
        if (m_isInOrder) {
            return;  // all that follow were used later
        }
        const CClientContext* const previous = context.m_previous;
        isInOrder =
            isInOrder && (previous == nullptr || IsNotBefore(context.lastUse, previous->lastUse));
    }
    m_isInOrder = isInOrder;
}

// The longest idle first: the list has them in front.
void CClientContextArray::DropForMemory(Dropped& dropped) noexcept {
    for (CClientContext* next = m_first; m_memory > m_maxMemory && next != nullptr;) {
        CClientContext& context = *std::exchange(next, next->m_next);
        // Only the lock's holder takes a further hold, so that none can come in between.
        if (m_table.Find({context.Id(), context.m_hash})->use_count() == 1) {
            Drop(context, dropped);
        }
    }
    m_isOver.store(m_memory > m_maxMemory, std::memory_order_relaxed);
}

void CClientContextArray::SetMaxMemory(std::size_t octets) {
    Dropped dropped;
    const std::lock_guard lock(m_mutex);
    m_maxMemory = octets;
    DropForMemory(dropped);
}

std::size_t CClientContextArray::Memory() const {
    const std::lock_guard lock(m_mutex);
    return m_memory;
}

void CClientContextArray::RemoveOld() {
    Dropped dropped;
    const std::lock_guard lock(m_mutex);
    DropOld(dropped);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is fixed
void CClientContextArray::Remove(CStdStr<wchar_t> id) {
    const ClientKey key(id);
    Dropped dropped;
    const std::lock_guard lock(m_mutex);
    if (const auto* found = m_table.Find(key)) {
        Drop(**found, dropped);
    }
}

void CClientContextArray::CleanUp() {
    // Destroyed after the lock is free.
    CClientTable dropped;
    const std::lock_guard lock(m_mutex);
    std::swap(m_table, dropped);
    m_first = nullptr;
    m_last = nullptr;
    m_memory = 0;
    m_isInOrder = true;
}

std::size_t CClientContextArray::Count() const {
    const std::lock_guard lock(m_mutex);
    return m_table.Count();
}
