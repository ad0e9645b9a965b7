#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"

// QCStatement ::= SEQUENCE {
//     statementId    OBJECT IDENTIFIER,
//     statementInfo  ANY DEFINED BY statementId OPTIONAL }     RFC 3739, 3.2.6
class CAsn1QcStatement : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("QCStatement");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, StatementId, "statementId");
    CA_ASN1_OPTIONAL(CAsn1Any, StatementInfo, "statementInfo");
    CA_ASN1_END;
};

// SemanticsInformation ::= SEQUENCE {
//     semanticsIdentifier          OBJECT IDENTIFIER OPTIONAL,
//     nameRegistrationAuthorities  SEQUENCE OF GeneralName OPTIONAL }     RFC 3739, 3.2.6.1
class CAsn1SemanticsInformation : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SemanticsInformation");
    CA_ASN1_OPTIONAL(CAsn1ObjectIdentifier, SemanticsIdentifier, "semanticsIdentifier");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1Any>, NameRegistrationAuthorities,
                     "nameRegistrationAuthorities");
    CA_ASN1_END;
};

// MonetaryValue ::= SEQUENCE {
//     currency  Iso4217CurrencyCode,     -- CHOICE { PrintableString, INTEGER }
//     amount    INTEGER,
//     exponent  INTEGER }     -- amount * 10 ^ exponent     EN 319 412-5, 4.3.2
class CAsn1MonetaryValue : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("MonetaryValue");
    CA_ASN1_REQUIRED(CAsn1Any, Currency, "currency");
    CA_ASN1_REQUIRED(CAsn1Integer, Amount, "amount");
    CA_ASN1_REQUIRED(CAsn1Integer, Exponent, "exponent");
    CA_ASN1_END;
};

// PdsLocation ::= SEQUENCE {
//     url       IA5String,
//     language  PrintableString }     -- ISO 639-1     EN 319 412-5, 4.3.4
class CAsn1PdsLocation : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PdsLocation");
    CA_ASN1_REQUIRED(CAsn1IA5String, Url, "url");
    CA_ASN1_REQUIRED(CAsn1PrintableString, Language, "language");
    CA_ASN1_END;
};

// RoleOfPSP ::= SEQUENCE {
//     roleOfPspOid   OBJECT IDENTIFIER,
//     roleOfPspName  UTF8String }     TS 119 495, 5.1
class CAsn1RoleOfPsp : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RoleOfPSP");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, RoleOfPspOid, "roleOfPspOid");
    CA_ASN1_REQUIRED(CAsn1UTF8String, RoleOfPspName, "roleOfPspName");
    CA_ASN1_END;
};

// PSD2QcType ::= SEQUENCE {
//     rolesOfPSP  SEQUENCE OF RoleOfPSP,
//     nCAName     UTF8String,
//     nCAId       UTF8String }     TS 119 495, 5.1
class CAsn1Psd2QcType : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PSD2QcType");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1RoleOfPsp>, RolesOfPSP, "rolesOfPSP");
    CA_ASN1_REQUIRED(CAsn1UTF8String, NCAName, "nCAName");
    CA_ASN1_REQUIRED(CAsn1UTF8String, NCAId, "nCAId");
    CA_ASN1_END;
};
