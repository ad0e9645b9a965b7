#include "asn1/attributes/AaControls.h"
#include "asn1/attributes/Targets.h"
#include "asn1/x509/BasicConstraints.h"
#include "common/DecimalText.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/SerialText.h"
#include "records/text/SharedFormatters.h"

// The extensions of attribute certificates (RFC 5755, 4.3, 7; X.509, 15.3) and of their
// authorities.

namespace {

using ca::CTextLines;
using Value = std::span<const unsigned char>;

// TargetCert (RFC 5755, 4.3.2): a certificate by its issuer and number, beside it what else is
// known.
void SayTargetCert(const CAsn1TargetCert& target, CTextLines& lines) {
    lines.Line(kMsgTargetCertificate, L"");
    const CTextLines::Level level(lines);
    const CAsn1IssuerSerial& certificate = *target.TargetCertificate();
    lines.Line(kMsgIssuer, ca::GeneralNamesLine(*certificate.Issuer(), lines));
    lines.Line(kMsgSerial, ca::SerialText(OctetsOf(certificate.Serial())));
    if (target.TargetName() != nullptr) {
        lines.Line(kMsgTargetName, ca::GeneralNameLine(*target.TargetName(), lines));
    }
    if (target.CertDigestInfo() != nullptr) {
        lines.Line(ca::ObjectDigestText(*target.CertDigestInfo()));
    }
}

// Target ::= CHOICE (RFC 5755, 4.3.2). The decoder has seen to it that one of the three is there.
void SayTarget(const CAsn1Target& target, CTextLines& lines) {
    if (target.TargetName() != nullptr) {
        lines.Line(kMsgTargetName, ca::GeneralNameLine(*target.TargetName(), lines));
    } else if (target.TargetGroup() != nullptr) {
        lines.Line(kMsgTargetGroup, ca::GeneralNameLine(*target.TargetGroup(), lines));
    } else {
        SayTargetCert(*target.TargetCert(), lines);
    }
}

void SayTargetList(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1Targets> targets(value);
    ca::SayEach(*targets, lines, [&](const CAsn1Target& target) { SayTarget(target, lines); });
}

// SEQUENCE OF Targets. Issuers write one list of targets as a rule, some without the outer list.
void SayTargets(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1Any>> lists(value);
    // Told apart by what stands inside the outermost SEQUENCE: targets have context tags.
    const CAsn1Element first = ca::FirstElement(lists->ContentOctets());
    if (first.tag != kAsn1Sequence) {
        SayTargetList(value, lines);
        return;
    }
    if (first.raw.size() == lists->ContentOctets().size()) {
        SayTargetList(first.raw, lines);
        return;
    }
    ca::SayEach(*lists, lines, [&](const CAsn1Any& list) {
        lines.Line(kMsgTargets, L"");
        const CTextLines::Level level(lines);
        SayTargetList(list.Raw(), lines);
    });
}

// Lists of attribute types that an authority may, or may not, give (RFC 5755, 7.4).
void SayAttributeTypes(Sentence label, const CAsn1SequenceOf<CAsn1ObjectIdentifier>* types,
                       CTextLines& lines) {
    if (types == nullptr) {
        return;
    }
    lines.Line(label, L"");
    const CTextLines::Level level(lines);
    ca::SayEach(*types, lines, [&](const CAsn1ObjectIdentifier& type) {
        lines.Line(ca::OidWithName(OctetsOf(&type)));
    });
}

// Without a limit said so: a missing number must not read as zero.
void SayPathLength(const CAsn1Integer* length, CTextLines& lines) {
    const std::int64_t value = IntegerOf(length, -1);
    lines.Line(kMsgPathLength, length == nullptr ? SetZORNAMessage(kMsgNotLimited)
                               : value >= 0      ? ca::DecimalText(value)
                                                 : ca::Hex(OctetsOf(length)));
}

// AAControls (RFC 5755, 7.4).
void SayAuthorityControls(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1AaControls> controls(value);
    SayPathLength(controls->PathLenConstraint(), lines);
    SayAttributeTypes(kMsgPermitted, controls->PermittedAttrs(), lines);
    SayAttributeTypes(kMsgExcluded, controls->ExcludedAttrs(), lines);
    lines.Line(kMsgUnspecifiedAttributes,
               SetZORNAMessage(controls->PermitsUnspecified() ? kMsgYes : kMsgNo));
}

// BasicAttConstraintsSyntax ::= SEQUENCE { authority BOOLEAN DEFAULT FALSE,
//     pathLenConstraint INTEGER OPTIONAL }     -- as BasicConstraints     X.509, 15.5.2.1
void SayBasicAttributeConstraints(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1BasicConstraints> constraints(value);
    lines.Line(kMsgAttributeAuthority, SetZORNAMessage(constraints->IsCa() ? kMsgYes : kMsgNo));
    // Only an authority has a path below it.
    if (constraints->IsCa()) {
        SayPathLength(constraints->PathLenConstraint(), lines);
    }
}

// Extensions without content are said to be present: SayPresent shows no value.
constexpr ca::ExtensionRow kRows[] = {
    {"ac-auditIdentity", ca::SayOctetString},
    {"ac-proxying", SayTargets},
    {"targetInformation", SayTargets},
    {"aaControls", SayAuthorityControls},
    {"basicAttConstraints", SayBasicAttributeConstraints},
    {"noRevAvail", ca::SayPresent},
    {"sOAIdentifier", ca::SayPresent},
    {"singleUse", ca::SayPresent},
    {"groupAC", ca::SayPresent},
    {"indirectIssuer", ca::SayPresent},
    {"acceptableCertPolicies", ca::SayOidList},
    {"acceptablePrivilegePolicies", ca::SayOidList},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> AttributeExtensionRows() {
    return kRows;
}

}  // namespace ca
