#pragma once

#include <cstddef>
#include <span>

namespace ca {

struct SignInfo;

/// Puts verdicts into the records of a message's signatures while they are described.
class ISignatureJudge {
  public:
    ISignatureJudge() = default;
    ISignatureJudge(const ISignatureJudge&) = delete;
    ISignatureJudge& operator=(const ISignatureJudge&) = delete;
    virtual ~ISignatureJudge() = default;

    /// \param signer  index in SignedData.signerInfos (RFC 5652, 5.1), as encoded; one that is no
    ///                readable SignerInfo counts too.
    /// \param record  described already, its results saying "not verified".
    virtual void Judge(std::size_t signer, SignInfo& record) = 0;
    /// The same of a signature on a signature (RFC 5652, 11.4), which may be nested.
    /// \param value   of the signature that is signed: the octets that this one is over.
    /// \param signer  its SignerInfo as encoded.
    virtual void JudgeCountersignature(std::span<const unsigned char> value,
                                       std::span<const unsigned char> signer, SignInfo& record) = 0;
};

}  // namespace ca
