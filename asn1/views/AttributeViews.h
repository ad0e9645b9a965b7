#pragma once

#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/Asn1View.h"

class CAsn1Attribute;

/// Attribute; see x509/Attribute.h.
class CAsn1AttributeView : public CAsn1ViewOf<CAsn1Attribute> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    ca::Octets Type() const { return OidMember(0); }
    /// The SET; walk its content.
    CAsn1Element Values() const { return Member(1); }
    CAsn1Element FirstValue() const { return InnerOf(Values()); }
};

// ATSHashIndex ::= SEQUENCE {
//     hashIndAlgorithm         AlgorithmIdentifier,     -- DEFAULT {id-sha256} in the first version
//     certificatesHashIndex    SEQUENCE OF OCTET STRING,
//     crlsHashIndex            SEQUENCE OF OCTET STRING,
//     unsignedAttrsHashIndex   SEQUENCE OF OCTET STRING }     ETSI EN 319 122-1, 5.5.2
/// A view, since all members have one tag: the algorithm is the one that begins with an identifier.
class CAsn1HashIndexView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    bool HasAlgorithm() const { return InnerOf(Member(0)).tag == kAsn1ObjectIdentifier; }
    CAsn1AlgorithmView HashIndAlgorithm() const {
        return HasAlgorithm() ? Member(0) : CAsn1Element();
    }
    CAsn1Element CertificatesHashIndex() const { return AfterAlgorithm(0); }
    CAsn1Element CrlsHashIndex() const { return AfterAlgorithm(1); }
    CAsn1Element UnsignedAttrsHashIndex() const { return AfterAlgorithm(2); }

  private:
    CAsn1Element AfterAlgorithm(std::size_t index) const {
        return Member(index + (HasAlgorithm() ? 1 : 0));
    }
};

// Attributes of requests for certificates as Windows makes them. Their texts are of whatever string
// type the writer chose.

// EnrollmentNameValuePair ::= SEQUENCE { name BMPString, value BMPString }     MS-WCCE, 2.2.2.7
class CAsn1EnrollmentNameValueView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1Element Name() const { return Member(0); }
    CAsn1Element Value() const { return Member(1); }
};

// CSPProvider ::= SEQUENCE { keySpec INTEGER, cspName BMPString, signature BIT STRING }
// MS-WCCE, 2.2.2.7
class CAsn1CspProviderView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1Element CspName() const { return Member(1); }
};

// RequestClientInfo ::= SEQUENCE {
//     clientId     INTEGER,
//     machineName  UTF8String,
//     userName     UTF8String,
//     processName  UTF8String }     MS-WCCE, 2.2.2.7
class CAsn1RequestClientInfoView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1Element MachineName() const { return Member(1); }
    CAsn1Element UserName() const { return Member(2); }
    CAsn1Element ProcessName() const { return Member(3); }
};

// CatalogNameValue ::= SEQUENCE {
//     name   BMPString,
//     flags  INTEGER,
//     value  OCTET STRING }   -- a text in UTF-16     CAT_NAMEVALUE of wintrust.h
class CAsn1CatalogNameValueView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1Element Name() const { return Member(0); }
    CAsn1Element Value() const { return Member(2); }
};

// Signatures of programs.

// SpcString ::= CHOICE { unicode [0] IMPLICIT BMPString, ascii [1] IMPLICIT IA5String }
/// As the string that it is.
class CAsn1SpcStringView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1Element Text() const {
        CAsn1Element text = Element();
        text.tag = text.tag == ca::ContextTag(0) ? kAsn1UnicodeString : kAsn1Ia5String;
        return text;
    }
};

// SpcLink ::= CHOICE { url [0] IMPLICIT IA5String, moniker [1] IMPLICIT SEQUENCE,
//     file [2] EXPLICIT SpcString }
class CAsn1SpcLinkView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// The url as the string that it is; without octets for another alternative.
    CAsn1Element Url() const {
        CAsn1Element url = Element().tag == ca::ContextTag(0) ? Element() : CAsn1Element();
        url.tag = kAsn1Ia5String;
        return url;
    }
    bool IsFile() const { return Element().tag == ca::ContextConstructed(2); }
    CAsn1SpcStringView File() const { return InnerOf(Element()); }
};

// SpcSpOpusInfo ::= SEQUENCE {
//     programName  [0] EXPLICIT SpcString OPTIONAL,
//     moreInfo     [1] EXPLICIT SpcLink OPTIONAL,
//     ... }
/// One of its members; a describer walks them, since others may stand there.
class CAsn1SpcOpusMemberView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    bool IsProgramName() const { return Element().tag == ca::ContextConstructed(0); }
    CAsn1SpcStringView ProgramName() const { return InnerOf(Element()); }
    bool IsMoreInfo() const { return Element().tag == ca::ContextConstructed(1); }
    CAsn1SpcLinkView MoreInfo() const { return InnerOf(Element()); }
};

class CAsn1SpcOpusInfoView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    CAsn1SpcLinkView MoreInfo() const {
        for (const CAsn1SpcOpusMemberView member : {Member(1), Member(0)}) {
            if (member.IsMoreInfo()) {
                return member.MoreInfo();
            }
        }
        return {};
    }
};

/// TCGSpecVersion, or TCGCredentialSpecification, which begins with one; see
/// attributes/PlatformAttributes.h.
class CAsn1TcgVersionView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// The first of the two.
    bool IsVersion() const { return Member(0).tag == kAsn1Integer; }
};
