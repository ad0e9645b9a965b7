#include "records/text/ParametersText.h"

#include "asn1/Oid.h"
#include "asn1/algorithms/CipherParameters.h"
#include "asn1/algorithms/GostParameters.h"
#include "asn1/algorithms/PasswordParameters.h"
#include "asn1/algorithms/RsaParameters.h"
#include "common/DecimalText.h"
#include "common/Lazy.h"
#include "records/text/AlgorithmText.h"
#include "records/text/Decoded.h"
#include "records/text/OutlineText.h"
#include "records/text/PolicyText.h"
#include "records/text/SharedFormatters.h"

#include <string_view>
#include <utility>
#include <vector>

namespace {

using ca::ParametersForms;
using Value = std::span<const unsigned char>;

// Parameters inside parameters that are said: a wrap of a cipher, a password's key in PBES2.
constexpr unsigned kMaxNested = 3;

// What is being said, and how deep it stands in other parameters.
struct Saying {
    ParametersForms forms;
    unsigned depth = 0;

    void Add(std::wstring_view part) { ca::AppendListed(forms.text, part); }
    void AddError(std::wstring_view fault) {
        forms.error += forms.error.empty() ? L"" : L"; ";
        forms.error += fault;
    }
};

Saying Describe(const CAsn1AlgorithmView& algorithm, unsigned depth);

// Says parameters that could be read whole; others are shown by their octets. RSASSA-PSS has
// defaults for all members: read in part, it would show these as if they had been given.
template <class T, class SayOne>
void Read(Value params, Saying& saying, SayOne say) {
    const ca::CPartlyDecoded<T> read(params);
    if (read.IsWhole()) {
        say(*read.Get());
    } else {
        saying.Add(ca::UnreadableText(params));
        saying.AddError(read.Fault());
    }
}

// An algorithm with its parameters.
void SayAlgorithm(const CAsn1AlgorithmView& algorithm, Saying& saying) {
    saying.Add(ca::OidName(algorithm.Algorithm()));
    if (saying.depth < kMaxNested) {
        const Saying inner = Describe(algorithm, saying.depth + 1);
        saying.Add(inner.forms.text);
        if (!inner.forms.error.empty()) {
            saying.AddError(inner.forms.error);
        }
    }
}

void SayNumber(const CAsn1Integer* number, Saying& saying) {
    if (number != nullptr) {
        saying.Add(ca::NumberText(number));
    }
}

// ---- RSA ----

std::wstring Sha1Name() {
    return ca::COid("id-sha1")->Name();
}

// The digest is SHA-1 when none is given.
std::wstring DigestName(const CAsn1AlgorithmIdentifier* digest) {
    return digest != nullptr ? ca::OidName(OctetsOf(digest->Algorithm())) : Sha1Name();
}

// MaskGenAlgorithm (RFC 8017, A.2.1).
// The mask is one of MGF1 with SHA-1 when none is given; MGF1 has a digest as its parameters.
void SayMask(const CAsn1AlgorithmIdentifier* mask, Saying& saying) {
    if (mask == nullptr) {
        saying.Add(L"MGF1 " + Sha1Name());
    } else if (!ca::IsOid(OctetsOf(mask->Algorithm()), "id-mgf1")) {
        saying.Add(ca::OidName(OctetsOf(mask->Algorithm())));
    } else if (mask->Parameters() == nullptr) {
        saying.Add(L"MGF1");
    } else {
        Read<CAsn1AlgorithmIdentifier>(mask->Parameters()->Raw(), saying, [&](const auto& digest) {
            saying.Add(L"MGF1 " + DigestName(&digest));
        });
    }
}

// RSASSA-PSS-params (RFC 8017, A.2.3).
void SayPss(Value value, Saying& saying) {
    constexpr std::int64_t kSaltOctets = 20;  // saltLength's DEFAULT
    Read<CAsn1RsassaPssParams>(value, saying, [&](const CAsn1RsassaPssParams& params) {
        saying.forms.digest = DigestName(params.HashAlgorithm());
        saying.Add(saying.forms.digest);
        SayMask(params.MaskGenAlgorithm(), saying);
        saying.Add(ca::DecimalText(IntegerOf(params.SaltLength(), kSaltOctets)));
    });
}

// RSAES-OAEP-params (RFC 8017, A.2.1). The label is not said: it is empty as a rule.
void SayOaep(Value value, Saying& saying) {
    Read<CAsn1RsaesOaepParams>(value, saying, [&](const CAsn1RsaesOaepParams& params) {
        saying.forms.digest = DigestName(params.HashFunc());
        saying.Add(saying.forms.digest);
        SayMask(params.MaskGenFunc(), saying);
    });
}

// ---- Passwords ----

// PBEParameter (RFC 8018, A.3). The salt says nothing to people.
void SayPbe(Value value, Saying& saying) {
    Read<CAsn1PbeParameter>(value, saying, [&](const CAsn1PbeParameter& params) {
        SayNumber(params.IterationCount(), saying);
    });
}

// PBKDF2-params (RFC 8018, A.2); prf is DEFAULT algid-hmacWithSHA1.
void SayPbkdf2(Value value, Saying& saying) {
    Read<CAsn1Pbkdf2Params>(value, saying, [&](const CAsn1Pbkdf2Params& params) {
        saying.Add(params.Prf() != nullptr ? ca::OidName(OctetsOf(params.Prf()->Algorithm()))
                                           : ca::COid("hmacWithSHA1")->Name());
        SayNumber(params.IterationCount(), saying);
    });
}

// scrypt-params (RFC 7914, 7): N, r and p.
void SayScrypt(Value value, Saying& saying) {
    Read<CAsn1ScryptParams>(value, saying, [&](const CAsn1ScryptParams& params) {
        SayNumber(params.CostParameter(), saying);
        SayNumber(params.BlockSize(), saying);
        SayNumber(params.ParallelizationParameter(), saying);
    });
}

// PBES2-params (RFC 8018, A.4): how the key is made, then what it encrypts with.
void SayPbes2(Value value, Saying& saying) {
    Read<CAsn1Pbes2Params>(value, saying, [&](const CAsn1Pbes2Params& params) {
        SayAlgorithm(*params.KeyDerivationFunc(), saying);
        SayAlgorithm(*params.EncryptionScheme(), saying);
    });
}

// PBMAC1-params (RFC 8018, A.5).
void SayPbmac1(Value value, Saying& saying) {
    Read<CAsn1Pbmac1Params>(value, saying, [&](const CAsn1Pbmac1Params& params) {
        SayAlgorithm(*params.KeyDerivationFunc(), saying);
        SayAlgorithm(*params.MessageAuthScheme(), saying);
    });
}

// ---- Ciphers and key wraps ----

// The parameters are the algorithm that a key is wrapped with (RFC 5753, 7.1.4, RFC 3211, 2.3).
void SayWrap(Value value, Saying& saying) {
    Read<CAsn1AlgorithmIdentifier>(
        value, saying, [&](const CAsn1AlgorithmIdentifier& wrap) { SayAlgorithm(wrap, saying); });
}

// RC2-CBC-Parameter (RFC 8018, B.2.3). The version stands for the effective bits of the key.
void SayRc2(Value value, Saying& saying) {
    // Without a version (RFC 2268, 6).
    constexpr std::int64_t kNoVersionBits = 32;
    constexpr std::pair<std::int64_t, std::int64_t> kVersions[] = {{160, 40}, {120, 64}, {58, 128}};
    Read<CAsn1Rc2CbcParameter>(value, saying, [&](const CAsn1Rc2CbcParameter& params) {
        std::int64_t bits = IntegerOf(params.Rc2ParameterVersion(), kNoVersionBits);
        for (const auto& [version, size] : kVersions) {
            bits = params.Rc2ParameterVersion() != nullptr && bits == version ? size : bits;
        }
        saying.Add(ca::DecimalText(bits) + L' ' + SetZORNAMessage(kMsgBit));
    });
}

// ---- GOST ----

// Messages name the algorithm of the key also where they mean an agreement, whose parameters are a
// key wrap.
void SayGostKey(Value value, Saying& saying) {
    if (CAsn1AlgorithmView(ca::FirstElement(value)).Parameters().tag == kAsn1Sequence) {
        SayWrap(value, saying);
        return;
    }
    // GostR3410-PublicKeyParameters (RFC 4491, 2.3; RFC 9215, 4): the curve, the digest, the
    // cipher.
    Read<CAsn1GostPublicKeyParameters>(value, saying, [&](const auto& params) {
        for (const auto* set :
             {params.PublicKeyParamSet(), params.DigestParamSet(), params.EncryptionParamSet()}) {
            saying.Add(set != nullptr ? ca::OidName(OctetsOf(set)) : L"");
        }
    });
}

// Gost28147-89-Parameters (RFC 4357): beside the initialization vector a set of S-boxes.
void SayGostCipher(Value value, Saying& saying) {
    Read<CAsn1Gost28147Parameters>(value, saying, [&](const auto& params) {
        saying.Add(ca::OidName(OctetsOf(params.EncryptionParamSet())));
    });
}

void SayGostWrap(Value value, Saying& saying) {
    Read<CAsn1Gost28147KeyWrapParameters>(value, saying, [&](const auto& params) {
        saying.Add(ca::OidName(OctetsOf(params.EncryptionParamSet())));
    });
}

using ParametersFormatter = void (*)(Value value, Saying& saying);

struct ParametersRow {
    ca::COid algorithm;
    ParametersFormatter say;
};
constexpr ParametersRow kRows[] = {
    {"id-RSASSA-PSS", SayPss},
    {"id-RSAES-OAEP", SayOaep},
    {"pbeWithMD2AndDES-CBC", SayPbe},
    {"pbeWithMD2AndRC2-CBC", SayPbe},
    {"pbeWithMD5AndDES-CBC", SayPbe},
    {"pbeWithMD5AndRC2-CBC", SayPbe},
    {"pbeWithSHA1AndDES-CBC", SayPbe},
    {"pbeWithSHA1AndRC2-CBC", SayPbe},
    {"pbeWithSHAAnd128BitRC4", SayPbe},
    {"pbeWithSHAAnd40BitRC4", SayPbe},
    {"pbeWithSHAAnd3-KeyTripleDES-CBC", SayPbe},
    {"pbeWithSHAAnd2-KeyTripleDES-CBC", SayPbe},
    {"pbeWithSHAAnd128BitRC2-CBC", SayPbe},
    {"pbeWithSHAAnd40BitRC2-CBC", SayPbe},
    {"PBKDF2", SayPbkdf2},
    {"PBES2", SayPbes2},
    {"PBMAC1", SayPbmac1},
    {"id-scrypt", SayScrypt},
    {"id-alg-PWRI-KEK", SayWrap},
    {"id-alg-ESDH", SayWrap},
    {"dhSinglePass-stdDH-sha1kdf-scheme", SayWrap},
    {"dhSinglePass-stdDH-sha256kdf-scheme", SayWrap},
    {"dhSinglePass-stdDH-sha384kdf-scheme", SayWrap},
    {"dhSinglePass-stdDH-sha512kdf-scheme", SayWrap},
    {"id-GostR3410-2001-CryptoPro-ESDH", SayWrap},
    {"id-GostR3410-2001DH", SayWrap},
    {"id-tc26-agreement-gost-3410-12-256", SayWrap},
    {"id-tc26-agreement-gost-3410-12-512", SayWrap},
    {"rc2-cbc", SayRc2},
    {"id-GostR3410-94", SayGostKey},
    {"id-GostR3410-2001", SayGostKey},
    {"id-tc26-gost3410-12-256", SayGostKey},
    {"id-tc26-gost3410-12-512", SayGostKey},
    {"id-Gost28147-89", SayGostCipher},
    {"id-Gost28147-89-None-KeyWrap", SayGostWrap},
    {"id-Gost28147-89-CryptoPro-KeyWrap", SayGostWrap},
};

ca::CLazy<ca::COidMap<ParametersFormatter>> formattersByAlgorithm([] {
    ca::COidMap<ParametersFormatter> formatters;
    for (const auto& [algorithm, say] : kRows) {
        formatters[*algorithm] = say;
    }
    return formatters;
});

// Null for an algorithm whose parameters nobody says.
ParametersFormatter FindFormatter(const CAsn1AlgorithmView& algorithm) {
    return formattersByAlgorithm.Get().Find(ca::FindOid(algorithm.Algorithm()));
}

Saying Describe(const CAsn1AlgorithmView& algorithm, unsigned depth) {
    Saying saying;
    saying.depth = depth;
    const CAsn1Element params = algorithm.Parameters();
    // NULL stands for none, which most algorithms of RSA have (RFC 3279, 2.2.1).
    if (params.raw.empty() || params.tag == kAsn1Null) {
        return saying;
    }
    if (const ParametersFormatter say = FindFormatter(algorithm)) {
        say(params.raw, saying);
    }
    return saying;
}

}  // namespace

