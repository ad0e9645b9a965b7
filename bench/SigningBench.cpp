// Signing and verifying end to end: whole requests through the entry points of the OpenSSL provider
// beside OpenSSL's own CMS_sign() and CMS_verify() over the same octets, key and certificates, and
// beside a process of its command line for each message. A three-level PKI is made for the run.

#include "bench/ModuleRequest.h"
#include "tests/common/TemporaryDir.h"
#include "tests/module/OpenSslObjects.h"

#include <benchmark/benchmark.h>
#include <openssl/cms.h>
#include <openssl/ec.h>
#include <openssl/rsa.h>
#include <openssl/x509v3.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using CmsPtr = std::unique_ptr<CMS_ContentInfo, Freer<CMS_ContentInfo_free>>;
using ExtensionPtr = std::unique_ptr<X509_EXTENSION, Freer<X509_EXTENSION_free>>;
using TrustPtr = std::unique_ptr<X509_STORE, Freer<X509_STORE_free>>;
struct StackFreer {
    void operator()(STACK_OF(X509) * stack) const { sk_X509_pop_free(stack, X509_free); }
};
using StackPtr = std::unique_ptr<STACK_OF(X509), StackFreer>;

constexpr int kSign = 14;
constexpr int kVerify = 15;
constexpr std::int64_t kSmall = 1024;
constexpr std::int64_t kLarge = 64 << 20;

X509Ptr Certify(const char* name, const char* issuer, EVP_PKEY* key, EVP_PKEY* issuerKey,
                bool isAuthority) {
    X509Ptr certificate = Issue(name, issuer, key, issuerKey);
    const std::pair<int, const char*> extensions[] = {
        {NID_basic_constraints, isAuthority ? "critical,CA:TRUE" : "critical,CA:FALSE"},
        {NID_key_usage, isAuthority ? "critical,keyCertSign,cRLSign" : "critical,digitalSignature"},
    };
    for (const auto& [nid, value] : extensions) {
        const ExtensionPtr extension(X509V3_EXT_conf_nid(nullptr, nullptr, nid, value));
        X509_add_ext(certificate.get(), extension.get(), -1);
    }
    X509_sign(certificate.get(), issuerKey, EVP_sha256());
    return certificate;
}

// A root, an authority and a signer, in the stores of a module and as OpenSSL's objects.
class Pki {
  public:
    Pki() {
        const KeyPtr rootKey(EVP_EC_gen("P-256"));
        const KeyPtr authorityKey(EVP_EC_gen("P-256"));
        root = Certify("Root", "Root", rootKey.get(), rootKey.get(), /*isAuthority=*/true);
        authority =
            Certify("Authority", "Root", authorityKey.get(), rootKey.get(), /*isAuthority=*/true);
        signer =
            Certify("Signer", "Authority", key.get(), authorityKey.get(), /*isAuthority=*/false);
        X509_STORE_add_cert(trust.get(), root.get());
        X509_up_ref(authority.get());
        sk_X509_push(companions.get(), authority.get());

        const BioPtr file(BIO_new(BIO_s_mem()));
        PEM_write_bio_PKCS8PrivateKey(file.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr);
        char* text = nullptr;
        const long size = BIO_get_mem_data(file.get(), &text);
        const std::string keyFile =
            m_directory.Write("user/MY/signer.key", {text, static_cast<std::size_t>(size)});
        std::filesystem::permissions(keyFile, std::filesystem::perms(0600));
        m_directory.Write("user/MY/signer.pem", PemOf(signer.get()));
        m_directory.Write("user/CA/authority.pem", PemOf(authority.get()));
        rootFile = m_directory.Write("user/Root/root.pem", PemOf(root.get()));
        m_directory.Write("QetCryptoSvcPKIConfig.json",
                          R"({"trust":{"useSystemRoots":false},"stores":{"user":")" +
                              m_directory.File("user") + R"(","machine":")" +
                              m_directory.File("none") + R"("}})");
        ::setenv("MOD_FOO_CONFIG", m_directory.Write("config.ini", "").c_str(), /*overwrite=*/1);
    }

    /// The environment is set by the first use of the PKI, before the module begins.
    static Pki& Get() {
        static Pki pki;
        return pki;
    }

    std::string File(const std::string& name) const { return m_directory.File(name); }

    KeyPtr key{EVP_RSA_gen(2048)};
    X509Ptr root, authority, signer;
    TrustPtr trust{X509_STORE_new()};
    StackPtr companions{sk_X509_new_null()};
    std::string rootFile;

  private:
    TemporaryDir m_directory;
};

void* ProviderModule() {
    static void* const module = [] {
        Pki::Get();
        return CM_Init(1, [](const wchar_t* line, bool) { return line != nullptr; });
    }();
    return module;
}

// Nothing that could be taken for a text form.
std::string Content(std::int64_t size) {
    return std::string(static_cast<std::size_t>(size), '\1');
}

