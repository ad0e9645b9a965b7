#pragma once

#include "asn1/views/AlgorithmViews.h"

#include <string>

class CAsn1OctetString;

namespace ca {

/// The parameters of an algorithm in one line.
struct ParametersForms {
    std::wstring text;    ///< ", " between parts; empty when there are none, or none that are known
    std::wstring digest;  ///< the name of the digest that the parameters of RSA-PSS, RSA-OAEP give
    std::wstring error;   ///< what could not be read, shown as "Unreadable value: " in `text`
};

/// Says the parameters of an AlgorithmIdentifier (RFC 5280, 4.1.1.2):
///   RSA-PSS (RFC 4055, 3.1)      "SHA-256, MGF1 SHA-256, 32", the last the salt's octets
///   RSA-OAEP (RFC 4055, 4.1)     "SHA-256, MGF1 SHA-256"
///   PBKDF2, scrypt              "HMAC with SHA-256, 10000", iterations; the costs of scrypt
///   PBES2, PBMAC1               how the key comes from the password; what it is used with
///   key agreement, PWRI-KEK     the key wrap or cipher, with its own parameters
///   GOST keys and ciphers       the parameter sets
///   RC2                         "128 bit", the effective size of the key
ParametersForms DescribeParameters(const CAsn1AlgorithmView& algorithm);

/// The same, and for algorithms that are not known the algorithm which their parameters begin with.
ParametersForms DescribeInnerAlgorithm(const CAsn1AlgorithmView& algorithm);

/// The parameter set that `key` was encrypted with for a GOST key (RFC 4490, 4.2.1); "" for other
/// algorithms, and for octets that are not such a key.
std::wstring GostTransportText(const CAsn1AlgorithmView& algorithm, const CAsn1OctetString& key);

}  // namespace ca
