#pragma once

#include "asn1/Oid.h"
#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/Asn1View.h"
#include "common/Exception.h"

class CAsn1ContentInfo;
class CAsn1EncapsulatedContentInfo;
class CAsn1EnvelopedData;
class CAsn1OcspResponse;
class CAsn1SignedData;
class CAsn1TimeStampResp;

/// ContentInfo; see cms/ContentInfo.h. The one place that takes it apart without a typed object.
class CAsn1ContentInfoView : public CAsn1ViewOf<CAsn1ContentInfo> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// True when the element begins with an identifier.
    bool HasContentType() const { return Member(0).tag == kAsn1ObjectIdentifier; }
    ca::Octets ContentType() const { return OidMember(0); }
    /// The row of the type in the table of identifiers; null for one that is not there.
    const ca::OidInfo* Type() const { return ca::FindOid(ContentType()); }
    bool Is(ca::COid type) const { return ca::IsOid(ContentType(), type); }

    bool HasContent() const { return !Member(1).raw.empty(); }
    /// The content is tagged as it should be, [0].
    bool IsContentTagged() const { return Member(1).tag == ca::ContextConstructed(0); }
    CAsn1Element Content() const { return InnerOf(Member(1)); }
};

/// EncapsulatedContentInfo; see cms/ContentInfo.h.
class CAsn1EncapsulatedContentView : public CAsn1ViewOf<CAsn1EncapsulatedContentInfo> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    bool HasEContentType() const { return Member(0).tag == kAsn1ObjectIdentifier; }
    ca::Octets EContentType() const { return OidMember(0); }
    bool HasEContent() const { return !Member(1).raw.empty(); }
};

/// SignedData; see cms/SignedData.h.
class CAsn1SignedDataView : public CAsn1ViewOf<CAsn1SignedData> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// The set; walk its content.
    CAsn1Element DigestAlgorithms() const { return Member(1); }
    CAsn1EncapsulatedContentView EncapContentInfo() const { return Member(2); }
    /// The sets; without octets where they are left out.
    CAsn1Element Certificates() const { return AfterContent(ca::ContextConstructed(0)); }
    CAsn1Element Crls() const { return AfterContent(ca::ContextConstructed(1)); }
    CAsn1Element SignerInfos() const;

    bool HasMembers() const { return !Member(0).raw.empty(); }
    /// True when the members that stand before the optional ones are of their types.
    bool HasForm() const {
        return Element().tag == kAsn1Sequence && Member(0).tag == kAsn1Integer &&
               DigestAlgorithms().tag == kAsn1Set && EncapContentInfo().HasEContentType();
    }

  private:
    CAsn1Element AfterContent(unsigned char tag) const;
};

/// The SignedData in a ContentInfo; nothing for a content of another type.
CAsn1SignedDataView SignedDataIn(const CAsn1ContentInfoView& contentInfo);

/// EnvelopedData, AuthenticatedData and their kin, which begin alike; see cms/EnvelopedData.h.
class CAsn1EnvelopeView : public CAsn1ViewOf<CAsn1EnvelopedData> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// What stands in the place of the recipients: a SET where all is well.
    CAsn1Element RecipientInfos() const { return Member(RecipientInfosIndex()); }
    /// Why that is not a SET, with the offset from the envelope.
    ca::Exception RecipientInfosFault() const;

  private:
    // After the version and, tagged [0], what the originator adds.
    std::size_t RecipientInfosIndex() const {
        return Member(1).tag == ca::ContextConstructed(0) ? 2 : 1;
    }
};

/// A choice of RevocationInfoChoices (RFC 5652, 10.2.1): a list, or, tagged [1],
/// OtherRevocationInfoFormat ::= SEQUENCE { format OBJECT IDENTIFIER, info ANY }.
class CAsn1RevocationChoiceView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// The info of another format, else the element itself.
    CAsn1Element Info() const {
        const bool isOther = Element().tag == ca::ContextConstructed(1);
        const CAsn1Element info = isOther ? Member(1) : CAsn1Element();
        return info.raw.empty() ? Element() : info;
    }
};

/// TimeStampResp; see tsp/TimeStampResp.h.
class CAsn1TimeStampRespView : public CAsn1ViewOf<CAsn1TimeStampResp> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// The number in PKIStatusInfo.
    CAsn1Element Status() const { return InnerOf(Member(0)); }
    CAsn1ContentInfoView TimeStampToken() const { return Member(1); }
};

/// OCSPResponse, or the BasicOCSPResponse that some keep alone; see ocsp/OcspResponse.h.
class CAsn1OcspResponseView : public CAsn1ViewOf<CAsn1OcspResponse> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// With its status.
    bool IsResponse() const { return Member(0).tag == kAsn1Enumerated; }
    /// Begins with tbsResponseData.
    bool IsBasic() const { return Member(0).tag == kAsn1Sequence; }
};

/// CertificateTrustList, whose members programs also save without what holds them; see
/// cms/CertificateTrustList.h.
class CAsn1TrustListView : public CAsn1ViewOf<CAsn1Object> {
  public:
    using CAsn1ViewOf::CAsn1ViewOf;

    /// The element is the first member, the list of usages, which are identifiers.
    bool IsBareMembers() const { return Member(0).tag == kAsn1ObjectIdentifier; }
};
