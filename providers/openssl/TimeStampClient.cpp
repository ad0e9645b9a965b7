#include "providers/openssl/TimeStampClient.h"

#include "asn1/views/MessageViews.h"
#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/Http.h"
#include "common/Log.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/KeptFetches.h"
#include "providers/openssl/ProviderWords.h"
#include "providers/openssl/SignedMessage.h"

#include <openssl/rand.h>

#include <algorithm>
#include <limits>

namespace {

constexpr std::uint32_t kMaxAnswer = 1U << 20;  // octets; whole ones take a few thousand
constexpr std::int64_t kMaxSeconds = 60;        // in which servers are asked

using ObjectPtr = ca::Owned<ASN1_OBJECT, &ASN1_OBJECT_free>;
using AlgorithmPtr = ca::Owned<X509_ALGOR, &X509_ALGOR_free>;
using ImprintPtr = ca::Owned<TS_MSG_IMPRINT, &TS_MSG_IMPRINT_free>;
using NumberPtr = ca::Owned<ASN1_INTEGER, &ASN1_INTEGER_free>;

ObjectPtr ObjectOf(const std::wstring& oid) {
    return ObjectPtr(
        ca::Require(OBJ_txt2obj(ca::u16u8(oid).c_str(), /*no_name=*/1), ca::kErrParameters));
}

}  // namespace

namespace ca {

/// TimeStampReq (RFC 3161, 2.4.1) with a nonce.
class CTimeStampClient::CRequest {
  public:
    CRequest(const COpenSslLibrary& library, const PkiTspServer& server,
             std::span<const unsigned char> signature, const EVP_MD* digest)
        : m_request(Require(TS_REQ_new(), kErrExecution)) {
        DigestPtr named;
        if (!server.digest.empty()) {
            named = library.FindDigest(u16u8(server.digest));
            digest = named.get();
        }
        std::vector<unsigned char> value = DigestOf(digest, signature);
        const ImprintPtr imprint(Require(TS_MSG_IMPRINT_new(), kErrExecution));
        const AlgorithmPtr algorithm(Require(X509_ALGOR_new(), kErrExecution));
        Require(X509_ALGOR_set0(algorithm.get(), OBJ_nid2obj(EVP_MD_get_type(digest)), V_ASN1_NULL,
                                nullptr),
                kErrExecution);
        Require(TS_MSG_IMPRINT_set_algo(imprint.get(), algorithm.get()), kErrExecution);
        Require(TS_MSG_IMPRINT_set_msg(imprint.get(), value.data(), static_cast<int>(value.size())),
                kErrExecution);
        Require(TS_REQ_set_version(m_request.get(), 1), kErrExecution);
        Require(TS_REQ_set_msg_imprint(m_request.get(), imprint.get()), kErrExecution);
        if (!server.policy.empty()) {
            Require(TS_REQ_set_policy_id(m_request.get(), ObjectOf(server.policy).get()),
                    kErrExecution);
        }
        std::uint64_t nonce = 0;
        Require(RAND_bytes_ex(library.Context(), reinterpret_cast<unsigned char*>(&nonce),
                              sizeof nonce, /*strength=*/0),
                kErrExecution);
        const NumberPtr number(Require(ASN1_INTEGER_new(), kErrExecution));
        Require(ASN1_INTEGER_set_uint64(number.get(), nonce), kErrExecution);
        Require(TS_REQ_set_nonce(m_request.get(), number.get()), kErrExecution);
        Require(TS_REQ_set_cert_req(m_request.get(), server.requestCertificate ? 1 : 0),
                kErrExecution);
    }

    std::vector<unsigned char> Encoding() const {
        unsigned char* octets = nullptr;
        const int size = Require(i2d_TS_REQ(m_request.get(), &octets), kErrExecution);
        const OctetsPtr owner(octets);
        return {octets, octets + size};
    }
    bool HasNonceOf(const TS_TST_INFO* info) const {
        const ASN1_INTEGER* const nonce = TS_TST_INFO_get_nonce(info);
        return nonce != nullptr && ASN1_INTEGER_cmp(nonce, TS_REQ_get_nonce(m_request.get())) == 0;
    }
    bool HasPolicyOf(TS_TST_INFO* info) const {
        const ASN1_OBJECT* const wanted = TS_REQ_get_policy_id(m_request.get());
        return wanted == nullptr || OBJ_cmp(wanted, TS_TST_INFO_get_policy_id(info)) == 0;
    }

