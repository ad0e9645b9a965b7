#pragma once

#include "module/Provider.h"
#include "providers/openssl/Chain.h"
#include "providers/openssl/ProviderWords.h"
#include "providers/openssl/Stores.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace ca {

/// Verifies the signatures of one message, each by itself: its value, the attributes that bind it
/// to content and certificate, and the chain of its certificate. What could not be checked keeps
/// "not verified", and the log says why.
class CMessageJudge : public ISignatureJudge {
  public:
    /// The references and the views of `what` outlive the judge.
    CMessageJudge(const COpenSslLibrary& library, CStores& stores, const CChain& chain,
                  const CProviderCall& call, const VerifyArguments& what);

    /// A time-stamp token's (RFC 3161, 2.4.2); `others` may help to judge it.
    CMessageJudge(const COpenSslLibrary& library, CStores& stores, const CChain& chain,
                  const CProviderCall& call, std::span<const unsigned char> token,
                  const Companions& others, const ChainRules& rules);

    void Judge(std::size_t signer, SignInfo& record) override;
    void JudgeCountersignature(std::span<const unsigned char> value,
                               std::span<const unsigned char> signer, SignInfo& record) override;

    /// What was found of a value, and the words for it beside those of its code.
    struct ValueVerdict {
        std::uint32_t code;  ///< 16200, 16109, or 16199 where it could not be checked
        std::wstring why;
    };
    /// How one signature stands.
    struct Finding {
        ValueVerdict value = {};
        X509* certificate = nullptr;            ///< of the signer; null: not known
        const ChainVerdict* verdict = nullptr;  ///< on that; the judge's own
        std::wstring timeLine = {};             ///< the time that the certificate was judged for
    };
    Finding Assess(CMS_SignerInfo* signer);
    /// The signature of a message that has one only; else null.
    CMS_SignerInfo* OnlySigner() const;
    /// Null for what was not read.
    const CMS_ContentInfo* Message() const { return m_message.get(); }
    std::span<const unsigned char> Content() const { return m_octets; }

  private:
    std::wstring BaseTimeLine() const;
    std::optional<std::time_t> ChooseTime(CMS_SignerInfo* signer, std::wstring& line);
    bool Read(std::span<const unsigned char> message);
    bool Digest(const VerifyArguments& what);
    void GiveContent(FileData& extracted) const;
    void FindSigners();
    X509* FindSigner(CMS_SignerInfo* signer);
    const ChainVerdict& VerdictOf(X509* certificate, std::optional<std::time_t> time);
    ValueVerdict CheckValue(CMS_SignerInfo* signer, X509* certificate, EVP_PKEY* key,
                            const std::vector<X509Ptr>& chain);
    ValueVerdict CheckCountersignature(std::span<const unsigned char> value,
                                       std::span<const unsigned char> signer, X509*& certificate);
    std::wstring AlgorithmFault(const CMS_SignerInfo* signer, const EVP_PKEY* key) const;
    ValueVerdict CheckMeant(const CMS_SignerInfo* signer, X509* certificate,
                            const std::vector<X509Ptr>& chain) const;
    void FillVerdicts(const Finding& finding, SignInfo& record);
    void FillChain(const Finding& finding, SignInfo& record);

    const COpenSslLibrary& m_library;
    CStores& m_stores;
    const CChain& m_chain;
    const CProviderCall& m_call;
    CmsPtr m_message;
    std::span<const unsigned char> m_octets;  // the content; of m_message or the request
    BioPtr m_content;                         // what is read through m_digests
    BioPtr m_digests;      // the digests of the content; null: nothing can be verified
    std::wstring m_fault;  // why
    Words m_unreadable = Words::kMessageNotRead;  // why a content has no digests
    bool m_isRead = false;  // certificates and signers, whatever is with the content
    Companions m_companions;
    // Each certificate is judged once for each time.
    std::map<std::pair<const X509*, std::optional<std::time_t>>, ChainVerdict> m_verdicts;
    std::set<const X509*> m_described;  // those whose issuers were described
    std::size_t m_room = 0;             // octets of issuers that may be described
    std::vector<X509Ptr> m_found;       // signers on signatures, of stores
    std::size_t m_comparisons = 0;      // that may still be made to find them
    ChainRules m_rules;
    int m_stampsLeft;    // time stamps that are looked at
    int m_searchesLeft;  // for their signers
};

}  // namespace ca
