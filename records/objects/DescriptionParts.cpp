#include "records/objects/DescriptionParts.h"

#include "asn1/Oid.h"
#include "asn1/crl/CertificateList.h"
#include "asn1/views/CertificateViews.h"
#include "asn1/views/CrlViews.h"
#include "asn1/views/ExtensionView.h"
#include "common/Exception.h"
#include "records/fill/AttrCertInfoFill.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/CertificateBundle.h"
#include "records/fill/CrlInfoFill.h"
#include "records/fill/ExtensionFill.h"
#include "records/objects/ObjectKinds.h"
#include "records/objects/Reading.h"
#include "records/scan/LooksLike.h"
#include "records/text/AlgorithmText.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionList.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/ParametersText.h"
#include "records/text/PolicyText.h"
#include "records/text/SerialText.h"
#include "records/text/SharedFormatters.h"
#include "records/text/TimeText.h"

#include <set>
#include <string_view>

namespace ca {

namespace {

// Returns the identifier; empty when the extension could not be read.
Octets SayExtension(CDescriptionBuilder& builder, const CAsn1ExtensionView& extension) {
    CertInfoExtension record;
    std::wstring error;
    const ExtensionParts parts = FillExtension(extension, record, error);
    builder.Fault(error);
    // The text alone: without an identifier there is no name for a field.
    if (parts.oid.empty()) {
        builder.Element(record.formattedData);
        return {};
    }
    DescriptionField field;
    field.id = builder.Id();
    field.name = std::move(record.oidFriendlyName);
    field.oid = std::move(record.oidValue);
    field.text = std::move(record.formattedData);
    field.isCritical = record.critical;
    field.octets.assign(parts.value.begin(), parts.value.end());
    builder.Named(std::move(field));
    return parts.oid;
}

// PKCS #9 and Microsoft have an attribute each for the same extensions (RFC 2985, 5.4.2).
bool RequestsExtensions(Octets type) {
    const OidInfo* info = FindOid(type);
    return info == COid("extensionRequest") || info == COid("msExtReq");
}

std::wstring AttributeText(CDescriptionBuilder& builder, const CAsn1Attribute& attribute,
                           AttributeValues shown) {
    const Octets type = OctetsOf(attribute.Type());
    // In key stores unknown attributes may hold what is secret: their size is said.
    if (shown == AttributeValues::kKnown && FindOid(type) == nullptr) {
        return OctetsCountText(attribute.Values()->ContentOctets().size());
    }
    CTextLines lines;
    std::wstring error;
    SayAttributeValues(type, *attribute.Values(), lines, error);
    std::wstring text = lines.TakeOr(kMsgEmpty);
    AddValueError(error, type, lines.TakeFaults());
    builder.Fault(error);
    return text;
}

void SayAttribute(CDescriptionBuilder& builder, const CAsn1Attribute& attribute,
                  AttributeValues shown) {
    const Octets type = OctetsOf(attribute.Type());
    if (type.empty() || attribute.Values() == nullptr) {
        builder.Unreadable(builder.Id(), attribute.Raw());
        return;
    }
    DescriptionField field;
    field.id = builder.Id();
    field.name = OidName(type);
    field.oid = OidText(type);
    field.text = AttributeText(builder, attribute, shown);
    builder.Named(std::move(field));
}

// The names by which people know the object.
std::wstring SubjectOf(std::span<const unsigned char> octets, std::string_view kind) {
    if (kind == "certificate") {
        return ReadableName(CAsn1CertificateView(FirstElement(octets)).TbsCertificate().Subject());
    }
    if (kind == "crl") {
        return ReadableName(CAsn1CertificateListView(FirstElement(octets)).TbsCertList().Issuer());
    }
    return {};
}

}  // namespace

void SayNumber(CDescriptionBuilder& builder, FieldId id, const CAsn1Integer* number) {
    if (number != nullptr) {
        builder.Text(id, NumberText(number));
    }
}

void SayOctets(CDescriptionBuilder& builder, FieldId id, const CAsn1OctetString* octets) {
    builder.Text(id, Hex(builder.Joined(octets)));
}

void SaySerial(CDescriptionBuilder& builder, FieldId id, const CAsn1Integer* serial) {
    builder.Text(id, SerialText(OctetsOf(serial)));
}

void SayOid(CDescriptionBuilder& builder, FieldId id, const CAsn1ObjectIdentifier* oid) {
    if (oid != nullptr) {
        builder.Text(id, OidWithName(OctetsOf(oid)));
    }
}

void SayAlgorithm(CDescriptionBuilder& builder, FieldId id,
                  const CAsn1AlgorithmIdentifier* algorithm) {
    if (algorithm != nullptr) {
        builder.Text(id, AlgorithmText(*algorithm));
    }
}

void SayWithParameters(CDescriptionBuilder& builder, FieldId id,
                       const CAsn1AlgorithmIdentifier* algorithm) {
    if (algorithm == nullptr) {
        return;
    }
    // The name and the parameters apart, unlike AlgorithmText(), whose words hold for signatures.
    std::wstring text = OidName(OctetsOf(algorithm->Algorithm()));
    const ParametersForms parameters = DescribeParameters(*algorithm);
    AppendListed(text, parameters.text);
    builder.Text(id, std::move(text));
    builder.Fault(parameters.error);
}

void SayName(CDescriptionBuilder& builder, FieldId id, const CAsn1Name* name) {
    if (name != nullptr) {
        const NameForms forms = DescribeName(*name);
        builder.Text(id, forms.readable);
        builder.Fault(forms.error);
    }
}

void SayTime(CDescriptionBuilder& builder, FieldId id, const CAsn1Object* time) {
    if (time == nullptr) {
        return;
    }
    builder.Text(id, TimeLine(*time));
    if (!ReadTime(*time)) {
        builder.Fault(std::wstring(NameOf(id).Caption()) + L": " + TimeLine(*time));
    }
}

void SayString(CDescriptionBuilder& builder, FieldId id, const CAsn1Object* text) {
    builder.Text(id, MemberText(text));
}

void SayDigest(CDescriptionBuilder& builder, FieldId id, const CAsn1AlgorithmIdentifier* algorithm,
               const CAsn1OctetString* digest) {
    std::wstring text = algorithm != nullptr ? AlgorithmText(*algorithm) : L"";
    if (digest != nullptr) {
        text.append(text.empty() ? L"" : L": ").append(Hex(builder.Joined(digest)));
    }
    builder.Text(id, std::move(text));
}

void SaySize(CDescriptionBuilder& builder, FieldId id, const CAsn1OctetString* octets) {
    if (octets != nullptr) {
        builder.Text(id, OctetsCountText(builder.Joined(octets).size()));
    }
}

void SayExtensionList(CDescriptionBuilder& builder, FieldId id, const CAsn1Extensions* extensions,
                      Repeats repeats) {
    if (extensions == nullptr) {
        return;
    }
    const CDescriptionBuilder::Level level(builder, id, FieldForm::kList);
    std::set<std::string_view> seen;
    CAsn1Cursor cursor(extensions->ContentOctets());
    CAsn1Element extension;
    for (std::size_t index = 0; index < kMaxListed && cursor.StepOrRest(extension); ++index) {
        const Octets oid = SayExtension(builder, extension);
        if (!oid.empty() && !seen.insert(AsText(oid)).second && repeats == Repeats::kFault) {
            // Never more than one of a type (RFC 5280, 4.2); trust lists may repeat theirs.
            builder.Fault(SetZORNAMessage(kMsgExtensionRepeated) + (L": " + OidWithName(oid)));
        }
    }
    if (!cursor.AtEnd()) {
        builder.LeaveOut(CountElements(cursor));
    }
}

void SayAttributeList(CDescriptionBuilder& builder, FieldId id,
                      const CAsn1SetOf<CAsn1Attribute>* attributes, AttributeValues shown) {
    // Requested extensions are described as such, not as an attribute's value.
    std::vector<std::span<const unsigned char>> requests;
    SayList(builder, id, attributes, [&](const CAsn1Attribute& attribute) {
        if (!RequestsExtensions(OctetsOf(attribute.Type())) || attribute.Values() == nullptr) {
            SayAttribute(builder, attribute, shown);
        } else {
            requests.push_back(attribute.Values()->ContentOctets());
        }
    });
    if (requests.empty()) {
        return;
    }
    // The first request counts; that there is a second one is a fault.
    const CReading<CAsn1Extensions> extensions(requests.front(), builder);
    SayExtensionList(builder, FieldId::kRequestedExtensions, extensions.Get());
    if (requests.size() > 1) {
        builder.Fault(WordText(Word::kSecondRequest));
    }
}

void SayAttributesIn(CDescriptionBuilder& builder, FieldId id,
                     std::span<const unsigned char> attributes) {
    // Octets of a SET without its header, as an attribute of its own or with another tag round it:
    // bound to a block made for them.
    const CAsn1Element element{kAsn1Set, /*indefinite=*/false, attributes, attributes};
    CAsn1Block block;
    BindBlock(block, element, builder.OffsetOf(attributes));
    CAsn1SetOf<CAsn1Attribute> list(&block);
    list.SetElement(element);
    SayAttributeList(builder, id, &list, AttributeValues::kAll);
}

void SayKey(CDescriptionBuilder& builder, const PublicKeyForms& key) {
    builder.Text(FieldId::kKeyAlgorithm, key.algorithm);
    builder.Text(FieldId::kKeyParameters, key.params);
    builder.Text(FieldId::kPublicKey, key.key);
    builder.Fault(key.error);
}

void SayPublicKey(CDescriptionBuilder& builder, const CAsn1SubjectPublicKeyInfo* key) {
    if (key != nullptr) {
        SayKey(builder, DescribePublicKey(*key));
    }
}

void SaySignedObject(CDescriptionBuilder& builder, FieldId id, Octets octets) {
    // Told apart by form, as the members round them do not say what they hold.
    const std::span<const unsigned char> whole = octets;
    const char* const name = LooksLikeCertificate(octets)            ? "certificate"
                             : LooksLikeCrl(octets)                  ? "crl"
                             : LooksLikeAttributeCertificate(octets) ? "attributeCertificate"
                                                                     : nullptr;
    if (name != nullptr) {
        builder.Object(id, *FindObjectKind(name), octets, SubjectOf(whole, name));
    } else if (!octets.empty()) {
        builder.Unreadable(id, octets);
        builder.Fault(std::wstring(NameOf(id).Caption()) + L": " +
                      SetZORNAMessage(kMsgAsn1Malformed));
    }
}

void SaySignedObjects(CDescriptionBuilder& builder, FieldId id,
                      const CAsn1SequenceOf<CAsn1Any>* objects) {
    SayList(builder, id, objects,
            [&](const CAsn1Any& object) { SaySignedObject(builder, id, object.Raw()); });
}

void SayMessage(CDescriptionBuilder& builder, FieldId id, Octets contentInfo) {
    // Whatever the message is: its kind describes it, or is named at least.
    const ObjectKind* kind = RecogniseObject({{}, {}, contentInfo});
    if (kind != nullptr) {
        builder.Object(id, *kind, contentInfo, kind->Name());
    } else if (!contentInfo.empty()) {
        builder.Unreadable(id, contentInfo);
    }
}

}  // namespace ca
