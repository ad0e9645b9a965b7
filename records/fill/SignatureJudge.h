#pragma once

#include <cstddef>

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
};

}  // namespace ca
