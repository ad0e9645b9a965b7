#pragma once

#include "common/SeededHash.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

class CClientContext;

/// A client's id with its hash, which for a long id is best made before a lock is taken.
struct ClientKey {
    explicit ClientKey(std::wstring_view text) : id(text), hash(ca::SeededHash()(text)) {}
    ClientKey(std::wstring_view text, std::size_t known) : id(text), hash(known) {}

    std::wstring_view id;
    std::size_t hash;
};

/// Finds contexts by their ids and owns them: a hash table in one block, with linear probing.
///
/// Among a million clients the time of a request is that of the memory it reads. The hashes stand
/// in the table itself: a look-up reads one line of it and the one context it is about, where a
/// std::unordered_map reads two nodes before that. Growing, too, reads the table alone.
class CClientTable {
  public:
    using Pointer = std::shared_ptr<CClientContext>;

    /// Null when there is none. Until the next change.
    const Pointer* Find(const ClientKey& key) const noexcept;
    /// Adds a context whose id is not there yet. Throws std::bad_alloc, nothing being added then.
    void Add(const ClientKey& key, Pointer context);
    /// Removes a context and hands it over; null when there is none.
    Pointer Take(const ClientKey& key) noexcept;

    std::size_t Count() const noexcept { return m_count; }
    /// Octets that each context takes here.
    static constexpr std::size_t EntrySize() { return 2 * sizeof(Slot); }

  private:
    struct Slot {
        std::size_t hash = 0;
        Pointer context;  // null: free
    };

    std::size_t Home(std::size_t hash) const noexcept { return hash & (m_slots.size() - 1); }
    std::size_t After(std::size_t index) const noexcept { return Home(index + 1); }
    std::size_t SlotOf(const ClientKey& key) const noexcept;
    std::size_t FreeSlot(std::size_t hash) const noexcept;
    void Grow();

    std::vector<Slot> m_slots;  // a power of two of them, a quarter at least free; or none
    std::size_t m_count = 0;
};
