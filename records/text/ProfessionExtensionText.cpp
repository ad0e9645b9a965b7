#include "asn1/attributes/Holder.h"
#include "asn1/x509/Admission.h"
#include "asn1/x509/QcStatement.h"
#include "asn1/x509/ValidityModel.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/MoneyText.h"
#include "records/text/OutlineText.h"
#include "records/text/SerialText.h"
#include "records/text/SharedFormatters.h"

// What a holder may do by profession or power of attorney (Common PKI 2.0, part 1, 3.2), and by
// which model its certificate is to be checked.

namespace {

using ca::CTextLines;
using Value = std::span<const unsigned char>;

// NamingAuthority: a text, an address and an identifier, each optional.
void SayNamingAuthority(const CAsn1NamingAuthority* authority, CTextLines& lines) {
    if (authority == nullptr) {
        return;
    }
    std::wstring text = ca::MemberText(authority->NamingAuthorityText());
    ca::AppendListed(text, ca::MemberText(authority->NamingAuthorityUrl()));
    if (authority->NamingAuthorityId() != nullptr) {
        ca::AppendListed(text, ca::OidWithName(OctetsOf(authority->NamingAuthorityId())));
    }
    lines.Line(kMsgNamingAuthority, text);
}

// ProfessionInfo: the words, below them the identifiers, the authority and the register.
void SayProfession(const CAsn1ProfessionInfo& profession, CTextLines& lines) {
    ca::SayEach(*profession.ProfessionItems(), lines, [&](const CAsn1DirectoryString& item) {
        lines.Line(kMsgProfession, ca::MemberText(&item));
    });
    const CTextLines::Level level(lines);
    if (profession.ProfessionOIDs() != nullptr) {
        ca::SayEach(*profession.ProfessionOIDs(), lines, [&](const CAsn1ObjectIdentifier& oid) {
            lines.Line(ca::OidWithName(OctetsOf(&oid)));
        });
    }
    SayNamingAuthority(profession.NamingAuthority(), lines);
    if (profession.RegistrationNumber() != nullptr) {
        lines.Line(kMsgRegistrationNumber, ca::MemberText(profession.RegistrationNumber()));
    }
    if (profession.AddProfessionInfo() != nullptr) {
        lines.Line(kMsgAdditionalInformation, ca::Hex(OctetsOf(profession.AddProfessionInfo())));
    }
}

void SayAdmissionAuthority(const CAsn1Object* authority, CTextLines& lines) {
    if (authority != nullptr) {
        lines.Line(kMsgAuthority, ca::GeneralNameLine(ca::ElementOf(*authority), lines));
    }
}

// AdmissionSyntax: each of its lists may have an authority of its own.
void SayAdmission(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1AdmissionSyntax> admission(value);
    SayAdmissionAuthority(admission->AdmissionAuthority(), lines);
    ca::SayEach(*admission->ContentsOfAdmissions(), lines, [&](const CAsn1Admissions& each) {
        SayAdmissionAuthority(each.AdmissionAuthority(), lines);
        SayNamingAuthority(each.NamingAuthority(), lines);
        ca::SayEach(*each.ProfessionInfos(), lines, [&](const CAsn1ProfessionInfo& profession) {
            SayProfession(profession, lines);
        });
    });
}

// SigningFor ::= CHOICE: a person by name, or by reference to a certificate.
void SaySigningFor(const CAsn1Element& principal, CTextLines& lines) {
    if (principal.tag != kAsn1Sequence) {
        lines.Line(kMsgSigningFor, ca::GeneralNameLine(principal, lines));
        return;
    }
    const ca::CDecoded<CAsn1IssuerSerial> certificate(principal.raw);
    lines.Line(kMsgSigningFor, L"");
    const CTextLines::Level level(lines);
    lines.Line(kMsgIssuer, ca::GeneralNamesLine(*certificate->Issuer(), lines));
    lines.Line(kMsgSerial, ca::SerialText(OctetsOf(certificate->Serial())));
}

// ProcurationSyntax: for whom the holder may sign.
void SayProcuration(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1ProcurationSyntax> procuration(value);
    if (procuration->Country() != nullptr) {
        lines.Line(kMsgCountry, ca::MemberText(procuration->Country()));
    }
    if (procuration->TypeOfSubstitution() != nullptr) {
        lines.Line(kMsgTypeOfSubstitution, ca::MemberText(procuration->TypeOfSubstitution()));
    }
    SaySigningFor(ca::ElementOf(*procuration->SigningFor()), lines);
}

// MonetaryLimitSyntax ::= SEQUENCE { currency PrintableString, amount INTEGER, exponent INTEGER }
void SayMonetaryLimit(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1MonetaryValue> limit(value);
    lines.Line(ca::MoneyText(*limit));
}

// ValidityModel: an identifier for the shell or the chain model.
void SayValidityModel(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1ValidityModel> model(value);
    lines.Line(ca::OidWithName(OctetsOf(model->ValidityModelId())));
    if (model->ValidityModelInfo() != nullptr) {
        const CTextLines::Level level(lines);
        ca::SayOutline(ca::ElementOf(*model->ValidityModelInfo()), lines);
    }
}

constexpr ca::ExtensionRow kRows[] = {
    {"admission", SayAdmission},
    {"procuration", SayProcuration},
    {"monetaryLimit", SayMonetaryLimit},
    {"restriction", ca::SayText},
    {"additionalInformation", ca::SayText},
    {"dateOfCertGen", ca::SayTimeValue},
    {"validityModel", SayValidityModel},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> ProfessionExtensionRows() {
    return kRows;
}

}  // namespace ca
