#include "bench/Asn1Inputs.h"

#include "common/Encode.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace {

void Append(Octets& to, const Octets& more) {
    to.insert(to.end(), more.begin(), more.end());
}

Octets Text(unsigned char tag, const std::string& text) {
    return Element(tag, {text.begin(), text.end()});
}

Octets ReadPem(const std::filesystem::path& file) {
    std::ifstream stream(file);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const std::string begin = "-----BEGIN CERTIFICATE-----";
    const std::size_t at = text.find(begin);
    if (at == std::string::npos) {
        return {};
    }
    const std::string body = text.substr(at + begin.size());
    Octets der(body.size());
    unsigned length = 0;
    base64_decode(body.data(), static_cast<unsigned>(body.size()), der.data(), length);
    der.resize(length);
    return der;
}

Octets Name() {
    const Octets common = Element(0x06, {0x55, 0x04, 0x03});
    Octets attribute = common;
    Append(attribute, Text(0x0C, "Benchmark Issuing Authority"));
    return Element(0x30, Element(0x31, Element(0x30, attribute)));
}

Octets Algorithm() {
    Octets algorithm = Element(0x06, {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x01, 0x0B});
    Append(algorithm, {0x05, 0x00});
    return Element(0x30, algorithm);
}

}  // namespace

Octets Element(unsigned char tag, const Octets& content) {
    Octets out{tag};
    if (content.size() < 0x80) {
        out.push_back(static_cast<unsigned char>(content.size()));
    } else {
        Octets length;
        for (std::size_t rest = content.size(); rest != 0; rest >>= 8) {
            length.insert(length.begin(), static_cast<unsigned char>(rest));
        }
        out.push_back(static_cast<unsigned char>(0x80 | length.size()));
        Append(out, length);
    }
    Append(out, content);
    return out;
}

Octets Certificates(std::size_t size) {
    Octets all;
    const std::filesystem::path folder = "/usr/share/ca-certificates";
    std::vector<std::filesystem::path> files;
    std::error_code failed;
    for (std::filesystem::recursive_directory_iterator i(folder, failed), end; i != end; ++i) {
        if (i->is_regular_file()) {
            files.push_back(i->path());
        }
    }
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
        Append(all, ReadPem(file));
    }
    const std::size_t once = all.size();
    while (once != 0 && all.size() + once <= size) {
        all.insert(all.end(), all.begin(), all.begin() + static_cast<std::ptrdiff_t>(once));
    }
    return all;
}

Octets Crl(std::size_t entries) {
    std::mt19937 random(1);
    Octets revoked;
    revoked.reserve(entries * 36);
    Octets reason = Element(0x06, {0x55, 0x1D, 0x15});
    Append(reason, Element(0x04, Element(0x0A, {0x01})));
    const Octets extensions = Element(0x30, Element(0x30, reason));
    for (std::size_t i = 0; i < entries; ++i) {
        Octets serial(14);
        std::generate(serial.begin(), serial.end(),
                      [&random] { return static_cast<unsigned char>(random() >> 24 | 1); });
        Octets entry = Element(0x02, serial);
        Append(entry, Text(0x17, "261121083000Z"));
        if (i % 4 == 0) {
            Append(entry, extensions);
        }
        Append(revoked, Element(0x30, entry));
    }
    Octets list = Element(0x02, {0x01});
    for (const Octets& part : {Algorithm(), Name(), Text(0x17, "261121000000Z"),
                               Text(0x17, "261221000000Z"), Element(0x30, revoked)}) {
        Append(list, part);
    }
    Octets crl = Element(0x30, list);
    Append(crl, Algorithm());
    Append(crl, Element(0x03, Octets(257, 0x00)));
    return Element(0x30, crl);
}

Octets SignedData(std::size_t size, bool indefinite) {
    const Octets ends(2, 0x00);
    const auto wrap = [&](unsigned char tag, const Octets& content) {
        if (!indefinite) {
            return Element(tag, content);
        }
        Octets out{tag, 0x80};
        Append(out, content);
        Append(out, ends);
        return out;
    };
    Octets octets;
    if (indefinite) {
        Octets segments;
        for (std::size_t left = size; left != 0; left -= std::min<std::size_t>(left, 1000)) {
            Append(segments, Element(0x04, Octets(std::min<std::size_t>(left, 1000), 0x5A)));
        }
        octets = wrap(0x24, segments);
    } else {
        octets = Element(0x04, Octets(size, 0x5A));
    }
    Octets encapsulated = Element(0x06, {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x07, 0x01});
    Append(encapsulated, wrap(0xA0, octets));
    Octets data = Element(0x02, {0x01});
    Append(data, Element(0x31, Algorithm()));
    Append(data, wrap(0x30, encapsulated));
    Append(data, Element(0xA0, Certificates(0)));
    Octets message = Element(0x06, {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x07, 0x02});
    Append(message, wrap(0xA0, wrap(0x30, data)));
    return wrap(0x30, message);
}

Octets Nested(std::size_t depth, bool closed) {
    Octets out;
    for (std::size_t i = 0; i < depth; ++i) {
        Append(out, {0x30, 0x80});
    }
    if (closed) {
        Append(out, {0x05, 0x00});
        out.resize(out.size() + 2 * depth);
    }
    return out;
}

Octets Overruns(std::size_t count) {
    Octets out;
    for (std::size_t i = 0; i < count; ++i) {
        Append(out, {0x30, 0x02, 0x04, 0x83, 0x04, 0x02, 0xAA, 0xBB});
    }
    out.resize(out.size() + 0x50000);
    return out;
}

const std::vector<Asn1Input>& Asn1Inputs() {
    static const std::vector<Asn1Input> inputs = {
        {"certs/1x", [] { return Certificates(0); }, true, false},
        {"certs/16MB", [] { return Certificates(16 << 20); }, true, false},
        {"crl/1e3", [] { return Crl(1000); }, true, true},
        {"crl/1e5", [] { return Crl(100000); }, true, false},
        {"crl/1e6", [] { return Crl(1000000); }, true, false},
        {"cms/16MB", [] { return SignedData(16 << 20, false); }, true, false},
        {"cms_ber/16MB", [] { return SignedData(16 << 20, true); }, true, false},
        {"depth/1e2", [] { return Nested(100, true); }, false, false},
        {"depth/1e5", [] { return Nested(100000, true); }, false, false},
        {"depth/5e6", [] { return Nested(5000000, true); }, false, false},
        {"depth_open/5e6", [] { return Nested(5000000, false); }, false, false},
        {"overruns/1e5", [] { return Overruns(100000); }, false, false},
    };
    return inputs;
}
