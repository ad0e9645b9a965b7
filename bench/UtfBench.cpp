// ca::u8u16() and ca::u16u8() beside the C library's converters (in a UTF-8 locale) and the
// toolkit's string class. The argument is the number of code points.

#include "common/Encode.h"

#include <QString>
#include <QVector>
#include <benchmark/benchmark.h>

#include <clocale>
#include <cstdlib>
#include <string>

namespace {

// Words as texts have them: blanks and figures interrupt the letters.
std::wstring MakeText(const std::wstring& sample, std::int64_t codePoints) {
    std::wstring text;
    while (text.size() < static_cast<std::size_t>(codePoints)) {
        text += sample;
    }
    text.resize(static_cast<std::size_t>(codePoints));
    return text;
}

const std::wstring kAscii = L"Certificate of the subject O=Some Works, CN=First Name, serial 42; ";
const std::wstring kCyrillic =
    L"Сертификат владельца, выданный центром 42, не найден в хранилище; ";

std::wstring WidenOwn(const std::string& text) {
    return ca::u8u16(text);
}

std::wstring WidenLibrary(const std::string& text) {
    std::wstring out(text.size(), L'\0');
    out.resize(std::mbstowcs(out.data(), text.c_str(), out.size()));
    return out;
}

std::wstring WidenToolkit(const std::string& text) {
    const QVector<uint> codes =
        QString::fromUtf8(text.data(), static_cast<int>(text.size())).toUcs4();
    return {codes.begin(), codes.end()};
}

std::string NarrowOwn(const std::wstring& text) {
    return ca::u16u8(text);
}

std::string NarrowLibrary(const std::wstring& text) {
    std::string out(text.size() * 4, '\0');
    out.resize(std::wcstombs(out.data(), text.c_str(), out.size()));
    return out;
}

std::string NarrowToolkit(const std::wstring& text) {
    return QString::fromUcs4(reinterpret_cast<const uint*>(text.data()),
                             static_cast<int>(text.size()))
        .toUtf8()
        .toStdString();
}

void Widen(benchmark::State& state, std::wstring (*convert)(const std::string&),
           const std::wstring& sample) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const std::string text = ca::u16u8(MakeText(sample, state.range(0)));
    for (auto _ : state) {
        const std::wstring out = convert(text);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Narrow(benchmark::State& state, std::string (*convert)(const std::wstring&),
            const std::wstring& sample) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const std::wstring text = MakeText(sample, state.range(0));
    for (auto _ : state) {
        const std::string out = convert(text);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(10)->Arg(60)->Arg(1 << 20);
}

#define CA_BENCH(direction, kind, sample)                                                   \
    BENCHMARK_CAPTURE(direction, kind##_own, direction##Own, sample)->Apply(Sizes);         \
    BENCHMARK_CAPTURE(direction, kind##_library, direction##Library, sample)->Apply(Sizes); \
    BENCHMARK_CAPTURE(direction, kind##_toolkit, direction##Toolkit, sample)->Apply(Sizes)

CA_BENCH(Widen, ascii, kAscii);
CA_BENCH(Widen, cyrillic, kCyrillic);
CA_BENCH(Narrow, ascii, kAscii);
CA_BENCH(Narrow, cyrillic, kCyrillic);

}  // namespace
