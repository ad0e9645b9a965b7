// Describing certificates end to end, DER in and text out: whole requests through the entry points,
// whose answers are JSON with every form of every field, beside the peers' import and full print.
// Over the certificate authorities that the system trusts; one item is one certificate.

#include "bench/ModuleRequest.h"
#include "tests/module/OpenSslObjects.h"

#include <benchmark/benchmark.h>
#include <openssl/pem.h>

#include <cstdint>
#include <filesystem>
#include <gnutls/gnutls.h>
#include <gnutls/x509.h>
#include <string>
#include <vector>

namespace {

constexpr const char* kFolder = "/usr/share/ca-certificates";

std::string ReadDer(const std::string& path) {
    const BioPtr file(BIO_new_file(path.c_str(), "r"));
    const X509Ptr certificate(PEM_read_bio_X509(file.get(), nullptr, nullptr, nullptr));
    return certificate != nullptr ? DerOf(certificate.get()) : std::string();
}

const std::vector<std::string>& Certificates() {
    static const std::vector<std::string> certificates = [] {
        std::vector<std::string> list;
        std::error_code none;
        for (const auto& file : std::filesystem::recursive_directory_iterator(kFolder, none)) {
            if (file.path().extension() == ".crt") {
                list.push_back(ReadDer(file.path().string()));
            }
        }
        return list;
    }();
    return certificates;
}

std::size_t DescribeCertificate(const std::string& der) {
    return DescribeByModule(22, der, "certInfo\":");
}

std::size_t DescribeByGnutls(const std::string& der) {
    gnutls_datum_t octets{};
    octets.data = reinterpret_cast<unsigned char*>(const_cast<char*>(der.data()));
    octets.size = static_cast<unsigned>(der.size());
    gnutls_x509_crt_t certificate = nullptr;
    gnutls_x509_crt_init(&certificate);
    gnutls_datum_t text{};
    if (gnutls_x509_crt_import(certificate, &octets, GNUTLS_X509_FMT_DER) >= 0) {
        gnutls_x509_crt_print(certificate, GNUTLS_CRT_PRINT_FULL, &text);
    }
    gnutls_x509_crt_deinit(certificate);
    gnutls_free(text.data);
    return text.size;
}

std::size_t DescribeByOpenssl(const std::string& der) {
    const auto* octets = reinterpret_cast<const unsigned char*>(der.data());
    const X509Ptr certificate(d2i_X509(nullptr, &octets, static_cast<long>(der.size())));
    const BioPtr memory(BIO_new(BIO_s_mem()));
    if (certificate == nullptr || X509_print(memory.get(), certificate.get()) != 1) {
        return 0;
    }
    return BIO_ctrl_pending(memory.get());
}

template <std::size_t (*Describe)(const std::string&)>
void DescribeAll(benchmark::State& state) {
    if (Certificates().empty()) {
        state.SkipWithError("no certificates on this system");
        return;
    }
    std::size_t octets = 0;
    for (auto _ : state) {
        for (const std::string& der : Certificates()) {
            const std::size_t size = Describe(der);
            if (size == 0) {
                state.SkipWithError("not described");
                return;
            }
            octets += size;
        }
    }
    const auto items = static_cast<std::int64_t>(Certificates().size() * state.iterations());
    state.SetItemsProcessed(items);
    state.counters["per_certificate"] = benchmark::Counter(
        static_cast<double>(items), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["text"] = static_cast<double>(octets) / static_cast<double>(items);
}

}  // namespace

BENCHMARK_TEMPLATE(DescribeAll, DescribeCertificate)->Name("Describe/module");
BENCHMARK_TEMPLATE(DescribeAll, DescribeByGnutls)->Name("Describe/GnuTLS");
BENCHMARK_TEMPLATE(DescribeAll, DescribeByOpenssl)->Name("Describe/OpenSSL");
