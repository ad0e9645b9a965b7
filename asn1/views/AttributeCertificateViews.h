#pragma once

#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/Asn1View.h"
#include "asn1/views/NameViews.h"

#include <cstddef>

class CAsn1AttributeCertificate;
class CAsn1AttributeCertificateInfo;
class CAsn1Holder;
class CAsn1IssuerSerial;
class CAsn1ObjectDigestInfo;

/// IssuerSerial; see attributes/Holder.h. The tag is not looked at.
class CAsn1IssuerSerialView : public CAsn1ViewOf<CAsn1IssuerSerial> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1GeneralNamesView Issuer() const { return Member(0); }
    /// Content octets.
    ca::Octets Serial() const { return ca::ContentIf(Member(1), kAsn1Integer); }
};

/// ObjectDigestInfo; see attributes/Holder.h. The tag is not looked at.
class CAsn1ObjectDigestInfoView : public CAsn1ViewOf<CAsn1ObjectDigestInfo> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1AlgorithmView DigestAlgorithm() const { return Member(AlgorithmIndex()); }
    CAsn1Element ObjectDigest() const { return Member(AlgorithmIndex() + 1); }

  private:
    // otherObjectTypeID may stand before it.
    std::size_t AlgorithmIndex() const { return Member(1).tag == kAsn1ObjectIdentifier ? 2 : 1; }
};

/// One member of a Holder, in whichever form; see attributes/Holder.h. An AttCertSubject of the old
/// version has the tags of the first two.
class CAsn1HolderPartView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    bool IsBaseCertificateId() const { return Element().tag == ca::ContextConstructed(0); }
    CAsn1IssuerSerialView BaseCertificateId() const { return Element(); }
    bool IsEntityName() const { return Element().tag == ca::ContextConstructed(1); }
    CAsn1GeneralNamesView EntityName() const { return Element(); }
    bool IsObjectDigestInfo() const { return Element().tag == ca::ContextConstructed(2); }
    CAsn1ObjectDigestInfoView ObjectDigestInfo() const { return Element(); }
};

/// Holder; see attributes/Holder.h.
class CAsn1HolderView : public CAsn1ViewOf<CAsn1Holder> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// It may have as many parts.
    static constexpr std::size_t kMostParts = 3;
    CAsn1HolderPartView Part(std::size_t index) const { return Member(index); }
};

/// AttributeCertificateInfo of both versions; see attributes/AttributeCertificate.h and
/// AttributeCertificateV1.h.
class CAsn1AttributeCertificateInfoView : public CAsn1ViewOf<CAsn1AttributeCertificateInfo> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// Left out in the old version as a rule.
    bool HasVersion() const { return Member(0).tag == kAsn1Integer; }
    /// True for the old version, whose holder is an AttCertSubject.
    bool IsV1() const { return Subject().IsBaseCertificateId() || Subject().IsEntityName(); }
    CAsn1HolderView Holder() const { return Member(HasVersion() ? 1 : 0); }
    CAsn1HolderPartView Subject() const { return Member(HasVersion() ? 1 : 0); }
};

/// AttributeCertificate of both versions.
class CAsn1AttributeCertificateView : public CAsn1ViewOf<CAsn1AttributeCertificate> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1AttributeCertificateInfoView AcInfo() const { return Member(0); }

    /// True when the first members are of their types, as far as tags tell.
    bool HasForm() const;
};
