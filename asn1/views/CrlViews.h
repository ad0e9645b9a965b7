#pragma once

#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/Asn1View.h"
#include "asn1/views/NameViews.h"

#include <cstddef>

class CAsn1CertificateList;
class CAsn1TbsCertList;

/// TBSCertList; see crl/TbsCertList.h.
class CAsn1TbsCertListView : public CAsn1ViewOf<CAsn1TbsCertList> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1AlgorithmView Signature() const { return AfterVersion(0); }
    CAsn1NameView Issuer() const { return AfterVersion(1); }
    CAsn1Element ThisUpdate() const { return AfterVersion(2); }

  private:
    // The version may be left out.
    CAsn1Element AfterVersion(std::size_t index) const {
        return Member(index + (Member(0).tag == kAsn1Integer ? 1 : 0));
    }
};

/// CertificateList; see crl/CertificateList.h.
class CAsn1CertificateListView : public CAsn1ViewOf<CAsn1CertificateList> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1TbsCertListView TbsCertList() const { return Member(0); }

    /// True when the members that each list has are of their types, as far as tags tell: a
    /// certificate has another one where a list has a time.
    bool HasForm() const;
};

/// An entry of revokedCertificates; see crl/RevokedCertificate.h. Its members are read at once:
/// lists have millions of entries, and each member is asked for. A member that is missing or of
/// another type is without octets.
class CAsn1RevokedCertificateView {
  public:
    /// Views another entry: a walk has one view for all of them.
    void Read(const CAsn1Element& entry);

    const CAsn1Element& UserCertificate() const { return m_userCertificate; }
    const CAsn1Element& RevocationDate() const { return m_revocationDate; }
    const CAsn1Element& CrlEntryExtensions() const { return m_crlEntryExtensions; }
    /// All members are of their types, and nothing else is there.
    bool IsWhole() const { return m_isWhole; }

    /// The encoding inside the extension certificateIssuer (RFC 5280, 5.3.3); empty when the entry
    /// has none.
    ca::Octets CertificateIssuer() const;

  private:
    CAsn1Element m_userCertificate;
    CAsn1Element m_revocationDate;
    CAsn1Element m_crlEntryExtensions;
    bool m_isWhole = false;
};
