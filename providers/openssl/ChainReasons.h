#pragma once

#include "providers/openssl/Chain.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace ca {

/// A name as RFC 2253 writes it, with its characters as they are, but for those that do not show.
std::wstring NameText(const X509_NAME* name);

/// A time as verdicts show it, in UTC; "?" for one that cannot be read.
std::wstring TimeText(const ASN1_TIME* time);
std::wstring TimeText(std::time_t time);
/// Seconds since 1970; none for one that cannot be read.
std::optional<std::time_t> SecondsOf(const ASN1_TIME* time);

/// What a verdict was found with.
struct ChainEvidence {
    const STACK_OF(X509_CRL) * lists;        ///< of revocation; null: none
    const STACK_OF(X509_CRL) * fromMessage;  ///< those of them that are not fetched ones, first
    const std::vector<CrlPtr>* fromStores;
    const OcspFindings& findings;
    const ChainRules& rules;
    bool isCrlEnabled;
};

/// Why a verdict is as it is: a line for each certificate of the path with its period and how it
/// stands with its revocation, and OpenSSL's words with the one that failed.
/// \param depth  index of that one.
std::wstring ChainReasons(const ChainVerdict& verdict, const std::wstring& why, int depth,
                          const ChainEvidence& evidence);

}  // namespace ca
