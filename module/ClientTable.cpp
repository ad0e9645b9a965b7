#include "module/ClientTable.h"

#include "module/ClientContext.h"

#include <algorithm>
#include <utility>

namespace {

// Slots of a table; a power of two, since an index is cut off a hash.
constexpr std::size_t kFirstSlots = 16;

}  // namespace

// The slot of that context, or the free one that ends the search. There must be slots.
// Open addressing with linear probing: entries lie side by side, and none has a block of its own.
std::size_t CClientTable::SlotOf(const ClientKey& key) const noexcept {
    std::size_t index = Home(key.hash);
    while (m_slots[index].context &&
           (m_slots[index].hash != key.hash || m_slots[index].context->Id() != key.id)) {
        index = After(index);
    }
    return index;
}

std::size_t CClientTable::FreeSlot(std::size_t hash) const noexcept {
    std::size_t index = Home(hash);
    while (m_slots[index].context) {
        index = After(index);
    }
    return index;
}

const CClientTable::Pointer* CClientTable::Find(const ClientKey& key) const noexcept {
    if (m_slots.empty()) {
        return nullptr;
    }
    const Pointer& found = m_slots[SlotOf(key)].context;
    return found ? &found : nullptr;
}

void CClientTable::Add(const ClientKey& key, Pointer context) {
    // At most three quarters full: probes stay short.
    if ((m_count + 1) * 4 > m_slots.size() * 3) {
        Grow();
    }
    m_slots[FreeSlot(key.hash)] = {key.hash, std::move(context)};
    ++m_count;
}

void CClientTable::Grow() {
    std::vector<Slot> old(std::max(kFirstSlots, m_slots.size() * 2));
    old.swap(m_slots);
    for (Slot& slot : old) {
        if (slot.context) {
            m_slots[FreeSlot(slot.hash)] = std::move(slot);
        }
    }
}

CClientTable::Pointer CClientTable::Take(const ClientKey& key) noexcept {
    if (m_slots.empty()) {
        return nullptr;
    }
    std::size_t hole = SlotOf(key);
    Pointer taken = std::move(m_slots[hole].context);
    if (!taken) {
        return nullptr;
    }
    --m_count;
    // Those after it that were turned away from the hole, or from before it, move up: marks of what
    // was taken would fill a table of clients that come and go.
    for (std::size_t next = After(hole); m_slots[next].context; next = After(next)) {
        const std::size_t home = Home(m_slots[next].hash);
        if (Home(next - home) >= Home(next - hole)) {
            m_slots[hole] = std::move(m_slots[next]);
            hole = next;
        }
    }
    return taken;
}
