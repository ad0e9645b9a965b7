#pragma once

#include "asn1/Oid.h"
#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/Asn1View.h"
#include "asn1/views/NameViews.h"

#include <cstddef>

class CAsn1Certificate;
class CAsn1CertificatePair;
class CAsn1TbsCertificate;

/// TBSCertificate; see x509/TbsCertificate.h.
class CAsn1TbsCertificateView : public CAsn1ViewOf<CAsn1TbsCertificate> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// Left out in version 1.
    bool HasVersion() const { return Member(0).tag == ca::ContextConstructed(0); }
    CAsn1Element SerialNumber() const { return AfterVersion(0); }
    CAsn1AlgorithmView Signature() const { return AfterVersion(1); }
    CAsn1NameView Issuer() const { return AfterVersion(2); }
    CAsn1Element Validity() const { return AfterVersion(3); }
    CAsn1Element NotBefore() const { return MemberOf(Validity(), 0); }
    CAsn1NameView Subject() const { return AfterVersion(4); }
    CAsn1PublicKeyInfoView SubjectPublicKeyInfo() const { return AfterVersion(5); }
    /// Extensions; walk CAsn1ExtensionView in its content.
    CAsn1Element Extensions() const;

    /// True when the members that each certificate has are of their types, as far as tags tell.
    bool HasForm() const;

  private:
    CAsn1Element AfterVersion(std::size_t index) const {
        return Member(index + (HasVersion() ? 1 : 0));
    }
};

/// Certificate; see x509/Certificate.h.
class CAsn1CertificateView : public CAsn1ViewOf<CAsn1Certificate> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1TbsCertificateView TbsCertificate() const { return Member(0); }
    CAsn1AlgorithmView SignatureAlgorithm() const { return Member(1); }

    bool HasForm() const { return Element().tag == kAsn1Sequence && TbsCertificate().HasForm(); }

    /// The encoding inside the first extension of a type; without octets when there is none.
    CAsn1Element ExtensionValue(ca::COid type) const;
};

/// CertificatePair; see x509/CertificatePair.h. Either certificate may be left out.
class CAsn1CertificatePairView : public CAsn1ViewOf<CAsn1CertificatePair> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1CertificateView First() const { return InnerOf(Member(0)); }
    bool HasSecond() const { return !Member(1).raw.empty(); }
    CAsn1CertificateView Second() const { return InnerOf(Member(1)); }
};

/// AuthorityKeyIdentifier; see x509/AuthorityKeyIdentifier.h.
class CAsn1AuthorityKeyIdView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// keyIdentifier [0], the first member where it is there.
    ca::Octets KeyIdentifier() const { return ca::ContentIf(Member(0), ca::ContextTag(0)); }
};
