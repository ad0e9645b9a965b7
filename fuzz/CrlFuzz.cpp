// Strangers' octets as a revocation list, page by page, and as an attribute certificate.

#include "common/Exception.h"
#include "common/Json.h"
#include "records/fill/AttrCertInfoFill.h"
#include "records/fill/CrlInfoFill.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

// Characters that an octet may become, and what the keys and a few texts take at the least.
constexpr std::size_t kTextPerOctet = 4096;
constexpr std::size_t kTextOfKeys = 65536;

template <class Record>
std::size_t Write(const Record& record) {
    ca::JsonBuffer text;
    ca::JsonWriter writer(text);
    record.ToJson(writer);
    return text.GetSize();
}

void RequireBounded(std::size_t written, std::size_t size) {
    if (written > kTextOfKeys + size * kTextPerOctet) {
        std::fprintf(stderr, "%zu characters about %zu octets\n", written, size);
        std::abort();
    }
}

void DescribeList(std::vector<unsigned char> octets, const ca::CrlPage& page) {
    ca::CrlInfo record;
    try {
        ca::FillCrlInfo(octets, page, record);
    } catch (const ca::Exception&) {
        return;
    }
    RequireBounded(Write(record), octets.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<unsigned char> octets(data, data + size);
    DescribeList(octets, {});
    DescribeList(octets, {.first = 1, .count = 2, .serial = {}});
    DescribeList(octets, {.first = 0, .count = 3, .serial = {{0x01}}});
    ca::AttrCertInfo record;
    ca::FillAttrCertInfo(octets, record);
    RequireBounded(Write(record), octets.size());
    return 0;
}
