#pragma once

#include "asn1/Asn1Time.h"
#include "asn1/x509/Extension.h"

// RevokedCertificate ::= SEQUENCE {     -- the element of TBSCertList.revokedCertificates
//     userCertificate     CertificateSerialNumber,     -- INTEGER
//     revocationDate      Time,
//     crlEntryExtensions  Extensions OPTIONAL }     RFC 5280, 5.1
// The time is not decoded: as in Validity.
class CAsn1RevokedCertificate : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RevokedCertificate";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* UserCertificate() const { return m_userCertificate; }
    CAsn1Time* RevocationDate() const { return m_revocationDate; }
    CAsn1Extensions* CrlEntryExtensions() const { return m_crlEntryExtensions; }

  private:
    CAsn1Integer* m_userCertificate = nullptr;
    CAsn1Time* m_revocationDate = nullptr;
    CAsn1Extensions* m_crlEntryExtensions = nullptr;
};
