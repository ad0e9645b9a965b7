#include "asn1/Oid.h"
#include "asn1/algorithms/PasswordParameters.h"
#include "records/objects/DescriptionParts.h"
#include "records/objects/Reading.h"
#include "records/text/Decoded.h"
#include "records/text/ParametersText.h"

#include <string_view>

// Encryption with a password (RFC 8018, RFC 7292, B, RFC 7914).

namespace {

using ca::CDescriptionBuilder;
using ca::FieldId;
using ca::Of;

const ca::OidInfo* TypeOf(const CAsn1AlgorithmIdentifier& algorithm) {
    return ca::FindOid(OctetsOf(algorithm.Algorithm()));
}

// The parameters of an algorithm; empty when there are none.
std::span<const unsigned char> ParametersOf(const CAsn1AlgorithmIdentifier& algorithm) {
    const CAsn1Any* parameters = algorithm.Parameters();
    return parameters != nullptr ? parameters->Raw() : std::span<const unsigned char>();
}

// RFC 8018, A.2; prf is DEFAULT algid-hmacWithSHA1. The salt by its size: its octets say nothing.
void SayPbkdf2(CDescriptionBuilder& builder, std::span<const unsigned char> octets) {
    const ca::CReading<CAsn1Pbkdf2Params> params(octets, builder);
    if (params.Get() == nullptr) {
        return;
    }
    if (params.Get()->Prf() != nullptr) {
        ca::SayAlgorithm(builder, FieldId::kPseudoRandom, params.Get()->Prf());
    } else {
        builder.Text(FieldId::kPseudoRandom, ca::COid("hmacWithSHA1")->Name());
    }
    ca::SayNumber(builder, FieldId::kIterations, params.Get()->IterationCount());
    ca::SaySize(builder, FieldId::kSaltSize, Of(params.Get()->Salt(), &CAsn1Pbkdf2Salt::Specified));
}

// RFC 7914, 7.
void SayScrypt(CDescriptionBuilder& builder, std::span<const unsigned char> octets) {
    const ca::CReading<CAsn1ScryptParams> params(octets, builder);
    ca::SayNumber(builder, FieldId::kCost, Of(params.Get(), &CAsn1ScryptParams::CostParameter));
    ca::SayNumber(builder, FieldId::kBlockSize, Of(params.Get(), &CAsn1ScryptParams::BlockSize));
    ca::SayNumber(builder, FieldId::kParallelization,
                  Of(params.Get(), &CAsn1ScryptParams::ParallelizationParameter));
    ca::SaySize(builder, FieldId::kSaltSize, Of(params.Get(), &CAsn1ScryptParams::Salt));
}

void SayKeyDerivation(CDescriptionBuilder& builder, const CAsn1AlgorithmIdentifier* function) {
    if (function == nullptr) {
        return;
    }
    const ca::OidInfo* const type = TypeOf(*function);
    if (type != ca::COid("PBKDF2") && type != ca::COid("id-scrypt")) {
        ca::SayWithParameters(builder, FieldId::kKeyDerivation, function);
        return;
    }
    ca::SayAlgorithm(builder, FieldId::kKeyDerivation, function);
    // Two functions have fields of their own; the others are said in one line.
    (type == ca::COid("PBKDF2") ? SayPbkdf2 : SayScrypt)(builder, ParametersOf(*function));
}

// PBES1 and the schemes of PKCS #12 have the same parameters.
void SayPbes1(CDescriptionBuilder& builder, std::span<const unsigned char> octets) {
    const ca::CReading<CAsn1PbeParameter> params(octets, builder);
    ca::SayNumber(builder, FieldId::kIterations,
                  Of(params.Get(), &CAsn1PbeParameter::IterationCount));
    ca::SaySize(builder, FieldId::kSaltSize, Of(params.Get(), &CAsn1PbeParameter::Salt));
}

}  // namespace

namespace ca {

void SayPasswordScheme(CDescriptionBuilder& builder, FieldId id,
                       const CAsn1AlgorithmIdentifier* algorithm) {
    if (algorithm == nullptr) {
        return;
    }
    const OidInfo* const type = TypeOf(*algorithm);
    const std::span<const unsigned char> params = ParametersOf(*algorithm);
    // PBES2 (RFC 8018, A.4): derivation and cipher apart.
    if (type == COid("PBES2")) {
        SayAlgorithm(builder, id, algorithm);
        const CReading<CAsn1Pbes2Params> scheme(params, builder);
        SayKeyDerivation(builder, Of(scheme.Get(), &CAsn1Pbes2Params::KeyDerivationFunc));
        SayWithParameters(builder, FieldId::kCipher,
                          Of(scheme.Get(), &CAsn1Pbes2Params::EncryptionScheme));
    } else if (type == COid("PBMAC1")) {
        // PBMAC1 (RFC 8018, A.5), as RFC 9579 has it in key stores.
        SayAlgorithm(builder, id, algorithm);
        const CReading<CAsn1Pbmac1Params> scheme(params, builder);
        SayKeyDerivation(builder, Of(scheme.Get(), &CAsn1Pbmac1Params::KeyDerivationFunc));
        SayAlgorithm(builder, FieldId::kMacAlgorithm,
                     Of(scheme.Get(), &CAsn1Pbmac1Params::MessageAuthScheme));
    } else if (type != nullptr && std::string_view(type->shortName).starts_with("pbeWith")) {
        // The schemes of PBES1 and of PKCS #12 (RFC 7292, C) are told by their names, as the table
        // has them all.
        SayAlgorithm(builder, id, algorithm);
        SayPbes1(builder, params);
    } else {
        SayWithParameters(builder, id, algorithm);
    }
}

}  // namespace ca
