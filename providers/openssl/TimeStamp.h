#pragma once

#include "providers/openssl/MessageJudge.h"

#include <openssl/ts.h>

#include <ctime>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ca {

using StampInfoPtr = Owned<TS_TST_INFO, &TS_TST_INFO_free>;

/// What a time stamp proves.
struct StampFinding {
    std::optional<std::time_t> time;  ///< none: it is no good one
    bool isTrusted = false;           ///< its signer's path holds
    std::wstring words;               ///< the signer's name, or why it is not good or not trusted
};

/// The tokens in a signer's attribute signature-time-stamp (RFC 3161, appendix A), views of it.
/// \param left  how many may still be taken; what is given is taken off.
std::vector<std::span<const unsigned char>> TimeStampsOf(const CMS_SignerInfo* signer, int& left);

/// How a path to a time-stamp server is judged.
ChainRules StampRules(const PkiPolicy& policy, std::optional<std::time_t> time);

/// The TSTInfo (RFC 3161, 2.4.2) in a token; null for what is none.
StampInfoPtr StampInfoOf(const CMessageJudge& token);

/// Judges a token over `stamped`, of which it holds the digest: that it is one, its signature, its
/// signer's purpose and path, and its time against `now`.
StampFinding JudgeTimeStamp(const COpenSslLibrary& library, const PkiAlgorithms& allowed,
                            CMessageJudge& token, std::span<const unsigned char> stamped,
                            std::time_t now);

}  // namespace ca
