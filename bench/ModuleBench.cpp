// The module through its entry points, as a host drives it, beside the bare work that a request
// cannot do without.

#include "common/Encode.h"
#include "common/Json.h"
#include "module/ClientContext.h"
#include "module/mod_foo.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t kMiB = std::size_t{1} << 20;
constexpr std::size_t kLarge = 64 * kMiB;

const std::string kSmallRequests[] = {
    R"({"mode":38,"clientId":"5d6e1c0a-77b1-4a0e-9a8e-03c1","test":false})",
    R"({"mode":38,"clientId":"5d6e1c0a-77b1-4a0e-9a8e-03c1","extInitParams":"TSP_INET_TIMEOUT=5000;",)"
    R"("senderCertId":"","comment":"monthly report","isAttached":true,"certInclude":2,"uri":""})",
};

// The configuration of the machine is left alone.
void* NewModule() {
    ::setenv("MOD_FOO_CONFIG", "/dev/null", /*overwrite=*/1);
    return CM_Init(1, [](const wchar_t* line, bool) { return line != nullptr; });
}

// One module for most benchmarks.
void* Module() {
    static void* const module = NewModule();
    return module;
}

std::uint32_t Process(char* request, std::size_t length, void* module = Module()) {
    CMPacket packet{};
    packet.request = request;
    packet.requestLength = static_cast<std::uint32_t>(length);
    packet.interactive = true;
    CM_ProcessClientRequest(module, &packet);
    const std::uint32_t size = packet.responseSize;
    std::free(packet.response);
    return size;
}

void Check(benchmark::State& state, bool isRight) {
    if (!isRight) {
        state.SkipWithError("wrong answer");
    }
}

// A field of /proc/self/status in KiB.
double StatusKib(const std::string& field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field)) {
            return std::strtod(line.c_str() + field.size() + 1, nullptr);
        }
    }
    return 0;
}

// Copies of a large request that a call holds at its peak, the host's own one included.
double PeakCopies(char* request, std::size_t length) {
    std::ofstream("/proc/self/clear_refs") << 5;  // the peak starts anew
    const double before = StatusKib("VmRSS");
    Process(request, length);
    return 1 + (StatusKib("VmHWM") - before) * 1024 / static_cast<double>(length);
}

std::string RawRequest(const char* mode) {
    std::string request =
        "{\"mode\":" + std::string(mode) + ",\"fileDataSize\":" + std::to_string(kLarge) + "}";
    request += '\0';
    request.append(kLarge, '\x80');  // no Base64 from the first octet on
    return request;
}

}  // namespace

static void BM_SmallBareJson(benchmark::State& state) {
    const std::string& request = kSmallRequests[state.range(0)];
    for (auto _ : state) {
        rapidjson::Document document;
        document.Parse(request.c_str(), request.size());
        benchmark::DoNotOptimize(document["mode"].GetUint());
        rapidjson::StringBuffer text;
        rapidjson::Writer<rapidjson::StringBuffer> writer(text);
        writer.StartObject();
        writer.Key("errorCode");
        writer.Uint(0);
        writer.Key("errorMessage");
        writer.String("DONE");
        writer.Key("certificates");
        writer.StartArray();
        writer.String("FooCertId");
        writer.EndArray();
        writer.EndObject();
        benchmark::DoNotOptimize(text.GetString());
    }
    state.SetLabel(std::to_string(request.size()) + " octets");
}
BENCHMARK(BM_SmallBareJson)->Arg(0)->Arg(1);

// At most 2.5 times the bare work.
static void BM_SmallRequest(benchmark::State& state) {
    std::string request = kSmallRequests[state.range(0)];
    for (auto _ : state) {
        Check(state, Process(request.data(), request.size()) == 66);
    }
}
BENCHMARK(BM_SmallRequest)->Arg(0)->Arg(1);

static void BM_LargeMemcpy(benchmark::State& state) {
    const std::string source = RawRequest("14");
    const bool isFresh = state.range(0) != 0;
    const auto warm = std::make_unique<char[]>(source.size());
    for (auto _ : state) {
        const std::unique_ptr<char[]> fresh(isFresh ? new char[source.size()] : nullptr);
        char* target = isFresh ? fresh.get() : warm.get();
        std::memcpy(target, source.data(), source.size());
        benchmark::DoNotOptimize(target);
        benchmark::ClobberMemory();
    }
    state.SetLabel(isFresh ? "into fresh memory" : "into memory in use");
}
BENCHMARK(BM_LargeMemcpy)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// At most 1.5 times one copy of the payload and two copies at the peak.
static void BM_LargeRawSign(benchmark::State& state) {
    std::string request = RawRequest("14");
    for (auto _ : state) {
        Check(state, Process(request.data(), request.size()) > 64);
    }
    state.counters["peak_copies"] = PeakCopies(request.data(), request.size());
}
BENCHMARK(BM_LargeRawSign)->Unit(benchmark::kMillisecond);