namespace ca {

ParametersForms DescribeParameters(const CAsn1AlgorithmView& algorithm) {
    return Describe(algorithm, 0).forms;
}

ParametersForms DescribeInnerAlgorithm(const CAsn1AlgorithmView& algorithm) {
    ParametersForms forms = DescribeParameters(algorithm);
    const CAsn1Element params = algorithm.Parameters();
    // An algorithm in the parameters of one that nobody describes, as a key agreement has it.
    if (forms.text.empty() && params.tag == kAsn1Sequence) {
        forms.text = AlgorithmText(params);
    }
    return forms;
}

std::wstring GostTransportText(const CAsn1AlgorithmView& algorithm, const CAsn1OctetString& key) {
    // GostR3410-KeyTransport (RFC 4490, 4.2.1): the set of S-boxes stands beside the wrapped key.
    if (FindFormatter(algorithm) != SayGostKey) {
        return {};
    }
    std::vector<unsigned char> octets = OctetStringOf(&key);
    const CPartlyDecoded<CAsn1GostKeyTransport> transport(octets);
    if (!transport.IsWhole() || transport.Get()->TransportParameters() == nullptr) {
        return {};
    }
    return OidName(OctetsOf(transport.Get()->TransportParameters()->EncryptionParamSet()));
}

}  // namespace ca
