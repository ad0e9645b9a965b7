#pragma once

#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <vector>

// Writes elements for tests, octet by octet as X.690 has it; shares nothing with what is tested.

using Octets = std::vector<unsigned char>;

inline Octets Text(std::string_view text) {
    return {text.begin(), text.end()};
}

inline Octets Join(std::initializer_list<Octets> parts) {
    Octets all;
    for (const Octets& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

/// An element of the shortest definite length.
inline Octets Tlv(unsigned char tag, const Octets& content) {
    Octets out{tag};
    if (content.size() < 0x80) {
        out.push_back(static_cast<unsigned char>(content.size()));
    } else {
        Octets length;
        for (std::size_t rest = content.size(); rest != 0; rest >>= 8) {
            length.insert(length.begin(), static_cast<unsigned char>(rest & 0xFF));
        }
        out.push_back(static_cast<unsigned char>(0x80 | length.size()));
        out.insert(out.end(), length.begin(), length.end());
    }
    out.insert(out.end(), content.begin(), content.end());
    return out;
}

inline Octets Tlv(unsigned char tag, std::initializer_list<Octets> parts) {
    return Tlv(tag, Join(parts));
}

/// An element of indefinite length.
inline Octets Indefinite(unsigned char tag, std::initializer_list<Octets> parts) {
    return Join({{tag, 0x80}, Join(parts), {0x00, 0x00}});
}