  private:
    Owned<TS_REQ, &TS_REQ_free> m_request;
};

bool CTimeStampClient::IsWanted(const CProviderCall& call) {
    return call.Params().GetUnsigned(L"TSP_STAMP", 0, 1, 0) == 1;
}

// The parameters name the first server, from the configuration unless the call has another one;
// the configuration's others follow its own.
std::vector<PkiTspServer> CTimeStampClient::ServersOf(const CProviderCall& call) {
    const InitString params = call.Params();
    std::vector<PkiTspServer> servers = call.Pki().tsp.servers;
    PkiTspServer first = servers.empty() ? PkiTspServer{} : servers.front();
    if (const std::wstring url = params.GetText(L"TSP_URL"); first.url != url && !url.empty()) {
        servers.assign(1, {});
        first.url = url;
    }
    if (first.url.empty()) {
        return {};
    }
    constexpr std::uint64_t kLongest = std::numeric_limits<std::int32_t>::max();
    const std::wstring* const policy = params.Find(L"TSP_POLICY");
    const std::wstring* const digest = params.Find(L"TSP_DIGEST");
    first.policy = policy != nullptr ? *policy : first.policy;
    first.digest = digest != nullptr ? *digest : first.digest;
    first.requestCertificate =
        params.GetUnsigned(L"TSP_CERT_REQ", 0, 1, first.requestCertificate ? 1 : 0) == 1;
    first.timeout = static_cast<int>(params.GetUnsigned(L"TSP_INET_TIMEOUT", 0, kLongest,
                                                        static_cast<std::uint64_t>(first.timeout)));
    servers.front() = std::move(first);
    return servers;
}

std::vector<unsigned char> CTimeStampClient::Ask(const CProviderCall& call,
                                                 std::span<const unsigned char> signature,
                                                 const EVP_MD* digest) const {
    const std::int64_t end = SteadySeconds() + kMaxSeconds;
    std::wstring reason = Say(Words::kStampNoServer);
    for (const PkiTspServer& server : ServersOf(call)) {
        if (SteadySeconds() >= end) {
            break;
        }
        try {
            return AskOne(call, server, signature, digest);
        } catch (const Exception& e) {
            // Deliberate: the next one may do better; the last one's reason is the answer's.
            reason = e.message;
            LogLine(Say(Words::kStampFault) + e.message + L": " + server.url, /*isError=*/true);
        }
    }
    throw Exception(kErrTimeStampNotAdded, reason);
}

std::vector<unsigned char> CTimeStampClient::AskOne(const CProviderCall& call,
                                                    const PkiTspServer& server,
                                                    std::span<const unsigned char> signature,
                                                    const EVP_MD* digest) const {
    const CRequest request(m_library, server, signature, digest);
    HttpSettings settings = call.FetchSettings();
    constexpr std::uint32_t kLongest = kMaxSeconds * 1000;
    const auto timeout = static_cast<std::uint32_t>(server.timeout);
    settings.totalTimeoutMs = std::min(HttpSettings::BoundedTimeout(timeout), kLongest);
    settings.maxBodySize = kMaxAnswer;
    BytePtr body;
    unsigned length = 0;
    try {
        Http::Ask(server.url, "application/timestamp-query", request.Encoding(), settings, body,
                  length);
    } catch (const Exception& e) {
        throw Exception(
            kErrTimeStampNotAdded,
            Say(Words::kStampNotFetched) + ::GetErrorMessage(e.errorCode, /*prefix=*/false));
    }
    const CAsn1TimeStampRespView response(FirstElement({body.Get(), length}));
    std::uint32_t status = 0;
    if (!ReadSmallInteger(response.Status(), status)) {
        throw Exception(kErrTimeStampNotAdded, Say(Words::kStampNoAnswer));
    }
    if (status != TS_STATUS_GRANTED && status != TS_STATUS_GRANTED_WITH_MODS) {
        throw Exception(kErrTimeStampNotAdded, Say(Words::kStampRefused) + DecimalText(status));
    }
    const std::span<const unsigned char> token = response.TimeStampToken().Element().raw;
    if (std::wstring fault = Fault(call, request, token, signature); !fault.empty()) {
        throw Exception(kErrTimeStampNotAdded, std::move(fault));
    }
    return {token.begin(), token.end()};
}

// No server is asked about the token's signer: that is for those to do who verify.
std::wstring CTimeStampClient::Fault(const CProviderCall& call, const CRequest& request,
                                     std::span<const unsigned char> token,
                                     std::span<const unsigned char> signature) const {
    PkiPolicy policy = call.Pki().policies.timeStamping;
    policy.revocation = RevocationCheck::kNone;
    CMessageJudge judge(m_library, m_stores, m_chain, call, token, {},
                        StampRules(policy, std::nullopt));
    const StampInfoPtr info = StampInfoOf(judge);
    if (info == nullptr) {
        return Say(Words::kStampNotRead);
    }
    if (!request.HasNonceOf(info.get())) {
        return Say(Words::kStampWrongNonce);
    }
    if (!request.HasPolicyOf(info.get())) {
        return Say(Words::kStampWrongPolicy);
    }
    const StampFinding finding =
        JudgeTimeStamp(m_library, call.Pki().algorithms, judge, signature, std::time(nullptr));
    return finding.time ? std::wstring() : finding.words;
}

}  // namespace ca
