// Typed reading of the installed CA certificates and the look-up of identifiers, beside OpenSSL.

#include "asn1/OidTable.h"
#include "asn1/x509/Certificate.h"

#include <benchmark/benchmark.h>
#include <openssl/objects.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Octets = std::vector<unsigned char>;

const std::vector<Octets>& Certificates() {
    static const std::vector<Octets> all = [] {
        std::vector<Octets> read;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(
                 "/usr/share/ca-certificates",
                 std::filesystem::directory_options::skip_permission_denied)) {
            std::FILE* file = std::fopen(entry.path().c_str(), "r");
            if (file == nullptr) {
                continue;
            }
            if (X509* certificate = PEM_read_X509(file, nullptr, nullptr, nullptr)) {
                Octets der(static_cast<std::size_t>(i2d_X509(certificate, nullptr)));
                unsigned char* at = der.data();
                i2d_X509(certificate, &at);
                read.push_back(std::move(der));
                X509_free(certificate);
            }
            std::fclose(file);
        }
        return read;
    }();
    return all;
}

std::size_t CountAttributes(const CAsn1Name& name) {
    std::size_t count = 0;
    for (auto rdn = name.Elements(); rdn.Next();) {
        for (auto attribute = rdn.Item()->Elements(); attribute.Next(); ++count) {
            benchmark::DoNotOptimize(ca::FindOid(OctetsOf(attribute.Item()->Type())));
        }
    }
    return count;
}

// All members, the attributes of both names and the extensions.
void DecodeCertificates(benchmark::State& state, Asn1Blocks blocks) {
    std::vector<Octets> certificates = Certificates();
    for (auto _ : state) {
        for (Octets& der : certificates) {
            CAsn1Root<CAsn1Certificate> certificate(der, blocks);
            certificate->Decode();
            const CAsn1TbsCertificate& tbs = *certificate->TbsCertificate();
            benchmark::DoNotOptimize(CountAttributes(*tbs.Issuer()));
            benchmark::DoNotOptimize(CountAttributes(*tbs.Subject()));
            if (tbs.Extensions() != nullptr) {
                for (auto at = tbs.Extensions()->Elements(); at.Next();) {
                    benchmark::DoNotOptimize(ca::FindOid(OctetsOf(at.Item()->ExtnId())));
                }
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(certificates.size()));
}

void DecodeOpenSsl(benchmark::State& state) {
    for (auto _ : state) {
        for (const Octets& der : Certificates()) {
            const unsigned char* at = der.data();
            X509* certificate = d2i_X509(nullptr, &at, static_cast<long>(der.size()));
            benchmark::DoNotOptimize(X509_get_ext_count(certificate));
            X509_free(certificate);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Certificates().size()));
}

std::vector<Octets> EncodedIdentifiers() {
    std::vector<Octets> all;
    for (const ca::OidInfo& row : ca::AllOids()) {
        std::string text;
        for (const wchar_t* c = row.dotted; *c != 0; ++c) {
            text.push_back(static_cast<char>(*c));
        }
        ASN1_OBJECT* object = OBJ_txt2obj(text.c_str(), 1);
        const unsigned char* octets = OBJ_get0_data(object);
        all.emplace_back(octets, octets + OBJ_length(object));
        ASN1_OBJECT_free(object);
    }
    return all;
}

void FindIdentifiers(benchmark::State& state) {
    const std::vector<Octets> identifiers = EncodedIdentifiers();
    for (auto _ : state) {
        for (const Octets& octets : identifiers) {
            benchmark::DoNotOptimize(ca::FindOid(octets));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(identifiers.size()));
}

void FindIdentifiersOpenSsl(benchmark::State& state) {
    std::vector<std::unique_ptr<ASN1_OBJECT, decltype(&ASN1_OBJECT_free)>> objects;
    std::vector<Octets> identifiers = EncodedIdentifiers();
    for (Octets& octets : identifiers) {
        objects.emplace_back(ASN1_OBJECT_create(NID_undef, octets.data(),
                                                static_cast<int>(octets.size()), nullptr, nullptr),
                             &ASN1_OBJECT_free);
    }
    for (auto _ : state) {
        for (const auto& object : objects) {
            benchmark::DoNotOptimize(OBJ_obj2nid(object.get()));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(objects.size()));
}

BENCHMARK_CAPTURE(DecodeCertificates, tree, Asn1Blocks::kAll);
BENCHMARK_CAPTURE(DecodeCertificates, members, Asn1Blocks::kRead);
BENCHMARK(DecodeOpenSsl);
BENCHMARK(FindIdentifiers);
BENCHMARK(FindIdentifiersOpenSsl);

}  // namespace
