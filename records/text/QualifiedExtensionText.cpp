#include "asn1/OidTable.h"
#include "asn1/x509/Attribute.h"
#include "asn1/x509/CabfExtensions.h"
#include "asn1/x509/DocumentTypeList.h"
#include "asn1/x509/IssuerSignTool.h"
#include "asn1/x509/QcStatement.h"
#include "common/Lazy.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/MoneyText.h"
#include "records/text/PolicyText.h"
#include "records/text/SharedFormatters.h"

#include <iterator>

// Statements of qualified certificates (RFC 3739, 3.2.6, ETSI EN 319 412-5), and who and what
// stands behind a certificate in national profiles.

namespace {

using ca::CTextLines;
using ca::Octets;
using Value = std::span<const unsigned char>;

// QcEuLimitValue (EN 319 412-5, 4.3.2).
void SayMoney(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1MonetaryValue> money(value);
    lines.Line(ca::MoneyText(*money));
}

// QcEuRetentionPeriod: years (EN 319 412-5, 4.3.3).
void SayCount(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1Integer> count(value);
    lines.Line(ca::NumberText(&*count));
}

// EN 319 412-5, 4.3.4: the language, and where the statement is in it.
// PdsLocations ::= SEQUENCE OF PdsLocation
void SayPdsLocations(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1PdsLocation>> locations(value);
    ca::SayEach(*locations, lines, [&](const CAsn1PdsLocation& location) {
        lines.Line(ca::MemberText(location.Language()), ca::MemberText(location.Url()));
    });
}

// QcCClegislation ::= SEQUENCE OF PrintableString     -- ISO 3166-1     EN 319 412-5, 4.2.4
void SayCountries(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1DirectoryString>> countries(value);
    std::wstring text;
    ca::SayEach(*countries, lines, [&](const CAsn1DirectoryString& country) {
        ca::AppendListed(text, ca::MemberText(&country));
    });
    lines.Line(text);
}

// PSD2QcType (TS 119 495, 5.1): what a payment service may do, and by whose leave.
void SayPaymentRoles(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1Psd2QcType> type(value);
    ca::SayEach(*type->RolesOfPSP(), lines, [&](const CAsn1RoleOfPsp& role) {
        lines.Line(ca::MemberText(role.RoleOfPspName()),
                   ca::OidWithName(OctetsOf(role.RoleOfPspOid())));
    });
    lines.Line(kMsgAuthority,
               ca::MemberText(type->NCAName()) + L" (" + ca::MemberText(type->NCAId()) + L')');
}

// SemanticsInformation (RFC 3739, 3.2.6.1).
void SaySemantics(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SemanticsInformation> semantics(value);
    if (semantics->SemanticsIdentifier() != nullptr) {
        lines.Line(ca::OidWithName(OctetsOf(semantics->SemanticsIdentifier())));
    }
    if (semantics->NameRegistrationAuthorities() != nullptr) {
        ca::SayGeneralNames(ca::ElementOf(*semantics->NameRegistrationAuthorities()), lines);
    }
}

constexpr ca::ExtensionRow kStatements[] = {
    {"QcLimitValue", SayMoney},        {"QcRetentionPeriod", SayCount},
    {"QcPDS", SayPdsLocations},        {"QcType", ca::SayOidList},
    {"QcCClegislation", SayCountries}, {"psd2-qcStatement", SayPaymentRoles},
    {"pkixQCSyntax-v1", SaySemantics}, {"pkixQCSyntax-v2", SaySemantics},
};

// A table of its own: statements are not extensions, and their types must not match there.
ca::CLazy<ca::CFormatterTable> statementFormatters([] { return ca::CFormatterTable{kStatements}; });

// What a statement states. What cannot be read does not hide the others.
std::wstring StatementText(Octets type, Value info, CTextLines& lines) {
    CTextLines said;
    const std::wstring fault = ca::SayValue(statementFormatters.Get().Find(type), info, said);
    std::wstring text = said.Take();
    std::wstring faults;
    said.Fault(fault);
    ca::AddValueError(faults, type, said.TakeFaults());
    lines.Fault(faults);
    return text;
}

// The statement's name; beside it what it states where that is one line, below it otherwise.
void SayStatement(const CAsn1QcStatement& statement, CTextLines& lines) {
    const Octets type = OctetsOf(statement.StatementId());
    const std::wstring name = ca::FindOid(type) != nullptr ? ca::OidName(type) : ca::OidText(type);
    if (statement.StatementInfo() == nullptr) {
        lines.Line(name);
        return;
    }
    const std::wstring text = StatementText(type, statement.StatementInfo()->Raw(), lines);
    if (text.find(L'\n') == std::wstring::npos) {
        lines.Line(name, text);
        return;
    }
    lines.Line(name, L"");
    const CTextLines::Level level(lines);
    lines.Block(text);
}

void SayStatements(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1QcStatement>> statements(value);
    ca::SayEach(*statements, lines,
                [&](const CAsn1QcStatement& statement) { SayStatement(statement, lines); });
}

// SubjectDirectoryAttributes ::= SEQUENCE OF Attribute     RFC 5280, 4.2.1.8
void SayDirectoryAttributes(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1Attribute>> attributes(value);
    ca::SayEach(*attributes, lines, [&](const CAsn1Attribute& attribute) {
        ca::SayClaimedAttribute(attribute, lines);
    });
}

// ---- Russian qualified certificates (FSB order 795 of 2011) ----

// IssuerSignTool: the tools of the holder and of the authority, then the papers that attest them.
void SayIssuerSignTool(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1IssuerSignTool> tool(value);
    lines.Line(kMsgSignTool, ca::MemberText(tool->SignTool()));
    lines.Line(kMsgCaTool, ca::MemberText(tool->CATool()));
    lines.Line(kMsgSignToolConclusion, ca::MemberText(tool->SignToolCert()));
    lines.Line(kMsgCaToolConclusion, ca::MemberText(tool->CAToolCert()));
}

// IdentificationKind ::= INTEGER { personal(0), remote-cert(1), remote-passport(2),
//     remote-system(3) }
void SayIdentificationKind(Value value, CTextLines& lines) {
    constexpr Sentence kKinds[] = {kMsgIdentifiedInPerson, kMsgIdentifiedBySignature,
                                   kMsgIdentifiedByPassport, kMsgIdentifiedByBiometrics};
    const ca::CDecoded<CAsn1Integer> kind(value);
    const std::int64_t number = IntegerOf(&*kind, -1);
    const bool isKnown = number >= 0 && number < std::ssize(kKinds);
    lines.Line(isKnown ? SetZORNAMessage(kKinds[number]) : ca::NumberText(&*kind));
}

// ---- Organizations ----

// CABFOrganizationIdentifier (CA/B Forum EV Guidelines, 9.8.2), in the form of the subject's
// attribute: "VATDE-123".
void SayOrganizationIdentifier(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1CabfOrganizationIdentifier> id(value);
    // Nothing stands between these two, so that they are one text.
    std::wstring text = ca::Visible(ca::TextOf(*id->RegistrationSchemeIdentifier()) +
                                    ca::TextOf(*id->RegistrationCountry()));
    if (id->RegistrationStateOrProvince() != nullptr) {
        text += L'+' + ca::HiddenText(id->RegistrationStateOrProvince());
    }
    lines.Line(text + L'-' + ca::MemberText(id->RegistrationReference()));
}

// ---- Travel documents ----

// The types of documents that the key may sign, in a line.
void SayDocumentTypes(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1DocumentTypeList> list(value);
    std::wstring text;
    const std::size_t count = list->DocTypeList()->Count();
    std::size_t index = 0;
    for (auto at = list->DocTypeList()->Elements(); index < ca::kMaxListed && at.Next(); ++index) {
        ca::AppendListed(text, ca::MemberText(ca::Good(at)));
    }
    lines.Line(text);
    if (index < count) {
        lines.Line(ca::MoreText(count - index));
        lines.Fault(ca::MoreText(count - index));
    }
}

constexpr ca::ExtensionRow kRows[] = {
    {"qcStatements", SayStatements},
    {"subjectDirectoryAttributes", SayDirectoryAttributes},
    {"subjectSignTool", ca::SayText},
    {"issuerSignTool", SayIssuerSignTool},
    {"identificationKind", SayIdentificationKind},
    {"cabfOrganizationIdentifier", SayOrganizationIdentifier},
    {"lei", ca::SayText},
    {"leiRole", ca::SayText},
    {"documentTypeList", SayDocumentTypes},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> QualifiedExtensionRows() {
    return kRows;
}

}  // namespace ca
