#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"

// QCStatement ::= SEQUENCE {
//     statementId    OBJECT IDENTIFIER,
//     statementInfo  ANY DEFINED BY statementId OPTIONAL }     RFC 3739, 3.2.6
class CAsn1QcStatement : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "QCStatement";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* StatementId() const { return m_statementId; }
    const CAsn1Any* StatementInfo() const { return m_statementInfo; }

  private:
    CAsn1ObjectIdentifier* m_statementId = nullptr;
    CAsn1Any* m_statementInfo = nullptr;
};

// SemanticsInformation ::= SEQUENCE {
//     semanticsIdentifier          OBJECT IDENTIFIER OPTIONAL,
//     nameRegistrationAuthorities  SEQUENCE OF GeneralName OPTIONAL }     RFC 3739, 3.2.6.1
class CAsn1SemanticsInformation : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SemanticsInformation";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* SemanticsIdentifier() const { return m_semanticsIdentifier; }
    const CAsn1SequenceOf<CAsn1Any>* NameRegistrationAuthorities() const {
        return m_nameRegistrationAuthorities;
    }

  private:
    CAsn1ObjectIdentifier* m_semanticsIdentifier = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_nameRegistrationAuthorities = nullptr;
};

// MonetaryValue ::= SEQUENCE {
//     currency  Iso4217CurrencyCode,     -- CHOICE { PrintableString, INTEGER }
//     amount    INTEGER,
//     exponent  INTEGER }     -- amount * 10 ^ exponent     EN 319 412-5, 4.3.2
class CAsn1MonetaryValue : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "MonetaryValue";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* Currency() const { return m_currency; }
    const CAsn1Integer* Amount() const { return m_amount; }
    const CAsn1Integer* Exponent() const { return m_exponent; }

  private:
    CAsn1Any* m_currency = nullptr;
    CAsn1Integer* m_amount = nullptr;
    CAsn1Integer* m_exponent = nullptr;
};

// PdsLocation ::= SEQUENCE {
//     url       IA5String,
//     language  PrintableString }     -- ISO 639-1     EN 319 412-5, 4.3.4
class CAsn1PdsLocation : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PdsLocation";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1IA5String* Url() const { return m_url; }
    const CAsn1PrintableString* Language() const { return m_language; }

  private:
    CAsn1IA5String* m_url = nullptr;
    CAsn1PrintableString* m_language = nullptr;
};

// RoleOfPSP ::= SEQUENCE {
//     roleOfPspOid   OBJECT IDENTIFIER,
//     roleOfPspName  UTF8String }     TS 119 495, 5.1
class CAsn1RoleOfPsp : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RoleOfPSP";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* RoleOfPspOid() const { return m_roleOfPspOid; }
    const CAsn1UTF8String* RoleOfPspName() const { return m_roleOfPspName; }

  private:
    CAsn1ObjectIdentifier* m_roleOfPspOid = nullptr;
    CAsn1UTF8String* m_roleOfPspName = nullptr;
};

// PSD2QcType ::= SEQUENCE {
//     rolesOfPSP  SEQUENCE OF RoleOfPSP,
//     nCAName     UTF8String,
//     nCAId       UTF8String }     TS 119 495, 5.1
class CAsn1Psd2QcType : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PSD2QcType";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1SequenceOf<CAsn1RoleOfPsp>* RolesOfPSP() const { return m_rolesOfPSP; }
    const CAsn1UTF8String* NCAName() const { return m_nCAName; }
    const CAsn1UTF8String* NCAId() const { return m_nCAId; }

  private:
    CAsn1SequenceOf<CAsn1RoleOfPsp>* m_rolesOfPSP = nullptr;
    CAsn1UTF8String* m_nCAName = nullptr;
    CAsn1UTF8String* m_nCAId = nullptr;
};
