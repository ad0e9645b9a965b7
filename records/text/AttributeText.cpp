#include "records/text/AttributeText.h"

#include "asn1/OidTable.h"
#include "asn1/attributes/AttributeValues.h"
#include "asn1/attributes/Holder.h"
#include "asn1/attributes/PlatformAttributes.h"
#include "asn1/x509/Attribute.h"
#include "common/DecimalText.h"
#include "common/Lazy.h"
#include "records/text/AlgorithmText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/OutlineText.h"
#include "records/text/PolicyText.h"
#include "records/text/SharedFormatters.h"
#include "records/text/TimeText.h"

#include <algorithm>
#include <string_view>

namespace {

using ca::CTextLines;
using ca::Octets;
using Value = std::span<const unsigned char>;

// In the order of their numbers.
constexpr Sentence kLevels[] = {kMsgLevelUnmarked,     kMsgLevelUnclassified, kMsgLevelRestricted,
                                kMsgLevelConfidential, kMsgLevelSecret,       kMsgLevelTopSecret};

// IetfAttrSyntax (RFC 5755, 4.4): the groups and the charging identity.
void SayIetfAttribute(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1IetfAttrSyntax> syntax(value);
    if (syntax->PolicyAuthority() != nullptr) {
        lines.Line(kMsgPolicyAuthority, ca::GeneralNamesLine(*syntax->PolicyAuthority(), lines));
    }
    ca::SayEach(*syntax->Values(), lines, [&](const CAsn1Any& any) {
        const CAsn1Element element = ca::ElementOf(any);
        if (element.tag == kAsn1ObjectIdentifier) {
            lines.Line(ca::OidWithName(element.content));
        } else if (element.tag == kAsn1OctetString) {
            lines.Line(ca::Hex(element.content));
        } else {
            lines.Line(ca::ValueText(element));
        }
    });
}

// SvceAuthInfo (RFC 5755, 4.4.1): how a service knows the holder.
void SayServiceInfo(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SvceAuthInfo> info(value);
    lines.Line(kMsgService, ca::GeneralNameLine(*info->Service(), lines));
    lines.Line(kMsgIdentity, ca::GeneralNameLine(*info->Ident(), lines));
    if (info->AuthInfo() != nullptr) {
        lines.Line(kMsgAuthenticationData, ca::Hex(OctetsOf(info->AuthInfo())));
    }
}

// RoleSyntax (RFC 5755, 4.4.5): the authority, then the role it gives.
// A role that is but a text is what some signers claim.
void SayRole(Value value, CTextLines& lines) {
    if (const CAsn1Element text = ca::FirstElement(value); ca::IsText(text)) {
        lines.Line(ca::ValueText(text));
        return;
    }
    const ca::CDecoded<CAsn1RoleSyntax> role(value);
    const std::wstring name = ca::GeneralNameLine(*role->RoleName(), lines);
    if (role->RoleAuthority() != nullptr) {
        lines.Line(ca::GeneralNamesLine(*role->RoleAuthority(), lines), name);
    } else {
        lines.Line(name);
    }
}

// ClassList ::= BIT STRING { unmarked (0), ... topSecret (5) }
std::wstring LevelsText(const CAsn1BitString* list) {
    if (list == nullptr) {
        return SetZORNAMessage(kMsgLevelUnclassified);  // the default
    }
    const CAsn1Bits bits = BitsOf(list);
    std::wstring text;
    for (std::size_t bit = 0; bit < std::size(kLevels); ++bit) {
        if (bits[bit]) {
            text += text.empty() ? L"" : L", ";
            text += SetZORNAMessage(kLevels[bit]);
        }
    }
    return text;
}

// Clearance (RFC 5755, 4.4.6).
void SayClearance(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1Clearance> clearance(value);
    lines.Line(kMsgSecurityPolicy, ca::OidWithName(OctetsOf(clearance->PolicyId())));
    lines.Line(kMsgClearanceLevels, LevelsText(clearance->ClassList()));
    ca::SaySecurityCategories(clearance->SecurityCategories(), lines);
}

// A day, said by its noon in Greenwich (RFC 3739, 3.2.2): no time zone may move it.
void SayBirthDate(Value value, CTextLines& lines) {
    constexpr std::size_t kDateLength = 10;  // dd.mm.yyyy
    const CAsn1Element element = ca::FirstElement(value);
    const ca::TimeForms time = ca::DescribeTime(element);
    if (!time.seconds) {
        throw MakeAsn1WrongTag("DateOfBirth", element.tag, 0);
    }
    // The text begins with the day; the clock after it would only confuse.
    lines.Line(time.utc.substr(0, kDateLength));
}

// ---- Makers of platforms ----

std::wstring VersionText(const CAsn1TcgSpecificationVersion& version) {
    return ca::NumberText(version.MajorVersion()) + L'.' + ca::NumberText(version.MinorVersion()) +
           L'.' + ca::NumberText(version.Revision());
}

// "2.0, 0, 138": family, level, revision.
void SayTpmSpecification(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1TpmSpecification> specification(value);
    lines.Line(ca::MemberText(specification->Family()) + L", " +
               ca::NumberText(specification->Level()) + L", " +
               ca::NumberText(specification->Revision()));
}

void SayPlatformSpecification(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1TcgPlatformSpecification> specification(value);
    lines.Line(kMsgFieldVersion, VersionText(*specification->Version()));
    const CAsn1Element platformClass = ca::ElementOf(*specification->PlatformClass());
    lines.Line(kMsgFieldId, platformClass.tag == kAsn1OctetString ? ca::Hex(platformClass.content)
                                                                  : ca::ValueText(platformClass));
}

// Some writers put the version alone where a SEQUENCE round it belongs.
void SayCredentialSpecification(Value value, CTextLines& lines) {
    if (CAsn1TcgVersionView(ca::FirstElement(value)).IsVersion()) {
        const ca::CDecoded<CAsn1TcgSpecificationVersion> version(value);
        lines.Line(kMsgFieldVersion, VersionText(*version));
        return;
    }
    const ca::CDecoded<CAsn1TcgCredentialSpecification> specification(value);
    lines.Line(kMsgFieldVersion, VersionText(*specification->Version()));
}

constexpr ca::ExtensionRow kRows[] = {
    {"authenticationInfo", SayServiceInfo},
    {"accessIdentity", SayServiceInfo},
    {"chargingIdentity", SayIetfAttribute},
    {"group", SayIetfAttribute},
    {"role", SayRole},
    {"clearance", SayClearance},
    {"rfc3281-clearance", SayClearance},
    {"dateOfBirth", SayBirthDate},
    {"tpmSpecification", SayTpmSpecification},
    {"tcgPlatformSpecification", SayPlatformSpecification},
    {"tcgCredentialSpecification", SayCredentialSpecification},
};

// Each value; one that is not of the attribute's type is outlined.
void SayValues(ca::ExtensionFormatter say, Octets type, const CAsn1SetOf<CAsn1Any>& values,
               CTextLines& lines, std::wstring& error) {
    if (values.ContentOctets().empty()) {
        lines.Line(kMsgEmpty);
    }
    ca::SayEach(values, lines, [&](const CAsn1Any& any) {
        // Each value has its own lines: a fault takes back no more than the value it is in.
        CTextLines said(lines.Signers());
        const std::wstring fault = ca::SayValue(say, any.Raw(), said);
        lines.Block(said.TakeOr(kMsgEmpty));
        said.Fault(fault);
        ca::AddValueError(error, type, said.TakeFaults());
    });
}

// Strings as such, which is what directory attributes are.
void SayDirectoryValue(Value value, CTextLines& lines) {
    const CAsn1Element element = ca::FirstElement(value);
    if (ca::IsText(element)) {
        lines.Line(ca::ValueText(element));
    } else {
        ca::SayUnknownValue(value, lines);
    }
}

ca::CLazy<ca::CFormatterTable> valueFormatters([] {
    return ca::CFormatterTable{kRows, ca::EssAttributeRows(), ca::CadesAttributeRows(),
                               ca::CodeAttributeRows(), ca::RequestAttributeRows()};
});
// Claims have the attributes of holders alone: those of signatures hold claims, which could then
// nest.
ca::CLazy<ca::CFormatterTable> claimedFormatters([] { return ca::CFormatterTable{kRows}; });

}  // namespace

