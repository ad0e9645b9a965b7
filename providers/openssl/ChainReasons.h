#pragma once

#include "providers/openssl/Chain.h"

namespace ca {

/// What a verdict was found with.
struct ChainEvidence {
    const STACK_OF(X509_CRL) * fromMessage;  ///< revocation lists; null: none
    const std::vector<CrlPtr>* fromStores;
    const ChainRules& rules;
    bool isCrlEnabled;
};

/// Why a verdict is as it is: a line for each certificate of the path with its period and how it
/// stands with its revocation, and OpenSSL's words with the one that failed.
/// \param depth  index of that one.
std::wstring ChainReasons(const ChainVerdict& verdict, const std::wstring& why, int depth,
                          const ChainEvidence& evidence);

}  // namespace ca
