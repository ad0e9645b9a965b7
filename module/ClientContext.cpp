#include "module/ClientContext.h"

#include <ctime>
#include <utility>

std::uint32_t RealTimeMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const auto milliseconds = static_cast<std::uint64_t>(now.tv_sec) * 1000 +
                              static_cast<std::uint64_t>(now.tv_nsec) / 1000000;
    return static_cast<std::uint32_t>(milliseconds);
}

CClientContextArray::CClientContextArray(CCryptoModule* module, Clock clock)
    : m_module(module), m_lastSweep(clock()), m_clock(clock) {}

CClientContext* CClientContextArray::AcquireContext(CStdStr<wchar_t> id) {
    const std::uint32_t now = m_clock();
    if (now - m_lastSweep.load(std::memory_order_relaxed) > kSweepIntervalMs) {
        RemoveOld();
        m_lastSweep.store(now, std::memory_order_relaxed);
    }
    const std::lock_guard lock(m_mutex);
    CClientContext& context = FindOrCreate(std::move(id));
    context.lastUse = now;
    return &context;
}

ca::StoreAddresses CClientContextArray::CopyStores(std::wstring_view id) const {
    const std::lock_guard lock(m_mutex);
    const auto place = m_places.find(id);
    return place != m_places.end() ? m_contexts[place->second]->stores : ca::StoreAddresses();
}

void CClientContextArray::ReplaceStores(CStdStr<wchar_t> id, ca::StoreAddresses stores) {
    const std::lock_guard lock(m_mutex);
    FindOrCreate(std::move(id)).stores.swap(stores);
}

CClientContext& CClientContextArray::FindOrCreate(CStdStr<wchar_t> id) {
    const auto place = m_places.find(id);
    if (place != m_places.end()) {
        return *m_contexts[place->second];
    }
    auto context = std::make_unique<CClientContext>(std::move(id));
    context->lastUse = m_clock();
    CClientContext& created = *m_contexts.emplace_back(std::move(context));
    try {
        m_places.emplace(created.Id(), m_contexts.size() - 1);
    } catch (...) {
        m_contexts.pop_back();
        throw;
    }
    return created;
}

void CClientContextArray::RemoveOld() {
    const std::lock_guard lock(m_mutex);
    // Read under the lock: a last use that is later than this time would look like 49 days of
    // idleness.
    const std::uint32_t now = m_clock();
    for (auto& context : m_contexts) {
        if (context && now - context->lastUse > kMaxIdleMs) {
            m_places.erase(context->Id());
            context.reset();
        }
    }
    Compact();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): as AcquireContext() takes it
void CClientContextArray::Remove(CStdStr<wchar_t> id) {
    const std::lock_guard lock(m_mutex);
    const auto place = m_places.find(id);
    if (place == m_places.end()) {
        return;
    }
    const std::size_t index = place->second;
    m_places.erase(place);  // before the context, whose id is the key
    m_contexts[index].reset();
    if (m_contexts.size() > 2 * m_places.size()) {
        Compact();
    }
}

void CClientContextArray::Compact() {
    std::erase(m_contexts, nullptr);
    for (std::size_t i = 0; i < m_contexts.size(); ++i) {
        m_places.find(m_contexts[i]->Id())->second = i;
    }
}

void CClientContextArray::CleanUp() {
    const std::lock_guard lock(m_mutex);
    m_places.clear();
    m_contexts.clear();
}

std::size_t CClientContextArray::Count() const {
    const std::lock_guard lock(m_mutex);
    return m_places.size();
}
