#include "asn1/Oid.h"
#include "asn1/cms/CertificateTrustList.h"
#include "asn1/cms/CompressedData.h"
#include "asn1/cms/ContentCollection.h"
#include "asn1/cms/EncryptedData.h"
#include "asn1/cms/SignedData.h"
#include "asn1/views/MessageViews.h"
#include "common/DecimalText.h"
#include "records/objects/Describers.h"
#include "records/objects/DescriptionParts.h"
#include "records/objects/MessageParts.h"
#include "records/text/Decoded.h"
#include "records/text/TrustListText.h"

#include <string_view>

// Messages that no operation describes (RFC 5652, RFC 3274, RFC 4073).

namespace {

using ca::CDescriptionBuilder;
using ca::FieldForm;
using ca::FieldId;
using ca::Of;
using ca::Word;
using Value = std::span<const unsigned char>;

// What octets hold, where they are an object that is known. An attribute or an algorithm is too
// small a pattern for octets that may be anything.
void SayInner(CDescriptionBuilder& builder, Value octets) {
    const ca::ObjectKind* kind = ca::RecogniseObject({{}, {}, octets});
    if (kind != nullptr && kind->name != std::string_view("attribute") &&
        kind->name != std::string_view("algorithm")) {
        builder.Object(FieldId::kContent, *kind, octets, kind->Name());
    }
}

// How many there are, or that there are none.
template <class List>
void SayNumberOf(CDescriptionBuilder& builder, FieldId id, const List* list) {
    const std::size_t count = list != nullptr ? list->Count() : 0;
    builder.Text(id, count != 0 ? ca::DecimalText(count) : ca::WordText(Word::kNone));
}

// CertificateTrustList: the entries are only counted, as there may be thousands of digests.
void SayTrustListMembers(CDescriptionBuilder& builder, const CAsn1CertificateTrustList& list) {
    ca::SayList(
        builder, FieldId::kUsage, list.SubjectUsage(),
        [&](const CAsn1ObjectIdentifier& usage) { ca::SayOid(builder, builder.Id(), &usage); });
    ca::SayOctets(builder, FieldId::kListIdentifier, list.ListIdentifier());
    ca::SaySerial(builder, FieldId::kNumber, list.SequenceNumber());
    ca::SayTime(builder, FieldId::kThisUpdate, list.CtlThisUpdate());
    ca::SayTime(builder, FieldId::kNextUpdate, list.CtlNextUpdate());
    ca::SayWithParameters(builder, FieldId::kAlgorithm, list.SubjectAlgorithm());
    SayNumberOf(builder, FieldId::kEntries, list.TrustedSubjects());
    // Trust lists repeat extensions, which certificates may not.
    ca::SayExtensionList(builder, FieldId::kExtensions, list.CtlExtensions(),
                         ca::Repeats::kAllowed);
}

// A message without signers: a store of certificates as a rule (RFC 5652, 5.1).
void SaySignedData(CDescriptionBuilder& builder, const CAsn1SignedData& message) {
    ca::SayNumber(builder, FieldId::kVersion, message.Version());
    SayNumberOf(builder, FieldId::kSigners, message.SignerInfos());
    SayNumberOf(builder, FieldId::kCertificates, message.Certificates());
    SayNumberOf(builder, FieldId::kCrls, message.Crls());
    ca::SayList(builder, FieldId::kDigestAlgorithms, message.DigestAlgorithms(),
                [&](const CAsn1AlgorithmIdentifier& algorithm) {
                    ca::SayAlgorithm(builder, builder.Id(), &algorithm);
                });
    ca::SayEncapsulated(builder, message.EncapContentInfo());
}

}  // namespace

