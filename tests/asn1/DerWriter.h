#pragma once

#include <cstddef>
#include <cstdlib>
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

/// An OBJECT IDENTIFIER of dotted text, "1.2.840.113549".
inline Octets Oid(const char* dotted) {
    Octets content;
    char* at = nullptr;
    unsigned long arc = std::strtoul(dotted, &at, 10) * 40;
    for (bool isSecond = true; *at == '.'; isSecond = false) {
        arc = (isSecond ? arc : 0) + std::strtoul(at + 1, &at, 10);
        Octets digits{static_cast<unsigned char>(arc & 0x7F)};
        for (arc >>= 7; arc != 0; arc >>= 7) {
            digits.insert(digits.begin(), static_cast<unsigned char>(0x80 | (arc & 0x7F)));
        }
        content.insert(content.end(), digits.begin(), digits.end());
    }
    return Tlv(0x06, content);
}

inline Octets Algorithm(const char* dotted, const Octets& params = {}) {
    return Tlv(0x30, {Oid(dotted), params});
}

/// A name of one attribute, the common name.
inline Octets Name(std::string_view commonName) {
    return Tlv(0x30, Tlv(0x31, Tlv(0x30, {Oid("2.5.4.3"), Tlv(0x0C, Text(commonName))})));
}

inline Octets Attribute(const char* dotted, const Octets& values) {
    return Tlv(0x30, {Oid(dotted), Tlv(0x31, values)});
}

inline Octets Extension(const char* dotted, const Octets& value) {
    return Tlv(0x30, {Oid(dotted), Tlv(0x04, value)});
}

inline const Octets kDerNull = {0x05, 0x00};
inline const Octets kRsaKeyAlgorithm = Algorithm("1.2.840.113549.1.1.1", kDerNull);
inline const Octets kSha256Algorithm = Algorithm("2.16.840.1.101.3.4.2.1");

/// An element of indefinite length.
inline Octets Indefinite(unsigned char tag, std::initializer_list<Octets> parts) {
    return Join({{tag, 0x80}, Join(parts), {0x00, 0x00}});
}
