// Describing a revocation list of a million entries (35 MB), beside OpenSSL's print of the same.

#include "common/Json.h"
#include "records/fill/CrlInfoFill.h"

#include <benchmark/benchmark.h>
#include <openssl/bio.h>
#include <openssl/x509.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <malloc.h>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace {

using Octets = std::vector<unsigned char>;

// An element whose length takes four octets.
std::string Large(char tag, const std::string& content) {
    std::string out{tag, '\x84'};
    for (int shift = 24; shift >= 0; shift -= 8) {
        out += static_cast<char>(content.size() >> shift);
    }
    return out + content;
}

// Serial numbers of 16 octets in a fixed but scattered order, and a date each.
Octets MakeList(std::size_t count) {
    std::string entries;
    std::uint64_t state = 88172645463325252U;
    for (std::size_t i = 0; i < count; ++i) {
        entries.append("\x30\x21\x02\x10\x01", 5);
        for (int octet = 1; octet < 16; ++octet) {
            state ^= state << 13;
            state ^= state >> 7;
            state ^= state << 17;
            entries += static_cast<char>(state);
        }
        const auto digit = [state](unsigned place, unsigned bound) {
            return static_cast<char>('1' + (state >> place) % bound);
        };
        entries.append("\x17\x0D").append({'2', digit(0, 5), '0', digit(8, 9), '1', digit(16, 9)});
        entries.append({'1', digit(24, 8), digit(32, 4), digit(40, 9)}).append("00Z");
    }
    const std::string algorithm = "\x30\x0A\x06\x08\x2A\x86\x48\xCE\x3D\x04\x03\x02";
    std::string tbs("\x02\x01\x01", 3);
    tbs += algorithm;
    tbs.append("\x30\x0D\x31\x0B\x30\x09\x06\x03\x55\x04\x03\x0C\x02").append("CA");
    tbs.append("\x17\x0D").append("260202030405Z");
    tbs += Large(0x30, entries);
    const std::string list =
        Large(0x30, Large(0x30, tbs) + algorithm + std::string("\x03\x02\x00\x01", 4));
    return {list.begin(), list.end()};
}

Octets& List(std::int64_t count) {
    static Octets list;
    static std::int64_t made = 0;
    if (made != count) {
        list = MakeList(static_cast<std::size_t>(count));
        made = count;
    }
    return list;
}

void ReportSpeed(benchmark::State& state, std::size_t octets) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(octets));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peak_MB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

// Octets in, whole JSON record out. Returns the octets of the text.
std::size_t DescribeOnce(Octets& der, const ca::CrlPage& page) {
    ca::CrlInfo record;
    ca::FillCrlInfo(der, page, record);
    ca::JsonBuffer text;
    ca::JsonWriter writer(text);
    record.ToJson(writer);
    benchmark::DoNotOptimize(text.GetString());
    return text.GetSize();
}

// A line of this process's status, in octets.
double StatusOctets(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key)) {
            return std::stod(line.substr(key.size())) * 1024;
        }
    }
    return 0;
}

// Resident memory that a description takes at its peak besides its text, in sizes of the input,
// which itself does not count.
double MemoryBesideAnswer(Octets& der, const ca::CrlPage& page) {
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts anew
    const double before = StatusOctets("VmRSS:");
    const auto answer = static_cast<double>(DescribeOnce(der, page));
    return (StatusOctets("VmHWM:") - before - answer) / static_cast<double>(der.size());
}

void Describe(benchmark::State& state, const ca::CrlPage& page) {
    Octets& der = List(state.range(0));
    std::size_t answer = 0;
    for (auto _ : state) {
        answer = DescribeOnce(der, page);
    }
    ReportSpeed(state, der.size());
    state.counters["answer_MB"] = static_cast<double>(answer) / (1024 * 1024);
    state.counters["memory_beside"] = MemoryBesideAnswer(der, page);
}

void DescribeFirstPage(benchmark::State& state) {
    Describe(state, {});
}
void DescribeOneSerial(benchmark::State& state) {
    Describe(state, {.first = 0, .count = 1, .serial = {{0x7F}}});
}
void DescribeAll(benchmark::State& state) {
    Describe(state, {.first = 0, .count = SIZE_MAX, .serial = {}});
}

void OpenSslPrint(benchmark::State& state) {
    const Octets& der = List(state.range(0));
    for (auto _ : state) {
        const unsigned char* at = der.data();
        X509_CRL* list = d2i_X509_CRL(nullptr, &at, static_cast<long>(der.size()));
        BIO* text = BIO_new(BIO_s_mem());
        X509_CRL_print(text, list);
        BIO_free(text);
        X509_CRL_free(list);
    }
    ReportSpeed(state, der.size());
}

constexpr std::int64_t kEntries = 1000000;
BENCHMARK(DescribeFirstPage)->Arg(kEntries)->Unit(benchmark::kMillisecond);
BENCHMARK(DescribeOneSerial)->Arg(kEntries)->Unit(benchmark::kMillisecond);
BENCHMARK(DescribeAll)->Arg(kEntries / 10)->Arg(kEntries)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenSslPrint)->Arg(kEntries)->Unit(benchmark::kMillisecond);

}  // namespace
