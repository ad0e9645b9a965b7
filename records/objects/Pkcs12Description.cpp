#include "asn1/Oid.h"
#include "asn1/cms/EncryptedData.h"
#include "asn1/cms/EnvelopedData.h"
#include "asn1/cms/SignedData.h"
#include "asn1/pkcs12/Pfx.h"
#include "common/DecimalText.h"
#include "records/objects/Describers.h"
#include "records/objects/DescriptionParts.h"
#include "records/objects/KeyParts.h"
#include "records/objects/Reading.h"
#include "records/text/Decoded.h"

// Key stores (RFC 7292). Nothing is decrypted, and what is secret is not shown.

namespace {

using ca::CDescriptionBuilder;
using ca::FieldForm;
using ca::FieldId;
using ca::Of;
using ca::Word;
using Value = std::span<const unsigned char>;

// Bags in bags that are described.
constexpr unsigned kMaxNested = 4;

Value ValueOf(const CAsn1Any* any) {
    return any != nullptr ? any->Raw() : Value();
}

// The encoding that an element wraps, if it is an OCTET STRING.
Value WrappedIn(CDescriptionBuilder& builder, Value octets) {
    const ca::CReading<CAsn1OctetString> wrapper(octets, builder);
    return builder.Joined(wrapper.Get());
}

void SayBags(CDescriptionBuilder& builder, Value safeContents, unsigned depth);

// ---- Bags ----

// keyBag: a key that is not encrypted (RFC 7292, 4.2.1).
void SayKeyBag(CDescriptionBuilder& builder, Value value, unsigned /*depth*/) {
    const ca::CReading<CAsn1PrivateKeyInfo> key(value, builder);
    if (key.Get() != nullptr) {
        ca::SayPrivateKeyInfo(builder, *key.Get());
    }
}

// pkcs8ShroudedKeyBag (RFC 7292, 4.2.2).
void SayShroudedKeyBag(CDescriptionBuilder& builder, Value value, unsigned /*depth*/) {
    const ca::CReading<CAsn1EncryptedPrivateKeyInfo> key(value, builder);
    if (key.Get() != nullptr) {
        ca::SayEncryptedKey(builder, *key.Get());
    }
}

// A certificate or a list, each in an OCTET STRING.
void SaySignedBag(CDescriptionBuilder& builder, Value value, FieldId id) {
    const ca::CReading<CAsn1TypedBag> bag(value, builder);
    ca::SayOid(builder, FieldId::kType, Of(bag.Get(), &CAsn1TypedBag::Type));
    const CAsn1Any* inner = Of(bag.Get(), &CAsn1TypedBag::Value);
    // An SDSI certificate is a text, not an object (RFC 7292, 4.2.3).
    if (inner != nullptr && !ca::IsOid(OctetsOf(bag.Get()->Type()), "sdsiCertificate")) {
        ca::SaySignedObject(builder, id, WrappedIn(builder, ValueOf(inner)));
    }
}

void SayCertBag(CDescriptionBuilder& builder, Value value, unsigned /*depth*/) {
    SaySignedBag(builder, value, FieldId::kCertificate);
}

void SayCrlBag(CDescriptionBuilder& builder, Value value, unsigned /*depth*/) {
    SaySignedBag(builder, value, FieldId::kCrl);
}

// secretBag: the kind of the secret and its size (RFC 7292, 4.2.5).
void SaySecretBag(CDescriptionBuilder& builder, Value value, unsigned /*depth*/) {
    const ca::CReading<CAsn1TypedBag> bag(value, builder);
    ca::SayOid(builder, FieldId::kType, Of(bag.Get(), &CAsn1TypedBag::Type));
    if (const CAsn1Any* secret = Of(bag.Get(), &CAsn1TypedBag::Value)) {
        builder.Text(FieldId::kSecretSize, ca::OctetsCountText(secret->ContentOctets().size()));
    }
}

void SayNestedBag(CDescriptionBuilder& builder, Value value, unsigned depth) {
    SayBags(builder, value, depth + 1);
}

struct BagRow {
    ca::COid type;
    void (*say)(CDescriptionBuilder& builder, Value value, unsigned depth);
};
constexpr BagRow kBags[] = {
    {"keyBag", SayKeyBag},       {"pkcs8ShroudedKeyBag", SayShroudedKeyBag},
    {"certBag", SayCertBag},     {"crlBag", SayCrlBag},
    {"secretBag", SaySecretBag}, {"safeContentsBag", SayNestedBag},
};

void SayBag(CDescriptionBuilder& builder, const CAsn1SafeBag& bag, unsigned depth) {
    ca::SayOid(builder, FieldId::kBagType, bag.BagId());
    // Known ones only: friendlyName and localKeyID are public, others may not be.
    ca::SayAttributeList(builder, FieldId::kAttributes, bag.BagAttributes(),
                         ca::AttributeValues::kKnown);
    const ca::OidInfo* const type = ca::FindOid(OctetsOf(bag.BagId()));
    for (const BagRow& row : kBags) {
        if (row.type == type && bag.BagValue() != nullptr) {
            row.say(builder, ValueOf(bag.BagValue()), depth);
        }
    }
}

void SayBags(CDescriptionBuilder& builder, Value safeContents, unsigned depth) {
    // Bags hold bags (RFC 7292, 4.2.6): the depth is a stranger's.
    if (depth > kMaxNested) {
        builder.Fault(ca::WordText(Word::kTooDeep));
        return;
    }
    const ca::CReading<CAsn1SequenceOf<CAsn1SafeBag>> bags(safeContents, builder);
    ca::SayGroups(builder, FieldId::kBags, bags.Get(),
                  [&](const CAsn1SafeBag& bag) { SayBag(builder, bag, depth); });
}

// ---- Contents ----

// id-data: contents that only the store as a whole protects.
void SayPlainContent(CDescriptionBuilder& builder, Value value) {
    builder.Text(FieldId::kProtection, Word::kNotEncrypted);
    SayBags(builder, WrappedIn(builder, value), /*depth=*/0);
}

void SayEncryptedContent(CDescriptionBuilder& builder, Value value) {
    const ca::CReading<CAsn1EncryptedData> data(value, builder);
    builder.Text(FieldId::kProtection, Word::kPasswordEncrypted);
    if (const auto* content = Of(data.Get(), &CAsn1EncryptedData::EncryptedContentInfo)) {
        ca::SayPasswordScheme(builder, FieldId::kEncryption, content->ContentEncryptionAlgorithm());
        ca::SaySize(builder, FieldId::kEncryptedSize, content->EncryptedContent());
    }
}

// Encrypted for recipients' keys instead of a password (RFC 7292, 3.1).
void SayEnvelopedContent(CDescriptionBuilder& builder, Value value) {
    const ca::CReading<CAsn1EnvelopedData> data(value, builder);
    builder.Text(FieldId::kProtection, Word::kKeyEncrypted);
    if (const auto* recipients = Of(data.Get(), &CAsn1EnvelopedData::RecipientInfos)) {
        builder.Text(FieldId::kRecipients, ca::DecimalText(recipients->Count()));
    }
    if (const auto* content = Of(data.Get(), &CAsn1EnvelopedData::EncryptedContentInfo)) {
        ca::SayWithParameters(builder, FieldId::kEncryption, content->ContentEncryptionAlgorithm());
        ca::SaySize(builder, FieldId::kEncryptedSize, content->EncryptedContent());
    }
}

void SayContent(CDescriptionBuilder& builder, const CAsn1ContentInfo& content) {
    ca::SayOid(builder, FieldId::kContentType, content.ContentType());
    const Value value = ValueOf(content.Content());
    const ca::OidInfo* const type = ca::FindOid(OctetsOf(content.ContentType()));
    if (value.empty()) {
        return;
    }
    if (type == ca::COid("id-data")) {
        SayPlainContent(builder, value);
    } else if (type == ca::COid("id-encryptedData")) {
        SayEncryptedContent(builder, value);
    } else if (type == ca::COid("id-envelopedData")) {
        SayEnvelopedContent(builder, value);
    }
}

// ---- The store ----

// MacData (RFC 7292, 4).
void SayMac(CDescriptionBuilder& builder, const CAsn1MacData* mac) {
    if (mac == nullptr) {
        return;
    }
    const CDescriptionBuilder::Level level(builder, FieldId::kMac, FieldForm::kGroup);
    ca::SayPasswordScheme(builder, FieldId::kAlgorithm,
                          Of(mac->Mac(), &CAsn1DigestInfo::DigestAlgorithm));
    // With PBMAC1 the iterations are those of its own parameters (RFC 9579, 5).
    const CAsn1AlgorithmIdentifier* scheme = Of(mac->Mac(), &CAsn1DigestInfo::DigestAlgorithm);
    if (ca::IsOid(OctetsOf(Of(scheme, &CAsn1AlgorithmIdentifier::Algorithm)), "PBMAC1")) {
        return;
    }
    if (mac->Iterations() != nullptr) {
        ca::SayNumber(builder, FieldId::kIterations, mac->Iterations());
    } else {
        builder.Text(FieldId::kIterations, L"1");  // the DEFAULT
    }
    ca::SaySize(builder, FieldId::kSaltSize, mac->MacSalt());
}

// What is authenticated: an OCTET STRING, or the content of a signed message.
Value SayIntegrity(CDescriptionBuilder& builder, const CAsn1Pfx& store) {
    const CAsn1ContentInfo* safe = store.AuthSafe();
    const CAsn1Any* content = Of(safe, &CAsn1ContentInfo::Content);
    if (content == nullptr) {
        return {};
    }
    // Any other type is taken for id-data, which is the only other one that is allowed (RFC 7292,
    // 4).
    if (!ca::IsOid(OctetsOf(safe->ContentType()), "id-signedData")) {
        if (store.MacData() != nullptr) {
            builder.Text(FieldId::kIntegrity, Word::kByPassword);
        } else {
            builder.Absent(FieldId::kIntegrity, Word::kNone);
        }
        return WrappedIn(builder, ValueOf(content));
    }
    builder.Text(FieldId::kIntegrity, Word::kBySignature);
    ca::SayMessage(builder, FieldId::kSignature, safe->Raw());
    const ca::CReading<CAsn1SignedData> message(ValueOf(content), builder);
    const auto* inner = Of(message.Get(), &CAsn1SignedData::EncapContentInfo);
    return builder.Joined(Of(inner, &CAsn1EncapsulatedContentInfo::EContent));
}

}  // namespace

namespace ca {

void DescribePkcs12(const ObjectSource& source, CDescriptionBuilder& builder) {
    // First: from here on nothing is shown by its octets.
    builder.HideOctets();
    const CReading<CAsn1Pfx> store(source.octets, builder);
    if (store.Get() == nullptr) {
        return;
    }
    SayNumber(builder, FieldId::kVersion, store.Get()->Version());
    const Value safe = SayIntegrity(builder, *store.Get());
    SayMac(builder, store.Get()->MacData());
    if (!safe.empty()) {
        const CReading<CAsn1SequenceOf<CAsn1ContentInfo>> contents(safe, builder);
        SayGroups(builder, FieldId::kContents, contents.Get(),
                  [&](const CAsn1ContentInfo& content) { SayContent(builder, content); });
    }
}

}  // namespace ca
