#pragma once

#include "common/ForkMutex.h"
#include "providers/openssl/Owners.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace ca {

/// Objects of OpenSSL that were parsed lately, by what they were parsed from: parsing one takes longer
/// than most signatures. They are shared and not changed. Safe from any thread.
template <class Object, auto hold, auto free>
class CRecentObjects {
  public:
    using Ptr = Owned<Object, free>;

    /// \param most  objects that are kept; those that were not used for the longest time go.
    explicit CRecentObjects(std::size_t most) : m_most(most) {}
    CRecentObjects(const CRecentObjects&) = delete;
    CRecentObjects& operator=(const CRecentObjects&) = delete;
    ~CRecentObjects() = default;

    /// Another hold on the object; null when it is not kept.
    Ptr Find(const std::string& source) {
        const std::lock_guard lock(m_mutex);
        const auto found = m_entries.find(source);
        if (found == m_entries.end()) {
            return nullptr;
        }
        found->second.used = ++m_uses;
        return Held(found->second.object.get());
    }

    void Add(std::string source, Object* object) {
        const std::lock_guard lock(m_mutex);
        if (m_entries.size() >= m_most) {
            m_entries.erase(std::ranges::min_element(
                m_entries, {}, [](const auto& each) { return each.second.used; }));
        }
        m_entries.insert_or_assign(std::move(source), Entry{Held(object), ++m_uses});
    }

    void Clear() {
        const std::lock_guard lock(m_mutex);
        m_entries.clear();
    }

  private:
    struct Entry {
        Ptr object;
        std::uint64_t used;
    };

    static Ptr Held(Object* object) {
        hold(object);
        return Ptr(object);
    }

    const std::size_t m_most;
    CForkMutex m_mutex;  // guards what follows
    std::map<std::string, Entry> m_entries;
    std::uint64_t m_uses = 0;
};

using RecentCertificates = CRecentObjects<X509, &X509_up_ref, &X509_free>;
using RecentKeys = CRecentObjects<EVP_PKEY, &EVP_PKEY_up_ref, &EVP_PKEY_free>;

}  // namespace ca