static void BM_LargeBase64Decode(benchmark::State& state) {
    std::string text;
    ca::Base64Encode(std::vector<unsigned char>(kLarge, 0x80).data(), kLarge, text);
    const auto octets = std::make_unique<unsigned char[]>(kLarge + 3);
    for (auto _ : state) {
        benchmark::DoNotOptimize(base64_decode_run(text.data(), text.size(), octets.get()).written);
    }
}
BENCHMARK(BM_LargeBase64Decode)->Unit(benchmark::kMillisecond);

static void BM_LargeAnnouncedBase64(benchmark::State& state) {
    std::string text;
    ca::Base64Encode(std::vector<unsigned char>(kLarge, 0x80).data(), kLarge, text);
    const std::string whole =
        "{\"mode\":35,\"fileDataEncodedSize\":" + std::to_string(text.size()) + ",\"fileData\":\"" +
        text + "\"}";
    std::string request = whole;
    for (auto _ : state) {
        state.PauseTiming();
        std::memcpy(request.data(), whole.data(), whole.size());  // the call has cut it out
        state.ResumeTiming();
        Check(state, Process(request.data(), request.size()) > 0);
    }
    std::memcpy(request.data(), whole.data(), whole.size());
    state.counters["peak_copies"] = PeakCopies(request.data(), request.size());
}
BENCHMARK(BM_LargeAnnouncedBase64)->Unit(benchmark::kMillisecond);

// The time of one acquisition must not grow with the number of clients.
static void BM_AcquireContext(benchmark::State& state) {
    CClientContextArray clients(nullptr);
    clients.SetMaxMemory(kLarge * 16);
    std::vector<std::wstring> ids;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        ids.push_back(L"client " + std::to_wstring(i));
        clients.AcquireContext(ids.back());
    }
    std::size_t next = 0;
    for (auto _ : state) {
        next = (next + 7919) % ids.size();
        benchmark::DoNotOptimize(clients.AcquireContext(ids[next]));
    }
}
BENCHMARK(BM_AcquireContext)->RangeMultiplier(10)->Range(1000, 1000000);

static void BM_RemoveContext(benchmark::State& state) {
    CClientContextArray clients(nullptr);
    clients.SetMaxMemory(kLarge * 16);
    std::vector<std::wstring> ids;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        ids.push_back(L"client " + std::to_wstring(i));
        clients.AcquireContext(ids.back());
    }
    std::size_t next = 0;
    for (auto _ : state) {
        next = (next + 7919) % ids.size();
        clients.Remove(ids[next]);
        clients.AcquireContext(ids[next]);
    }
}
BENCHMARK(BM_RemoveContext)->RangeMultiplier(10)->Range(1000, 1000000);

// A request of one of so many clients, none of whom has stores: among a million at most 1 us more
// than alone. The octets are what all their contexts count for, and what of it is resident.
static void BM_RequestAmongClients(benchmark::State& state) {
    const std::string config = "/tmp/module_bench." + std::to_string(::getpid()) + ".json";
    std::ofstream(config) << R"({"clients":{"maxMemory":2000000000}})";
    ::setenv("MOD_FOO_PKI_CONFIG", config.c_str(), /*overwrite=*/1);
    void* const module = NewModule();
    ::unsetenv("MOD_FOO_PKI_CONFIG");
    std::remove(config.c_str());

    const double before = StatusKib("VmRSS");
    std::string request = kSmallRequests[0];
    const std::size_t digits = request.find("5d6e1c0a");
    const auto ask = [&](std::int64_t client) {
        for (int i = 7; i >= 0; --i) {
            request[digits + static_cast<std::size_t>(i)] = static_cast<char>('0' + client % 10);
            client /= 10;
        }
        return Process(request.data(), request.size(), module);
    };
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        ask(i);
    }
    state.counters["resident_each"] =
        (StatusKib("VmRSS") - before) * 1024 / static_cast<double>(state.range(0));
    std::int64_t next = 0;
    for (auto _ : state) {
        next = (next + 7919) % state.range(0);
        Check(state, ask(next) == 66);
    }
    CM_Free(module);
}
BENCHMARK(BM_RequestAmongClients)->Arg(1)->Arg(1000000);
