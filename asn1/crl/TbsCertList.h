#pragma once

#include "asn1/crl/RevokedCertificate.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Name.h"

// TBSCertList ::= SEQUENCE {
//     version              Version OPTIONAL,     -- INTEGER, v2 when there
//     signature            AlgorithmIdentifier,
//     issuer               Name,
//     thisUpdate           Time,
//     nextUpdate           Time OPTIONAL,
//     revokedCertificates  SEQUENCE OF RevokedCertificate OPTIONAL,
//     crlExtensions        [0] EXPLICIT Extensions OPTIONAL }     RFC 5280, 5.1
// There may be a million entries: they are not read here, only walked.
class CAsn1TbsCertList : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TBSCertList";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    /// Null for v1, which is left out.
    CAsn1Integer* Version() const { return m_version; }
    CAsn1AlgorithmIdentifier* Signature() const { return m_signature; }
    CAsn1Name* Issuer() const { return m_issuer; }
    CAsn1Time* ThisUpdate() const { return m_thisUpdate; }
    CAsn1Time* NextUpdate() const { return m_nextUpdate; }
    CAsn1SequenceOf<CAsn1RevokedCertificate>* RevokedCertificates() const {
        return m_revokedCertificates;
    }
    CAsn1Extensions* CrlExtensions() const { return m_crlExtensions; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1AlgorithmIdentifier* m_signature = nullptr;
    CAsn1Name* m_issuer = nullptr;
    CAsn1Time* m_thisUpdate = nullptr;
    CAsn1Time* m_nextUpdate = nullptr;
    CAsn1SequenceOf<CAsn1RevokedCertificate>* m_revokedCertificates = nullptr;
    CAsn1Extensions* m_crlExtensions = nullptr;
};