std::string Request(int mode, const std::string& members, const std::string& payload) {
    return "{\"mode\":" + std::to_string(mode) + members +
           ",\"fileDataSize\":" + std::to_string(payload.size()) + "}" + '\0' + payload;
}

// The packet of a request, which stays as it is; its answer is to be freed.
CMPacket Process(std::string& request) {
    CMPacket packet{};
    packet.request = request.data();
    packet.requestLength = static_cast<std::uint32_t>(request.size());
    packet.interactive = true;
    CM_ProcessClientRequest(ProviderModule(), &packet);
    return packet;
}

std::string SignByModule(const std::string& content) {
    std::string request = Request(kSign, ",\"isAttached\":true", content);
    const CMPacket packet = Process(request);
    const std::size_t text = std::strlen(packet.response) + 1;
    std::string message;
    if (text < packet.responseSize) {
        message.assign(packet.response + text, packet.responseSize - text);
    }
    std::free(packet.response);
    if (message.empty()) {
        throw std::runtime_error("not signed");
    }
    return message;
}

const std::string& Message(std::int64_t size) {
    static std::map<std::int64_t, std::string> messages;
    std::string& message = messages[size];
    if (message.empty()) {
        message = SignByModule(Content(size));
    }
    return message;
}

bool IsVerifiedByModule(std::string& request) {
    const CMPacket packet = Process(request);
    const bool isValid =
        std::strstr(packet.response, R"("SignatureVerifyResult":16200)") != nullptr &&
        std::strstr(packet.response, R"("CertificateVerifyResult":16200)") != nullptr;
    std::free(packet.response);
    return isValid;
}

bool IsVerifiedBare(const std::string& message) {
    const auto* at = reinterpret_cast<const unsigned char*>(message.data());
    const CmsPtr read(d2i_CMS_ContentInfo(nullptr, &at, static_cast<long>(message.size())));
    return CMS_verify(read.get(), nullptr, Pki::Get().trust.get(), nullptr, nullptr,
                      CMS_BINARY | CMS_CADES) == 1;
}

void Require(benchmark::State& state, bool isGood) {
    if (!isGood) {
        state.SkipWithError("refused");
    }
}

void SignModule(benchmark::State& state) {
    std::string request = Request(kSign, ",\"isAttached\":true", Content(state.range(0)));
    for (auto _ : state) {
        const CMPacket packet = Process(request);
        Require(state, packet.responseSize > state.range(0));
        std::free(packet.response);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void SignBare(benchmark::State& state) {
    const Pki& pki = Pki::Get();
    const std::string content = Content(state.range(0));
    for (auto _ : state) {
        const BioPtr data(BIO_new_mem_buf(content.data(), static_cast<int>(content.size())));
        const CmsPtr message(CMS_sign(pki.signer.get(), pki.key.get(), pki.companions.get(),
                                      data.get(), CMS_BINARY | CMS_CADES | CMS_NOSMIMECAP));
        Require(state,
                Der<CMS_ContentInfo>(message.get(), &i2d_CMS_ContentInfo).size() > content.size());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void VerifyModule(benchmark::State& state) {
    std::string request = Request(kVerify, "", Message(state.range(0)));
    for (auto _ : state) {
        Require(state, IsVerifiedByModule(request));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void VerifyBare(benchmark::State& state) {
    const std::string& message = Message(state.range(0));
    for (auto _ : state) {
        Require(state, IsVerifiedBare(message));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

// One process a message, as scripts do.
void VerifyProcess(benchmark::State& state) {
    const Pki& pki = Pki::Get();
    const TemporaryDir directory;
    const std::string command = "openssl cms -verify -binary -inform DER -in " +
                                directory.Write("message", Message(state.range(0))) + " -CAfile " +
                                pki.rootFile + " -out /dev/null 2> /dev/null";
    for (auto _ : state) {
        Require(state, std::system(command.c_str()) == 0);
    }
}

}  // namespace

BENCHMARK(SignModule)->Arg(kSmall)->Arg(kLarge)->Name("Sign/module")->Unit(benchmark::kMicrosecond);
BENCHMARK(SignBare)->Arg(kSmall)->Arg(kLarge)->Name("Sign/CMS_sign")->Unit(benchmark::kMicrosecond);
BENCHMARK(VerifyModule)
    ->Arg(kSmall)
    ->Arg(kLarge)
    ->Name("Verify/module")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(VerifyBare)
    ->Arg(kSmall)
    ->Arg(kLarge)
    ->Name("Verify/CMS_verify")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(VerifyModule)
    ->Arg(kSmall)
    ->Threads(2)
    ->UseRealTime()
    ->Name("Verify/module")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(VerifyProcess)
    ->Arg(kSmall)
    ->UseRealTime()
    ->Name("Verify/process")
    ->Unit(benchmark::kMicrosecond);