namespace ca {

void SayTrustListFields(CDescriptionBuilder& builder, Value octets) {
    const CReading<CAsn1CertificateTrustList> list(octets, builder);
    if (list.Get() != nullptr) {
        SayTrustListMembers(builder, *list.Get());
    }
}

void SayEncapsulated(CDescriptionBuilder& builder, const CAsn1EncapsulatedContentInfo* content) {
    SayOid(builder, FieldId::kContentType,
           Of(content, &CAsn1EncapsulatedContentInfo::EContentType));
    if (content == nullptr || content->EContent() == nullptr) {
        builder.Absent(FieldId::kContentSize, Word::kNotEnclosed);
        return;
    }
    // CMS wraps the content into an OCTET STRING, PKCS #7 does not (RFC 5652, 5.2.1).
    const bool isWrapped = (content->EContent()->Tag() & ~kAsn1ConstructedBit) == kAsn1OctetString;
    const Value octets =
        isWrapped ? builder.Joined(content->EContent()) : content->EContent()->Raw();
    builder.Text(FieldId::kContentSize, OctetsCountText(octets.size()));
    if (IsOid(OctetsOf(content->EContentType()), "msCTL")) {
        const CDescriptionBuilder::Level level(builder, FieldId::kContent, FieldForm::kGroup);
        SayTrustListFields(builder, octets);
    } else if (IsOid(OctetsOf(content->EContentType()), "id-ct-TSTInfo")) {
        const CDescriptionBuilder::Level level(builder, FieldId::kContent, FieldForm::kGroup);
        SayTimeStampInfo(builder, octets);
    } else {
        SayInner(builder, octets);
    }
}

// Some programs save the SignedData without its ContentInfo.
void DescribeEmptySignedData(const ObjectSource& source, CDescriptionBuilder& builder) {
    const Value octets = builder.Mended(source.octets);
    const bool isMessage = CAsn1ContentInfoView(FirstElement(octets)).HasContentType();
    std::optional<CMessage> message;
    if (isMessage) {
        message.emplace(octets, builder);
    }
    const CReading<CAsn1SignedData> data(isMessage ? message->Content() : octets, builder);
    if (data.Get() != nullptr) {
        SaySignedData(builder, *data.Get());
    }
}

// RFC 5652, 4: the content, maybe of another kind that is known.
void DescribeData(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CMessage message(source.octets, builder);
    if (message.Content().empty()) {
        builder.Absent(FieldId::kContentSize, Word::kNotEnclosed);
        return;
    }
    const CReading<CAsn1OctetString> content(message.Content(), builder);
    const Value octets = builder.Joined(content.Get());
    builder.Text(FieldId::kContentSize, OctetsCountText(octets.size()));
    SayInner(builder, octets);
}

// RFC 5652, 7.
void DescribeDigestedData(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CMessage message(source.octets, builder);
    const CReading<CAsn1DigestedData> data(message.Content(), builder);
    if (data.Get() != nullptr) {
        SayNumber(builder, FieldId::kVersion, data.Get()->Version());
        SayDigest(builder, FieldId::kDigest, data.Get()->DigestAlgorithm(), data.Get()->Digest());
        SayEncapsulated(builder, data.Get()->EncapContentInfo());
    }
}

// RFC 5652, 8: the key is a matter of whoever encrypted it.
void DescribeEncryptedData(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CMessage message(source.octets, builder);
    const CReading<CAsn1EncryptedData> data(message.Content(), builder);
    if (data.Get() == nullptr) {
        return;
    }
    SayNumber(builder, FieldId::kVersion, data.Get()->Version());
    if (const auto* content = data.Get()->EncryptedContentInfo()) {
        SayOid(builder, FieldId::kContentType, content->ContentType());
        SayPasswordScheme(builder, FieldId::kEncryption, content->ContentEncryptionAlgorithm());
        if (content->EncryptedContent() != nullptr) {
            SaySize(builder, FieldId::kEncryptedSize, content->EncryptedContent());
        } else {
            builder.Absent(FieldId::kEncryptedSize, Word::kNotEnclosed);
        }
    }
    SayAttributeList(builder, FieldId::kAttributes, data.Get()->UnprotectedAttrs(),
                     AttributeValues::kAll);
}

// RFC 3274.
void DescribeCompressedData(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CMessage message(source.octets, builder);
    const CReading<CAsn1CompressedData> data(message.Content(), builder);
    if (data.Get() == nullptr) {
        return;
    }
    SayNumber(builder, FieldId::kVersion, data.Get()->Version());
    SayWithParameters(builder, FieldId::kCompression, data.Get()->CompressionAlgorithm());
    // What is compressed is not unpacked: it may be any size.
    if (const auto* content = data.Get()->EncapContentInfo()) {
        SayOid(builder, FieldId::kContentType, content->EContentType());
        if (content->EContent() != nullptr) {
            builder.Text(FieldId::kCompressedSize,
                         OctetsCountText(builder.Joined(content->EContent()).size()));
        }
    }
}

// RFC 4073, 2.
void DescribeContentCollection(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CMessage message(source.octets, builder);
    const CReading<CAsn1SequenceOf<CAsn1Any>> members(message.Content(), builder);
    SayList(builder, FieldId::kContents, members.Get(),
            [&](const CAsn1Any& member) { SayMessage(builder, builder.Id(), member.Raw()); });
}

// RFC 4073, 3.
void DescribeContentWithAttributes(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CMessage message(source.octets, builder);
    const CReading<CAsn1ContentWithAttributes> data(message.Content(), builder);
    if (data.Get() == nullptr) {
        return;
    }
    if (data.Get()->Content() != nullptr) {
        SayMessage(builder, FieldId::kContent, data.Get()->Content()->Raw());
    }
    if (data.Get()->Attrs() != nullptr) {
        SayAttributesIn(builder, FieldId::kAttributes, data.Get()->Attrs()->ContentOctets());
    }
}

// Of a type that nobody describes: what can be said of any.
void DescribeOtherContent(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CMessage message(source.octets, builder);
    SayOid(builder, FieldId::kContentType, message.Type());
    builder.Text(FieldId::kContentSize, OctetsCountText(message.Content().size()));
}

void DescribeTrustList(const ObjectSource& source, CDescriptionBuilder& builder) {
    const Value octets = builder.Mended(source.octets);
    if (!CAsn1TrustListView(FirstElement(octets)).IsBareMembers()) {
        SayTrustListFields(builder, octets);
        return;
    }
    // The members alone.
    const CAsn1Element whole{kAsn1Sequence, /*indefinite=*/false, octets, octets};
    CAsn1Block block;
    BindBlock(block, whole, 0);
    CAsn1CertificateTrustList list(&block);
    list.SetElement(whole);
    try {
        list.Decode();
    } catch (const Exception& fault) {
        builder.Fault(fault.message);
    }
    SayTrustListMembers(builder, list);
}

}  // namespace ca
