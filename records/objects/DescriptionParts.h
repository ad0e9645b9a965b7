#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Attribute.h"
#include "asn1/x509/Extension.h"
#include "asn1/x509/Name.h"
#include "asn1/x509/SubjectPublicKeyInfo.h"
#include "records/objects/DescriptionBuilder.h"

#include <span>

// Fields that many kinds of objects have. Null says nothing.

namespace ca {

struct PublicKeyForms;

void SayNumber(CDescriptionBuilder& builder, FieldId id, const CAsn1Integer* number);
void SayOctets(CDescriptionBuilder& builder, FieldId id, const CAsn1OctetString* octets);
void SaySerial(CDescriptionBuilder& builder, FieldId id, const CAsn1Integer* serial);
void SayOid(CDescriptionBuilder& builder, FieldId id, const CAsn1ObjectIdentifier* oid);
void SayAlgorithm(CDescriptionBuilder& builder, FieldId id,
                  const CAsn1AlgorithmIdentifier* algorithm);
/// The algorithm with its parameters: "AES-256 (CBC)", "PBES2, PBKDF2, ...".
void SayWithParameters(CDescriptionBuilder& builder, FieldId id,
                       const CAsn1AlgorithmIdentifier* algorithm);
void SayName(CDescriptionBuilder& builder, FieldId id, const CAsn1Name* name);
/// A time of whatever type.
void SayTime(CDescriptionBuilder& builder, FieldId id, const CAsn1Object* time);
/// A string of whatever type.
void SayString(CDescriptionBuilder& builder, FieldId id, const CAsn1Object* text);
/// "SHA-256: hex"
void SayDigest(CDescriptionBuilder& builder, FieldId id, const CAsn1AlgorithmIdentifier* algorithm,
               const CAsn1OctetString* digest);
/// "12 octets"; what they are is not said.
void SaySize(CDescriptionBuilder& builder, FieldId id, const CAsn1OctetString* octets);

/// Whether an extension may be there more than once: it is a name with a value then.
enum class Repeats : std::uint8_t { kFault, kAllowed };
/// Each extension with its text.
void SayExtensionList(CDescriptionBuilder& builder, FieldId id, const CAsn1Extensions* extensions,
                      Repeats repeats = Repeats::kFault);

/// What of the values of attributes may be shown.
enum class AttributeValues : std::uint8_t {
    kAll,
    kKnown,  ///< beside secrets: of types that the table does not know only the size
};
/// Each attribute with its text. Those that request extensions are a list of these, after it.
void SayAttributeList(CDescriptionBuilder& builder, FieldId id,
                      const CAsn1SetOf<CAsn1Attribute>* attributes, AttributeValues shown);

/// The same for attributes one after the other, whatever holds them.
void SayAttributesIn(CDescriptionBuilder& builder, FieldId id,
                     std::span<const unsigned char> attributes);

/// Algorithm and parameters of a key, and the key itself where there is one.
void SayKey(CDescriptionBuilder& builder, const PublicKeyForms& key);
void SayPublicKey(CDescriptionBuilder& builder, const CAsn1SubjectPublicKeyInfo* key);

/// How something is encrypted with a password, or authenticated: the scheme, how the key comes from
/// the password and how often, the cipher. Any other algorithm is said with its parameters.
void SayPasswordScheme(CDescriptionBuilder& builder, FieldId id,
                       const CAsn1AlgorithmIdentifier* algorithm);

/// A certificate, attribute certificate or revocation list, of which a description of its own
/// tells more; anything else as octets.
void SaySignedObject(CDescriptionBuilder& builder, FieldId id,
                     std::span<const unsigned char> octets);
/// Each of them.
void SaySignedObjects(CDescriptionBuilder& builder, FieldId id,
                      const CAsn1SequenceOf<CAsn1Any>* objects);

/// A signed message, such as a time-stamp token: an object of its own.
void SayMessage(CDescriptionBuilder& builder, FieldId id,
                std::span<const unsigned char> contentInfo);

}  // namespace ca