namespace ca {

void SayAttributeValues(Octets type, const CAsn1SetOf<CAsn1Any>& values, CTextLines& lines,
                        std::wstring& error) {
    SayValues(valueFormatters.Get().Find(type), type, values, lines, error);
}

void SayClaimedAttribute(const CAsn1Attribute& attribute, CTextLines& lines) {
    const Octets type = OctetsOf(attribute.Type());
    const ExtensionFormatter say = claimedFormatters.Get().Find(type);
    lines.Line(OidWithName(type), L"");
    const CTextLines::Level level(lines);
    std::wstring error;
    // Types without a formatter are directory attributes as a rule (RFC 5126, 5.11.3).
    SayValues(say != nullptr ? say : SayDirectoryValue, type, *attribute.Values(), lines, error);
    lines.Fault(error);
}

std::wstring ClearanceLevelText(std::uint64_t level) {
    return level < std::size(kLevels) ? SetZORNAMessage(kLevels[level]) : DecimalText(level);
}

void SaySecurityCategories(const CAsn1SetOf<CAsn1SecurityCategory>* categories, CTextLines& lines) {
    if (categories == nullptr) {
        return;
    }
    SayEach(*categories, lines, [&](const CAsn1SecurityCategory& category) {
        lines.Line(kMsgCategory, OidWithName(OctetsOf(category.Type())));
        const CTextLines::Level level(lines);
        SayUnknownValue(category.Value()->Raw(), lines);
    });
}

// ObjectDigestInfo (RFC 5755, 4.1): a digest of a key or a certificate instead of a name.
std::wstring ObjectDigestText(const CAsn1ObjectDigestInfo& digest) {
    std::wstring text;
    if (digest.DigestAlgorithm() != nullptr) {
        text = AlgorithmText(*digest.DigestAlgorithm());
    }
    return text + L": " + Hex(BitsOf(digest.ObjectDigest()).octets);
}

std::wstring GeneralNameLine(const CAsn1GeneralNameView& name, CTextLines& faults) {
    // A directory name goes on the line as it is: its label would only repeat what the line says.
    if (const CAsn1NameView directory = name.DirectoryName();
        directory.Element().tag == kAsn1Sequence) {
        return ReadableName(directory);
    }
    CTextLines lines;
    SayGeneralName(name, lines);
    std::wstring text = lines.Take();
    faults.Fault(lines.TakeFaults());
    std::ranges::replace(text, L'\n', L' ');
    return text;
}

std::wstring GeneralNamesLine(const CAsn1GeneralNamesView& names, CTextLines& faults) {
    std::wstring text;
    CAsn1Element name;
    std::size_t index = 0;
    for (CAsn1Cursor cursor = names.Names(); !cursor.AtEnd(); ++index) {
        // The length is a limit beside the count: a thousand names may be a thousand pages.
        if (index == kMaxListed || text.size() > MaxValueText()) {
            const std::wstring more = MoreText(CountElements(cursor));
            faults.Fault(more);
            return text + L", " + more;
        }
        text += text.empty() ? L"" : L", ";
        if (!cursor.Step(name)) {
            faults.Fault(SetZORNAMessage(kMsgAsn1Malformed));
            return text + UnreadableText(cursor.Rest());
        }
        text += GeneralNameLine(name, faults);
    }
    return text;
}

}  // namespace ca
