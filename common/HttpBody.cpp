#include "common/HttpBody.h"

#include <algorithm>
#include <cstring>

namespace ca {
namespace {

constexpr std::size_t kFirstCapacity = 0x4000;
constexpr std::size_t kMaxHint = 64U << 20;  // octets set aside on the word of a Content-Length

}  // namespace

bool HttpBody::Append(const char* data, std::size_t size, curl_off_t announced) {
    // Subtracted, not added: the sum could wrap.
    if (size > m_limit - m_size) {
        return false;
    }
    if (m_keep) {
        Reserve(m_size + size, announced);
        std::memcpy(m_block.Get() + m_size, data, size);
    }
    m_size += size;
    return true;
}

void HttpBody::Reserve(std::size_t needed, curl_off_t announced) {
    if (needed <= m_capacity) {
        return;
    }
    // Doubled, so that all copies together cost no more than the body once again.
    std::size_t capacity = std::max({needed, m_capacity * 2, kFirstCapacity});
    if (m_capacity == 0 && announced > 0) {
        const auto hint = static_cast<std::size_t>(announced);
        capacity = std::max(needed, std::min(hint, kMaxHint));
    }
    // Never more than may be kept, but for what is there already.
    capacity = std::min(capacity, std::max(m_limit, needed));
    m_block.Resize(capacity);
    m_capacity = capacity;
}

}  // namespace ca
