#include "bench/Asn1Tasn1.h"

#include <libtasn1.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

// CertificateList for libtasn1, which reads by definition only.
constexpr char kCrlDefinition[] =
    "BENCH { } DEFINITIONS IMPLICIT TAGS ::= BEGIN\n"
    "Entry ::= SEQUENCE { serial INTEGER, revoked ANY, extensions ANY OPTIONAL }\n"
    "Tbs ::= SEQUENCE { version INTEGER, algorithm ANY, issuer ANY, thisUpdate ANY,\n"
    "  nextUpdate ANY, revoked SEQUENCE OF Entry }\n"
    "List ::= SEQUENCE { tbs Tbs, algorithm ANY, signature BIT STRING }\n"
    "END\n";

}  // namespace

void ParseTasn1Crl(benchmark::State& state, const Octets& data) {
    char path[] = "/tmp/asn1-bench-XXXXXX";
    const int file = mkstemp(path);
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(fdopen(file, "w"), std::fclose);
    std::fputs(kCrlDefinition, stream.get());
    stream.reset();
    asn1_node definitions = nullptr;
    char error[ASN1_MAX_ERROR_DESCRIPTION_SIZE];
    const int read = asn1_parser2tree(path, &definitions, error);
    std::remove(path);
    if (read != ASN1_SUCCESS) {
        state.SkipWithError(error);
        return;
    }
    for (auto _ : state) {
        asn1_node list = nullptr;
        asn1_create_element(definitions, "BENCH.List", &list);
        if (asn1_der_decoding(&list, data.data(), static_cast<int>(data.size()), error) !=
            ASN1_SUCCESS) {
            state.SkipWithError(error);
        }
        state.PauseTiming();
        asn1_delete_structure(&list);
        state.ResumeTiming();
    }
    asn1_delete_structure(&definitions);
}
