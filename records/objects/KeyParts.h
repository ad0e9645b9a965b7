#pragma once

#include "asn1/keys/PrivateKeyInfo.h"
#include "records/objects/DescriptionBuilder.h"

// What describers say of private keys: algorithm, size or curve, attributes, how the key is
// encrypted; the public key where it stands beside. Never the key.

namespace ca {

void SayPrivateKeyInfo(CDescriptionBuilder& builder, const CAsn1PrivateKeyInfo& key);
void SayEncryptedKey(CDescriptionBuilder& builder, const CAsn1EncryptedPrivateKeyInfo& key);

}  // namespace ca
