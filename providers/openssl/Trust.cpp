#include "providers/openssl/Trust.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <mutex>

namespace {

// The machine's trusted roots in one file: Debian, Fedora, and where OpenSSL itself looks.
std::string SystemRoots() {
    std::error_code error;
    for (const char* path : {"/etc/ssl/certs/ca-certificates.crt",
                             "/etc/pki/tls/certs/ca-bundle.crt", X509_get_default_cert_file()}) {
        if (std::filesystem::is_regular_file(path, error)) {
            return path;
        }
    }
    return {};
}

}  // namespace

namespace ca {

CTrust::Sources CTrust::Look(const CProviderCall& call) {
    const PkiTrust& trust = call.Pki().trust;
    Sources sources{m_stores.Named(call, L"Root"), m_stores.Named(call, L"CA")};
    for (const std::wstring& place : trust.stores) {
        sources.roots.push_back(m_stores.At(PathFromWString(place)));
    }
    for (const std::wstring& place : trust.intermediates) {
        sources.helpers.push_back(m_stores.At(PathFromWString(place)));
    }
    if (const std::string system = trust.useSystemRoots ? SystemRoots() : ""; !system.empty()) {
        sources.roots.push_back(m_stores.At(system));
    }
    return sources;
}

TrustPtrShared CTrust::Get(const CProviderCall& call) {
    const Sources sources = Look(call);
    std::vector<StoreContentPtr> all = sources.roots;
    std::ranges::copy(sources.helpers, std::back_inserter(all));
    {
        const std::lock_guard lock(m_mutex);
        if (m_latest != nullptr && m_latest->sources == all) {
            return m_latest;
        }
    }
    TrustPtrShared fresh = Parse(sources);
    const std::lock_guard lock(m_mutex);
    m_latest = fresh;
    return fresh;
}

// What OpenSSL cannot read is no part of it: one bad file does not end all trust.
TrustPtrShared CTrust::Parse(const Sources& sources) const {
    auto trust = std::make_shared<TrustSnapshot>();
    trust->store.reset(Require(X509_STORE_new(), kErrExecution));
    const auto add = [&](const StoreContentPtr& content, bool isRoot) {
        for (const StoredCertificate& each : content->certificates) {
            try {
                const X509Ptr certificate = m_library.ReadCertificate(each.der);
                // A self-signed certificate in the store is an anchor for OpenSSL.
                if (isRoot || X509_self_signed(certificate.get(), /*verify_signature=*/0) != 1) {
                    X509_STORE_add_cert(trust->store.get(), certificate.get());
                }
            } catch (const Exception&) {
                continue;
            }
        }
        for (const std::vector<unsigned char>& der : content->crls) {
            CrlPtr crl = m_library.ReadCrl(der);
            if (crl != nullptr && X509_STORE_add_crl(trust->store.get(), crl.get()) == 1) {
                trust->crls.push_back(std::move(crl));
            }
        }
        trust->sources.push_back(content);
    };
    for (const StoreContentPtr& content : sources.roots) {
        add(content, /*isRoot=*/true);
    }
    for (const StoreContentPtr& content : sources.helpers) {
        add(content, /*isRoot=*/false);
    }
    return trust;
}

}  // namespace ca
