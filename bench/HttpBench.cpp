// A download of 64 MiB over loopback beside what it cannot beat: reading the same octets from a
// plain socket into memory that is there already, and one copy of them.

#include "common/Http.h"
#include "tests/common/HttpTestServer.h"

#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using ca_test::Connection;
using ca_test::HttpTestServer;
using ca_test::Request;

constexpr std::size_t kBodySize = 64U << 20;

std::string Answer(const std::string& lengthField) {
    return "HTTP/1.1 200 OK\r\n" + lengthField + "Connection: close\r\n\r\n" +
           std::string(kBodySize, 'x');
}

HttpTestServer::Handler Send(const std::string& answer) {
    return [&answer](Connection& connection, const Request&) { connection.Write(answer); };
}

void Download(benchmark::State& state, const std::string& answer) {
    const HttpTestServer server(Send(answer));
    for (auto _ : state) {
        ca::BytePtr body;
        unsigned length = 0;
        ca::Http::GetBlob(server.Url(), {}, body, length);
        if (length != kBodySize) {
            state.SkipWithError("body cut");
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBodySize));
}

void GetBlobOfAnnouncedLength(benchmark::State& state) {
    static const std::string answer =
        Answer("Content-Length: " + std::to_string(kBodySize) + "\r\n");
    Download(state, answer);
}
BENCHMARK(GetBlobOfAnnouncedLength)->UseRealTime()->Unit(benchmark::kMillisecond);

void GetBlobOfUnknownLength(benchmark::State& state) {
    static const std::string answer = Answer("");
    Download(state, answer);
}
BENCHMARK(GetBlobOfUnknownLength)->UseRealTime()->Unit(benchmark::kMillisecond);

std::size_t ReadAll(std::uint16_t port, std::string& buffer) {
    const int handle = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    static constexpr char kRequest[] = "GET / HTTP/1.1\r\n\r\n";
    send(handle, kRequest, sizeof kRequest - 1, MSG_NOSIGNAL);
    std::size_t total = 0;
    for (ssize_t size = 1; size > 0 && total < buffer.size();) {
        size = recv(handle, buffer.data() + total, buffer.size() - total, 0);
        total += size > 0 ? static_cast<std::size_t>(size) : 0;
    }
    close(handle);
    return total;
}

void PlainSocketRead(benchmark::State& state) {
    static const std::string answer = Answer("");
    const HttpTestServer server(Send(answer));
    for (auto _ : state) {
        std::string buffer(answer.size(), '\0');  // fresh pages, as every download has
        if (ReadAll(server.Port(), buffer) != answer.size()) {
            state.SkipWithError("body cut");
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBodySize));
}
BENCHMARK(PlainSocketRead)->UseRealTime()->Unit(benchmark::kMillisecond);

void CopyToFreshMemory(benchmark::State& state) {
    const std::string source(kBodySize, 'x');
    for (auto _ : state) {
        ca::BytePtr copy = ca::BytePtr::Make(kBodySize);
        std::memcpy(copy.Get(), source.data(), kBodySize);
        benchmark::DoNotOptimize(copy.Get());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBodySize));
}
BENCHMARK(CopyToFreshMemory)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
