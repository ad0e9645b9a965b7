#include "asn1/attributes/TstInfo.h"
#include "asn1/cms/EvidenceRecord.h"
#include "asn1/cms/TimeStampedData.h"
#include "asn1/tsp/TimeStampReq.h"
#include "asn1/tsp/TimeStampResp.h"
#include "common/DecimalText.h"
#include "records/objects/Describers.h"
#include "records/objects/DescriptionParts.h"
#include "records/objects/MessageParts.h"
#include "records/objects/Reading.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/GeneralNameText.h"
#include "records/text/OutlineText.h"
#include "records/text/PolicyText.h"
#include "records/text/SharedFormatters.h"
#include "records/text/SignatureParts.h"

#include <iterator>

// What is exchanged with time-stamp services (RFC 3161), and what keeps their stamps (RFC 4998,
// RFC 5544).

namespace {

using ca::CDescriptionBuilder;
using ca::FieldForm;
using ca::FieldId;
using ca::Of;
using ca::Word;

// PKIStatus, by its number (RFC 3161, 2.4.2).
constexpr Word kStatuses[] = {Word::kGranted,           Word::kGrantedWithMods,
                              Word::kRejection,         Word::kWaiting,
                              Word::kRevocationWarning, Word::kRevocationNotification};

struct FailureRow {
    std::size_t bit;
    Word word;
};
// PKIFailureInfo (RFC 3161, 2.4.2).
constexpr FailureRow kFailures[] = {
    {0, Word::kBadAlgorithm},         {2, Word::kBadRequest},
    {5, Word::kBadDataFormat},        {14, Word::kTimeNotAvailable},
    {15, Word::kUnacceptedPolicy},    {16, Word::kUnacceptedExtension},
    {17, Word::kAddInfoNotAvailable}, {25, Word::kSystemFailure},
};

void SayImprint(CDescriptionBuilder& builder, const CAsn1MessageImprint* imprint) {
    if (imprint != nullptr) {
        ca::SayDigest(builder, FieldId::kDigest, imprint->HashAlgorithm(),
                      imprint->HashedMessage());
    }
}

// As the client made it, in hex: it is only ever compared.
void SayNonce(CDescriptionBuilder& builder, const CAsn1Integer* nonce) {
    builder.Text(FieldId::kNonce, ca::Hex(OctetsOf(nonce)));
}

// ---- Answers ----

std::wstring FailuresText(const CAsn1BitString* failInfo) {
    const CAsn1Bits bits = BitsOf(failInfo);
    std::wstring text;
    for (const FailureRow& row : kFailures) {
        if (bits[row.bit]) {
            ca::AppendListed(text, ca::WordText(row.word));
        }
    }
    // Bits that have no name show as octets.
    return text.empty() ? ca::Hex(bits.octets) : text;
}

// PKIStatusInfo (RFC 3161, 2.4.2).
void SayStatus(CDescriptionBuilder& builder, const CAsn1PkiStatusInfo* info) {
    if (info == nullptr) {
        return;
    }
    std::uint32_t number = 0;
    if (info->Status() != nullptr && ca::ReadSmallInteger(*info->Status(), number)) {
        const Word word = number < std::size(kStatuses) ? kStatuses[number] : Word::kUnknownStatus;
        builder.Text(FieldId::kStatus,
                     ca::WordText(word) + (L" (" + ca::DecimalText(number) + L')'));
    } else if (info->Status() != nullptr) {
        builder.Unreadable(FieldId::kStatus, OctetsOf(info->Status()));
    }
    ca::SayList(builder, FieldId::kStatusText, info->StatusString(),
                [&](const CAsn1Any& text) { builder.Element(ca::MemberText(&text)); });
    if (info->FailInfo() != nullptr) {
        builder.Text(FieldId::kFailure, FailuresText(info->FailInfo()));
    }
}

// ---- Evidence ----

// The digests of one group, one a line.
void SayHashGroup(CDescriptionBuilder& builder, const CAsn1SequenceOf<CAsn1OctetString>& group) {
    // A text, not fields: a hash tree may have thousands of groups.
    ca::CTextLines lines;
    const std::size_t count = group.Count();
    std::size_t index = 0;
    for (auto at = group.Elements(); lines.Shows(index, count) && at.Next(); ++index) {
        lines.Line(at.Item() != nullptr ? ca::Hex(builder.Joined(at.Item()))
                                        : ca::UnreadableText(at.Raw()));
    }
    builder.Element(lines.TakeOr(kMsgEmpty));
}

// ArchiveTimeStamp (RFC 4998, 4.1).
void SayArchiveTimeStamp(CDescriptionBuilder& builder, const CAsn1ArchiveTimeStamp& stamp) {
    ca::SayAlgorithm(builder, FieldId::kDigestAlgorithm, stamp.DigestAlgorithm());
    if (stamp.Attributes() != nullptr) {
        ca::SayAttributesIn(builder, FieldId::kAttributes, stamp.Attributes()->ContentOctets());
    }
    ca::SayList(builder, FieldId::kHashTree, stamp.ReducedHashtree(),
                [&](const auto& group) { SayHashGroup(builder, group); });
    if (stamp.TimeStamp() != nullptr) {
        ca::SayMessage(builder, FieldId::kTimeStamp, stamp.TimeStamp()->Raw());
    }
}

void SayEvidenceRecord(CDescriptionBuilder& builder, const CAsn1EvidenceRecord& record) {
    ca::SayNumber(builder, FieldId::kVersion, record.Version());
    ca::SayList(builder, FieldId::kDigestAlgorithms, record.DigestAlgorithms(),
                [&](const CAsn1AlgorithmIdentifier& algorithm) {
                    ca::SayAlgorithm(builder, builder.Id(), &algorithm);
                });
    if (record.CryptoInfos() != nullptr) {
        ca::SayAttributesIn(builder, FieldId::kCryptoInfos, record.CryptoInfos()->ContentOctets());
    }
    // How contents were encrypted before they were stamped; its types are anybody's.
    if (record.EncryptionInfo() != nullptr) {
        ca::CTextLines lines;
        ca::SayUnknownValue(record.EncryptionInfo()->Raw(), lines);
        builder.Text(FieldId::kEncryption, lines.Take());
        builder.Fault(lines.TakeFaults());
    }
    // A chain has stamps of one algorithm, each renewed by the next; a new chain begins with a new
    // algorithm (RFC 4998, 5.1).
    ca::SayGroups(
        builder, FieldId::kChains, record.ArchiveTimeStampSequence(), [&](const auto& chain) {
            ca::SayGroups(builder, FieldId::kTimeStamps, &chain,
                          [&](const auto& stamp) { SayArchiveTimeStamp(builder, stamp); });
        });
}

// MetaData (RFC 5544).
void SayMetaData(CDescriptionBuilder& builder, const CAsn1MetaData* meta) {
    if (meta == nullptr) {
        return;
    }
    ca::SayString(builder, FieldId::kFileName, meta->FileName());
    ca::SayString(builder, FieldId::kMediaType, meta->MediaType());
    if (meta->HashProtected() != nullptr) {
        builder.Flag(FieldId::kMetaDataStamped, BooleanOf(meta->HashProtected()));
    }
    ca::SayAttributeList(builder, FieldId::kAttributes, meta->OtherMetaData(),
                         ca::AttributeValues::kAll);
}

void SayEvidence(CDescriptionBuilder& builder, const CAsn1Evidence* evidence) {
    if (evidence == nullptr) {
        return;
    }
    // TimeStampTokenEvidence: stamps that renew each other, each with the list that was valid then.
    ca::SayGroups(builder, FieldId::kTimeStamps, evidence->TstEvidence(),
                  [&](const CAsn1TimeStampAndCrl& stamp) {
                      if (stamp.TimeStamp() != nullptr) {
                          ca::SayMessage(builder, FieldId::kTimeStamp, stamp.TimeStamp()->Raw());
                      }
                      if (stamp.Crl() != nullptr) {
                          ca::SaySignedObject(builder, FieldId::kCrl, stamp.Crl()->Raw());
                      }
                  });
    if (evidence->ErsEvidence() != nullptr) {
        const CDescriptionBuilder::Level level(builder, FieldId::kEvidenceRecord,
                                               FieldForm::kGroup);
        SayEvidenceRecord(builder, *evidence->ErsEvidence());
    }
    if (const CAsn1OtherEvidence* other = evidence->OtherEvidence()) {
        ca::SayOid(builder, FieldId::kOtherEvidence, other->OeType());
    }
}

}  // namespace

