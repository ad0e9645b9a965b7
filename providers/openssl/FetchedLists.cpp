#include "providers/openssl/FetchedLists.h"

#include "common/Encode.h"
#include "common/Exception.h"
#include "common/Http.h"
#include "common/Log.h"
#include "providers/openssl/ChainReasons.h"
#include "providers/openssl/ListDirectory.h"
#include "providers/openssl/ProviderWords.h"
#include "records/Payload.h"
#include "records/fill/CrlInfoFill.h"

#include <openssl/x509v3.h>

#include <algorithm>
#include <set>

namespace {

constexpr std::size_t kMaxPoints = 4;  // URLs of one certificate that are asked
constexpr std::int64_t kMaxSeconds = 60;

// RFC 5280 4.2.1.13: names of a point that are http or https URLs.
std::vector<std::wstring> PointsOf(X509* certificate) {
    using PointsPtr = ca::Owned<CRL_DIST_POINTS, &CRL_DIST_POINTS_free>;
    const PointsPtr points(static_cast<CRL_DIST_POINTS*>(
        X509_get_ext_d2i(certificate, NID_crl_distribution_points, nullptr, nullptr)));
    std::vector<std::wstring> urls;
    for (int i = 0; points != nullptr && i < sk_DIST_POINT_num(points.get()); ++i) {
        const DIST_POINT_NAME* const name = sk_DIST_POINT_value(points.get(), i)->distpoint;
        if (name == nullptr || name->type != 0) {
            continue;
        }
        for (int k = 0; k < sk_GENERAL_NAME_num(name->name.fullname); ++k) {
            const GENERAL_NAME* const each = sk_GENERAL_NAME_value(name->name.fullname, k);
            if (each->type != GEN_URI || urls.size() == kMaxPoints) {
                continue;
            }
            const ASN1_IA5STRING* const uri = each->d.uniformResourceIdentifier;
            const std::string text(reinterpret_cast<const char*>(ASN1_STRING_get0_data(uri)),
                                   static_cast<std::size_t>(ASN1_STRING_length(uri)));
            if (text.starts_with("http://") || text.starts_with("https://")) {
                urls.push_back(ca::u8u16(text));
            }
        }
    }
    return urls;
}

// One that is out of date is fetched again, however long it is to be kept.
bool IsCurrent(const X509_CRL& list) {
    const ASN1_TIME* const end = X509_CRL_get0_nextUpdate(&list);
    return end == nullptr || X509_cmp_current_time(end) > 0;
}

std::shared_ptr<X509_CRL> Own(ca::CrlPtr list) {
    return list != nullptr ? std::shared_ptr<X509_CRL>(list.release(), &X509_CRL_free) : nullptr;
}

std::span<const unsigned char> AsOctets(const std::string& octets) {
    return {reinterpret_cast<const unsigned char*>(octets.data()), octets.size()};
}

}  // namespace

namespace ca {

std::vector<CFetchedLists::Source> CFetchedLists::SourcesOf(const CProviderCall& call,
                                                            X509* certificate) {
    const PkiCrl& crl = call.Pki().crl;
    const std::wstring issuer = NameText(X509_get_issuer_name(certificate));
    std::vector<Source> sources;
    for (const PkiCrlSource& each : crl.sources) {
        if (each.issuer.empty() || each.issuer == issuer) {
            sources.push_back({each.url, each.cacheTime, each.timeout});
        }
    }
    const bool isOwnOnly = call.Params().GetUnsigned(L"CRL_CUSTOM_ONLY", 0, 1, 0) == 1;
    if (crl.useCertificatePoints && !isOwnOnly) {
        for (std::wstring& url : PointsOf(certificate)) {
            sources.push_back({std::move(url), crl.cacheTime, crl.timeout});
        }
    }
    return sources;
}

bool CFetchedLists::HasSources(const CProviderCall& call, const std::vector<X509Ptr>& chain) {
    return std::ranges::any_of(chain, [&](const X509Ptr& certificate) {
        return X509_self_signed(certificate.get(), /*verify_signature=*/0) != 1 &&
               !SourcesOf(call, certificate.get()).empty();
    });
}

void CFetchedLists::Add(const CProviderCall& call, const std::vector<X509*>& certificates,
                        STACK_OF(X509_CRL) * lists) {
    const std::int64_t begin = SteadySeconds();
    std::set<std::wstring> asked;
    for (X509* const certificate : certificates) {
        if (X509_self_signed(certificate, /*verify_signature=*/0) == 1) {
            continue;  // nobody revokes a root
        }
        for (const Source& source : SourcesOf(call, certificate)) {
            if (!asked.insert(source.url).second || SteadySeconds() - begin > kMaxSeconds) {
                continue;
            }
            const std::shared_ptr<X509_CRL> list = Get(call, source);
            if (list != nullptr && X509_CRL_up_ref(list.get()) == 1) {
                sk_X509_CRL_push(lists, list.get());
            }
        }
    }
}

std::shared_ptr<X509_CRL> CFetchedLists::Get(const CProviderCall& call, const Source& source) {
    std::shared_ptr<X509_CRL> list = m_kept.Find(source.url, source.cacheTime);
    if (list != nullptr && IsCurrent(*list)) {
        return list;
    }
    const PkiCrl& crl = call.Pki().crl;
    const CListDirectory directory(crl.cacheDirectory, static_cast<std::size_t>(crl.maxSize));
    if (const auto file = directory.Find(source.url, source.cacheTime)) {
        list = Own(m_library.ReadCrl(AsOctets(file->octets)));
        if (list != nullptr && IsCurrent(*list)) {
            m_kept.Keep(source.url, list, file->age);
            return list;
        }
    }
    list = Fetch(call, source);
    if (list != nullptr && source.cacheTime != 0) {
        m_kept.Keep(source.url, list);
        unsigned char* octets = nullptr;
        const int size = i2d_X509_CRL(list.get(), &octets);
        const OctetsPtr owner(octets);
        if (size > 0) {
            directory.Keep(source.url, {octets, static_cast<std::size_t>(size)});
        }
    }
    return list;
}

std::shared_ptr<X509_CRL> CFetchedLists::Fetch(const CProviderCall& call,
                                               const Source& source) const {
    try {
        HttpSettings settings = call.FetchSettings();
        settings.totalTimeoutMs = static_cast<std::uint32_t>(source.timeout);
        settings.maxBodySize = static_cast<std::uint32_t>(call.Pki().crl.maxSize);
        BytePtr body;
        unsigned length = 0;
        Http::GetBlob(source.url, settings, body, length);
        for (const PayloadItem& item : DecodePayload({body.Get(), length})) {
            const std::span<const unsigned char> list = FindCrl(item.octets);
            if (CrlPtr crl = list.empty() ? nullptr : m_library.ReadCrl(list)) {
                return Own(std::move(crl));
            }
        }
        LogLine(Say(Words::kNoListThere) + source.url, /*isError=*/true);
    } catch (const Exception&) {
        // Deliberate: the transfer said why in the log; without the list the state is not known.
        LogLine(Say(Words::kListNotFetched) + source.url, /*isError=*/true);
    }
    return nullptr;
}

}  // namespace ca
