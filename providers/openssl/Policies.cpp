#include "providers/openssl/Policies.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/ProviderWords.h"

#include <openssl/x509v3.h>

#include <algorithm>
#include <iterator>

namespace {

struct UsageRow {
    const wchar_t* name;
    ca::PkiPolicy ca::PkiPolicies::*policy;
};
constexpr UsageRow kUsages[] = {
    {L"signing", &ca::PkiPolicies::signing},
    {L"encryption", &ca::PkiPolicies::encryption},
    {L"timeStamping", &ca::PkiPolicies::timeStamping},
    {L"server", &ca::PkiPolicies::server},
};

struct UsageBit {
    const wchar_t* name;
    std::uint32_t bit;
};
constexpr UsageBit kUsageBits[] = {
    {L"digitalSignature", KU_DIGITAL_SIGNATURE},
    {L"nonRepudiation", KU_NON_REPUDIATION},
    {L"keyEncipherment", KU_KEY_ENCIPHERMENT},
    {L"dataEncipherment", KU_DATA_ENCIPHERMENT},
    {L"keyAgreement", KU_KEY_AGREEMENT},
    {L"keyCertSign", KU_KEY_CERT_SIGN},
    {L"cRLSign", KU_CRL_SIGN},
    {L"encipherOnly", KU_ENCIPHER_ONLY},
    {L"decipherOnly", KU_DECIPHER_ONLY},
};

bool HasBit(std::uint32_t bits, const std::wstring& name) {
    const auto* const row = std::ranges::find(kUsageBits, name, &UsageBit::name);
    return row != std::end(kUsageBits) && (bits & row->bit) != 0;
}

}  // namespace

namespace ca {

const PkiPolicy& PolicyOf(const CProviderCall& call) {
    const PkiPolicies& policies = call.Pki().policies;
    const InitString params = call.Params();
    const std::wstring* const usage = params.Find(L"CERT_USAGE");
    if (usage == nullptr) {
        return policies.signing;
    }
    const auto* const row = std::ranges::find(kUsages, *usage, &UsageRow::name);
    if (row == std::end(kUsages)) {
        throw Exception(kErrParameters, L"CERT_USAGE");
    }
    return policies.*(row->policy);
}

bool HasUsages(X509* certificate, const PkiPolicy& policy) {
    const std::uint32_t bits = X509_get_key_usage(certificate);
    const bool hasBits = std::ranges::all_of(
        policy.keyUsage, [bits](const std::wstring& name) { return HasBit(bits, name); });
    if (!hasBits || policy.extendedKeyUsage.empty()) {
        return hasBits;
    }
    using PurposesPtr = Owned<EXTENDED_KEY_USAGE, &EXTENDED_KEY_USAGE_free>;
    const PurposesPtr purposes(static_cast<EXTENDED_KEY_USAGE*>(
        X509_get_ext_d2i(certificate, NID_ext_key_usage, nullptr, nullptr)));
    return std::ranges::all_of(policy.extendedKeyUsage, [&](const std::wstring& wanted) {
        for (int i = 0; purposes != nullptr && i < sk_ASN1_OBJECT_num(purposes.get()); ++i) {
            if (Dotted(sk_ASN1_OBJECT_value(purposes.get(), i)) == wanted) {
                return true;
            }
        }
        return false;
    });
}

std::vector<std::string> PolicySetOf(const InitString& params, const PkiPolicy& policy) {
    std::vector<std::wstring> oids = policy.certificatePolicies;
    if (const std::wstring* const given = params.Find(L"POLICY_SET")) {
        std::vector<std::wstring> wanted;
        Split(*given, L",", wanted);
        // A request may not accept what the configuration does not.
        std::erase_if(wanted, [&](const std::wstring& oid) {
            return !oids.empty() && std::ranges::find(oids, oid) == oids.end();
        });
        if (!oids.empty() && wanted.empty()) {
            throw Exception(kErrParameters, Say(Words::kNoPolicyLeft));
        }
        oids.swap(wanted);
    }
    std::vector<std::string> dotted;
    dotted.reserve(oids.size());
    for (const std::wstring& oid : oids) {
        dotted.push_back(u16u8(oid));
    }
    return dotted;
}

}  // namespace ca