namespace ca {

// TimeStampReq (RFC 3161, 2.4.1).
void DescribeTimeStampRequest(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1TimeStampReq> request(source.octets, builder);
    if (request.Get() == nullptr) {
        return;
    }
    SayNumber(builder, FieldId::kVersion, request.Get()->Version());
    SayImprint(builder, request.Get()->MessageImprint());
    SayOid(builder, FieldId::kPolicy, request.Get()->ReqPolicy());
    SayNonce(builder, request.Get()->Nonce());
    // FALSE is said, too: without the certificate a verifier must have it from elsewhere.
    builder.Flag(FieldId::kCertificateRequested, request.Get()->CertReq());
    SayExtensionList(builder, FieldId::kExtensions, request.Get()->Extensions());
}

void DescribeTimeStampResponse(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1TimeStampResp> response(source.octets, builder);
    SayStatus(builder, Of(response.Get(), &CAsn1TimeStampResp::Status));
    if (const auto* token = Of(response.Get(), &CAsn1TimeStampResp::TimeStampToken)) {
        SayMessage(builder, FieldId::kTimeStamp, token->Raw());
    } else {
        // Refused: there is no token.
        builder.Absent(FieldId::kTimeStamp, Word::kNone);
    }
}

// TSTInfo (RFC 3161, 2.4.2), field by field.
void SayTimeStampInfo(CDescriptionBuilder& builder, std::span<const unsigned char> octets) {
    const CReading<CAsn1TstInfo> stamp(octets, builder);
    if (stamp.Get() == nullptr) {
        return;
    }
    SayNumber(builder, FieldId::kVersion, stamp.Get()->Version());
    SayTime(builder, FieldId::kTime, stamp.Get()->GenTime());
    SayOid(builder, FieldId::kPolicy, stamp.Get()->Policy());
    SaySerial(builder, FieldId::kSerial, stamp.Get()->SerialNumber());
    SayImprint(builder, stamp.Get()->MessageImprint());
    if (stamp.Get()->Accuracy() != nullptr) {
        builder.Text(FieldId::kAccuracy, AccuracyText(*stamp.Get()->Accuracy()));
    }
    builder.Flag(FieldId::kOrdered, stamp.Get()->Ordering());
    SayNonce(builder, stamp.Get()->Nonce());
    if (stamp.Get()->Tsa() != nullptr) {
        CTextLines faults;
        builder.Text(FieldId::kAuthority, GeneralNameLine(ElementOf(*stamp.Get()->Tsa()), faults));
        builder.Fault(faults.TakeFaults());
    }
    SayExtensionList(builder, FieldId::kExtensions, stamp.Get()->Extensions());
}

void DescribeTimeStampInfo(const ObjectSource& source, CDescriptionBuilder& builder) {
    SayTimeStampInfo(builder, source.octets);
}

void DescribeEvidenceRecord(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1EvidenceRecord> record(source.octets, builder);
    if (record.Get() != nullptr) {
        SayEvidenceRecord(builder, *record.Get());
    }
}

// TimeStampedData (RFC 5544): the content is here, or at an address.
void DescribeTimeStampedData(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CMessage message(source.octets, builder);
    const CReading<CAsn1TimeStampedData> data(message.Content(), builder);
    if (data.Get() == nullptr) {
        return;
    }
    SayNumber(builder, FieldId::kVersion, data.Get()->Version());
    SayString(builder, FieldId::kAddress, data.Get()->DataUri());
    SayMetaData(builder, data.Get()->MetaData());
    if (data.Get()->Content() != nullptr) {
        SaySize(builder, FieldId::kContentSize, data.Get()->Content());
    } else {
        builder.Absent(FieldId::kContentSize, Word::kNotEnclosed);
    }
    SayEvidence(builder, data.Get()->TemporalEvidence());
}

}  // namespace ca
