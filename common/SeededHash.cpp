#include "common/SeededHash.h"

#include <bit>
#include <cstring>
#include <random>

namespace ca {
namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);

// SipHash: words are mixed into four, which begin with the key and constants that keep them apart.
class SipState {
  public:
    explicit SipState(const HashKey& key)
        : m_v{key[0] ^ 0x736F6D6570736575, key[1] ^ 0x646F72616E646F6D, key[0] ^ 0x6C7967656E657261,
              key[1] ^ 0x7465646279746573} {}

    void Add(std::uint64_t word, int rounds) {
        m_v[3] ^= word;
        Mix(rounds);
        m_v[0] ^= word;
    }
    std::uint64_t Finish(int rounds) {
        // 0xFF: no number of words gives the same state as the end does.
        m_v[2] ^= 0xFF;
        Mix(rounds);
        return m_v[0] ^ m_v[1] ^ m_v[2] ^ m_v[3];
    }

  private:
    void Mix(int rounds) {
        for (int i = 0; i < rounds; ++i) {
            Half(0, 1, 13, 32);
            Half(2, 3, 16, 0);
            Half(0, 3, 21, 0);
            Half(2, 1, 17, 32);
        }
    }
    void Half(int a, int b, int turnB, int turnA) {
        m_v[a] += m_v[b];
        m_v[b] = std::rotl(m_v[b], turnB) ^ m_v[a];
        m_v[a] = std::rotl(m_v[a], turnA);
    }

    std::uint64_t m_v[4];
};

// Words are read in the machine's order, which is the little-endian one of the definition here.
static_assert(std::endian::native == std::endian::little);

template <int kRounds, int kLastRounds>
std::uint64_t SipHash(std::span<const std::byte> octets, const HashKey& key) {
    SipState state(key);
    const std::uint64_t length = octets.size();
    std::uint64_t word = 0;
    for (; octets.size() >= kWord; octets = octets.subspan(kWord)) {
        std::memcpy(&word, octets.data(), kWord);
        state.Add(word, kRounds);
    }
    word = 0;
    if (!octets.empty()) {
        std::memcpy(&word, octets.data(), octets.size());
    }
    // The last word has the octets that are left, and the length in its highest octet.
    state.Add(word | length << 56, kRounds);
    return state.Finish(kLastRounds);
}

HashKey RandomKey() {
    std::random_device device;  // the system's generator
    HashKey key{};
    for (std::uint64_t& half : key) {
        half = std::uint64_t{device()} << 32 | device();
    }
    return key;
}

// Made when the library is loaded, so that no request pays for it or finds it failing.
const HashKey kProcessKey = RandomKey();

}  // namespace

std::uint64_t SipHash13(std::span<const std::byte> octets, const HashKey& key) noexcept {
    return SipHash<1, 3>(octets, key);
}

std::uint64_t SipHash24(std::span<const std::byte> octets, const HashKey& key) noexcept {
    return SipHash<2, 4>(octets, key);
}

std::size_t SeededHash::operator()(std::wstring_view text) const noexcept {
    // One round a word and three at the end: enough for tables, whose hashes nobody sees.
    return SipHash13(std::as_bytes(std::span(text)), kProcessKey);
}

}  // namespace ca
