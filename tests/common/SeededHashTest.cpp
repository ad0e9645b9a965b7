#include "common/SeededHash.h"

#include <gtest/gtest.h>

#include <vector>

// The first values of SipHash-2-4 as its authors publish them, and of SipHash-1-3 as other
// implementations have them; no text, one octet, a word with and without its last octet.
TEST(SeededHashTest, IsSipHash) {
    const struct {
        std::size_t size;
        std::uint64_t two;
        std::uint64_t one;
    } cases[] = {
        {0, 0x726FDB47DD0E0E31, 0xABAC0158050FC4DC},  {1, 0x74F839C593DC67FD, 0xC9F49BF37D57CA93},
        {7, 0xAB0200F58B01D137, 0xD3927D989BB11140},  {8, 0x93F5F5799A932462, 0x369095118D299A8E},
        {15, 0xA129CA6149BE45E5, 0xD320D86D2A519956},
    };
    const ca::HashKey key = {0x0706050403020100, 0x0F0E0D0C0B0A0908};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.size);
        std::vector<std::byte> octets;
        while (octets.size() < c.size) {
            octets.push_back(static_cast<std::byte>(octets.size()));
        }
        EXPECT_EQ(ca::SipHash24(octets, key), c.two);
        EXPECT_EQ(ca::SipHash13(octets, key), c.one);
    }
}
