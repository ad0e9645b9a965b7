// base64_decode() beside the decoders of well-known libraries, all in one process. The argument is
// the size of the octets; rates are octets of the text read per second.

#include "common/Base64Paths.h"

#include <QByteArray>
#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <glib.h>
#include <memory>
#include <modp_b64.h>
#include <random>
#include <string>
#include <vector>

namespace {

using Buffer = std::vector<unsigned char>;

constexpr int kBrokenColumns = 76;

// `columns` characters a line with CR LF; 0: one line.
std::string MakeText(std::size_t octets, std::size_t columns) {
    std::mt19937 random(1);
    Buffer data(octets);
    for (unsigned char& octet : data) {
        octet = static_cast<unsigned char>(random());
    }
    std::string unbroken;
    ca::Base64Encode(data.data(), static_cast<unsigned>(octets), unbroken);
    if (columns == 0) {
        return unbroken;
    }
    std::string text;
    text.reserve(unbroken.size() / columns * (columns + 2) + columns);
    for (std::size_t at = 0; at < unbroken.size(); at += columns) {
        text.append(unbroken, at, columns);
        text += "\r\n";
    }
    return text;
}

void DecodeOwn(const std::string& text, Buffer& out) {
    unsigned length = 0;
    base64_decode(text.data(), static_cast<unsigned>(text.size()), out.data(), length);
}

void DecodePlain(const std::string& text, Buffer& out) {
    ca::base64::DecodePlain(text.data(), text.size(), out.data());
}

void DecodeModp(const std::string& text, Buffer& out) {
    modp_b64_decode(reinterpret_cast<char*>(out.data()), text.data(), text.size());
}

void DecodeOpenssl(const std::string& text, Buffer& out) {
    const std::unique_ptr<EVP_ENCODE_CTX, decltype(&EVP_ENCODE_CTX_free)> context(
        EVP_ENCODE_CTX_new(), EVP_ENCODE_CTX_free);
    int length = 0;
    EVP_DecodeInit(context.get());
    EVP_DecodeUpdate(context.get(), out.data(), &length,
                     reinterpret_cast<const unsigned char*>(text.data()),
                     static_cast<int>(text.size()));
    EVP_DecodeFinal(context.get(), out.data() + length, &length);
}

void DecodeOpensslBlock(const std::string& text, Buffer& out) {
    EVP_DecodeBlock(out.data(), reinterpret_cast<const unsigned char*>(text.data()),
                    static_cast<int>(text.size()));
}

void DecodeGlib(const std::string& text, Buffer& out) {
    int state = 0;
    guint saved = 0;
    g_base64_decode_step(text.data(), text.size(), out.data(), &state, &saved);
}

void DecodeToolkit(const std::string& text, Buffer&) {
    const QByteArray view = QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
    benchmark::DoNotOptimize(QByteArray::fromBase64(view));
}

using Decoder = void (*)(const std::string&, Buffer&);

void Run(benchmark::State& state, Decoder decode, std::size_t columns) {
    const std::string text = MakeText(static_cast<std::size_t>(state.range(0)), columns);
    Buffer out(text.size() + 64);
    for (auto _ : state) {
        decode(text, out);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

constexpr std::int64_t kSmall = 300;
constexpr std::int64_t kMega = 1 << 20;
constexpr std::int64_t kLarge = 64 << 20;

#define CA_BENCH(name, decoder, columns) \
    BENCHMARK_CAPTURE(Run, name, decoder, columns)->Arg(kSmall)->Arg(kMega)->Arg(kLarge)

CA_BENCH(Unbroken_own, DecodeOwn, 0);
CA_BENCH(Unbroken_own_plain, DecodePlain, 0);
CA_BENCH(Unbroken_modp, DecodeModp, 0);
CA_BENCH(Unbroken_openssl_block, DecodeOpensslBlock, 0);
CA_BENCH(Unbroken_openssl, DecodeOpenssl, 0);
CA_BENCH(Unbroken_glib, DecodeGlib, 0);
CA_BENCH(Unbroken_toolkit, DecodeToolkit, 0);

// The block decoders know no line breaks.
CA_BENCH(Lines_own, DecodeOwn, kBrokenColumns);
CA_BENCH(Lines_own_plain, DecodePlain, kBrokenColumns);
CA_BENCH(Lines_openssl, DecodeOpenssl, kBrokenColumns);
CA_BENCH(Lines_glib, DecodeGlib, kBrokenColumns);
CA_BENCH(Lines_toolkit, DecodeToolkit, kBrokenColumns);

void EncodeOwn(benchmark::State& state) {
    const Buffer data(static_cast<std::size_t>(state.range(0)), 0xA5);
    std::string text;
    for (auto _ : state) {
        ca::Base64Encode(data.data(), static_cast<unsigned>(data.size()), text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void EncodeToolkit(benchmark::State& state) {
    const Buffer data(static_cast<std::size_t>(state.range(0)), 0xA5);
    for (auto _ : state) {
        const QByteArray view = QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                                        static_cast<int>(data.size()));
        const std::string text = view.toBase64().toStdString();
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

BENCHMARK(EncodeOwn)->Arg(kSmall)->Arg(kMega);
BENCHMARK(EncodeToolkit)->Arg(kSmall)->Arg(kMega);

}  // namespace
