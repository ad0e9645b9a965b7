// Describing signed messages of many signers end to end: whole requests through the entry points,
// whose answers describe each signer's certificate and attributes, beside the peers' import and
// print. (GnuTLS says of the certificates how many there are; OpenSSL prints their structure.)

#include "bench/ModuleRequest.h"
#include "tests/module/OpenSslObjects.h"

#include <benchmark/benchmark.h>
#include <openssl/cms.h>
#include <openssl/ec.h>
#include <openssl/x509v3.h>

#include <cstdint>
#include <gnutls/pkcs7.h>
#include <map>
#include <string>

namespace {

using CmsPtr = std::unique_ptr<CMS_ContentInfo, Freer<CMS_ContentInfo_free>>;
using ExtensionPtr = std::unique_ptr<X509_EXTENSION, Freer<X509_EXTENSION_free>>;

constexpr int kSignInfo = 29;

// A certificate of its own for each signer, with what such certificates have as a rule.
X509Ptr MakeCertificate(long serial, EVP_PKEY* key) {
    X509Ptr certificate = Issue("Signer " + std::to_string(serial), "Authority, One", key, key);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), serial);
    const std::pair<int, const char*> extensions[] = {
        {NID_basic_constraints, "critical,CA:FALSE"},
        {NID_key_usage, "critical,digitalSignature,nonRepudiation"},
        {NID_ext_key_usage, "emailProtection,clientAuth"},
        {NID_subject_alt_name, "email:signer@example.com"},
        {NID_crl_distribution_points, "URI:http://example.com/ca.crl"},
    };
    for (const auto& [nid, value] : extensions) {
        const ExtensionPtr extension(X509V3_EXT_conf_nid(nullptr, nullptr, nid, value));
        X509_add_ext(certificate.get(), extension.get(), -1);
    }
    X509_sign(certificate.get(), key, EVP_sha256());
    return certificate;
}

std::string MakeMessage(std::int64_t signers) {
    const CmsPtr message(CMS_sign(nullptr, nullptr, nullptr, nullptr, CMS_PARTIAL | CMS_BINARY));
    const KeyPtr key(EVP_EC_gen("P-256"));
    for (std::int64_t i = 1; i <= signers; ++i) {
        const X509Ptr certificate = MakeCertificate(static_cast<long>(i), key.get());
        CMS_add1_signer(message.get(), certificate.get(), key.get(), EVP_sha256(), CMS_CADES);
    }
    const BioPtr text(BIO_new_mem_buf("text", -1));
    CMS_final(message.get(), text.get(), nullptr, CMS_BINARY);
    return Der<CMS_ContentInfo>(message.get(), &i2d_CMS_ContentInfo);
}

const std::string& Message(std::int64_t signers) {
    static std::map<std::int64_t, std::string> messages;
    std::string& message = messages[signers];
    if (message.empty()) {
        message = MakeMessage(signers);
    }
    return message;
}

std::size_t DescribeSignatures(const std::string& der) {
    return DescribeByModule(kSignInfo, der, "signInfo\":[{");
}

std::size_t DescribeByGnutls(const std::string& der) {
    gnutls_datum_t octets{};
    octets.data = reinterpret_cast<unsigned char*>(const_cast<char*>(der.data()));
    octets.size = static_cast<unsigned>(der.size());
    gnutls_pkcs7_t message = nullptr;
    gnutls_pkcs7_init(&message);
    gnutls_datum_t text{};
    if (gnutls_pkcs7_import(message, &octets, GNUTLS_X509_FMT_DER) >= 0) {
        gnutls_pkcs7_print(message, GNUTLS_CRT_PRINT_FULL, &text);
    }
    gnutls_pkcs7_deinit(message);
    gnutls_free(text.data);
    return text.size;
}

std::size_t DescribeByOpenssl(const std::string& der) {
    const auto* octets = reinterpret_cast<const unsigned char*>(der.data());
    const CmsPtr message(d2i_CMS_ContentInfo(nullptr, &octets, static_cast<long>(der.size())));
    const BioPtr memory(BIO_new(BIO_s_mem()));
    if (message == nullptr ||
        CMS_ContentInfo_print_ctx(memory.get(), message.get(), 0, nullptr) != 1) {
        return 0;
    }
    return BIO_ctrl_pending(memory.get());
}

template <std::size_t (*Describe)(const std::string&)>
void DescribeMessage(benchmark::State& state) {
    const std::string& message = Message(state.range(0));
    std::size_t octets = 0;
    for (auto _ : state) {
        octets = Describe(message);
        if (octets == 0) {
            state.SkipWithError("not described");
            return;
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["message"] = static_cast<double>(message.size());
    state.counters["text"] = static_cast<double>(octets);
}

}  // namespace

BENCHMARK_TEMPLATE(DescribeMessage, DescribeSignatures)
    ->Name("Signatures/module")
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(DescribeMessage, DescribeByGnutls)
    ->Name("Signatures/GnuTLS")
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(DescribeMessage, DescribeByOpenssl)
    ->Name("Signatures/OpenSSL")
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Unit(benchmark::kMicrosecond);
