// Signed messages, time stamps, and the signatures of both.

#include "asn1/OidTable.h"
#include "asn1/attributes/TstInfo.h"
#include "asn1/cms/SignedData.h"
#include "asn1/cms/SignerInfo.h"
#include "asn1/views/AttributeViews.h"
#include "asn1/views/MessageViews.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "module/viewer/FileReader.h"
#include "module/viewer/ItemDescribers.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/RecipientsFill.h"
#include "records/fill/SignInfoFill.h"
#include "records/text/AlgorithmText.h"
#include "records/text/Decoded.h"
#include "records/text/GeneralNameText.h"
#include "records/text/SignatureParts.h"
#include "records/text/TimeText.h"

#include <QStringList>

#include <memory>
#include <utility>

namespace {

using namespace ca;

using OpenMessage = CPartlyDecoded<CAsn1SignedData>;

const CAsn1EncapsulatedContentInfo* ContentOf(const OpenMessage& message) {
    return message.Get() != nullptr ? message.Get()->EncapContentInfo() : nullptr;
}

CAsn1EncapsulatedContentView EncapsulatedIn(std::span<const unsigned char> message) {
    return CAsn1SignedDataView(FirstElement(FindSignedData(message))).EncapContentInfo();
}

// The octets of a content that is in one piece.
std::span<const unsigned char> PlainContent(const CAsn1EncapsulatedContentInfo* content) {
    const bool isPlain = content != nullptr && content->EContent() != nullptr &&
                         content->EContent()->Tag() == kAsn1OctetString;
    return isPlain ? OctetsOf(content->EContent()) : std::span<const unsigned char>();
}

template <class List>
std::size_t CountOf(const List* list) {
    return list != nullptr ? list->Count() : 0;
}

// An attribute's values: signatures on this one, and whole messages, of which most are stamps.
void ReadAttribute(CFileReader& reader, const CAsn1AttributeView& attribute, ItemIndex signature) {
    const bool isCountersignature = IsOid(attribute.Type(), "id-countersignature");
    CAsn1Element value;
    for (CAsn1Cursor values(attribute.Values().content); values.Step(value);) {
        if (isCountersignature) {
            reader.AddWhole(ItemKind::kCountersignature, value.raw, signature);
        } else if (CAsn1ContentInfoView(value).Is("id-signedData")) {
            reader.AddObject(value.raw, signature);
        }
    }
}

// What stands for a certificate is tagged (RFC 5652, 10.2.2).
void AddCertificate(CFileReader& reader, const CAsn1Element& choice, ItemIndex message) {
    const bool isAttribute =
        choice.tag == ContextConstructed(1) || choice.tag == ContextConstructed(2);
    reader.AddObject(isAttribute ? reader.CopyAs(kAsn1Sequence, choice.raw) : choice.raw, message);
}

// In the place of a list may stand something else: an OCSP response as a rule (RFC 5940).
void AddRevocation(CFileReader& reader, const CAsn1RevocationChoiceView& choice,
                   ItemIndex message) {
    reader.AddObject(choice.Info().raw, message);
}

// As the signature names its signer; "" where that cannot be read.
std::wstring SignerText(const CAsn1SignerInfo& signer) {
    const CAsn1SignerIdentifier* const id = signer.Sid();
    const CAsn1IssuerAndSerialNumber* const name =
        id != nullptr ? id->IssuerAndSerialNumber() : nullptr;
    const bool isWhole = name != nullptr
                             ? name->Issuer() != nullptr && name->SerialNumber() != nullptr
                             : id != nullptr && id->SubjectKeyIdentifier() != nullptr;
    return isWhole ? SignerIdText(*id) : std::wstring();
}

SignInfo RecordOf(const CFileDocument& document, ItemIndex item) {
    SignInfo record;
    const ItemIndex message = document.MessageOf(item);
    if (message != kNoItem) {
        FillSignInfo(document[message].octets, document[item].octets, record);
    }
    if (const SignInfo* verified = document.VerifiedOf(item)) {
        record.verifyResult = verified->verifyResult;
        record.verifyResultEx = verified->verifyResultEx;
        record.signCert.validity = verified->signCert.validity;
        record.signCert.validityNumber = verified->signCert.validityNumber;
    }
    return record;
}

// What was not verified has no verdict, and the words for that alone.
void SayVerdict(const SignInfo& record, ItemDescription& out) {
    const VerificationResult& result = record.verifyResultEx;
    SayStatus(result.signatureVerifyResultString, result.signatureVerifyResult,
              /*isInPeriod=*/true, out);
    if (result.certificateVerifyResult != kErrNotVerified) {
        out.summary.Row("certificateStatus", ViewerWord::kCertificate,
                        ShownText(result.certificateVerifyResultString).section('\n', 0, 0));
    }
    if (result.signatureVerifyResult == kErrNotVerified || result.signatureVerifyResult == 0) {
        return;
    }
    const bool isIntact = result.signatureVerifyResult == kErrChainValid;
    const bool isTrusted = result.certificateVerifyResult == kErrChainValid;
    out.sign = !isIntact ? ItemSign::kBad : isTrusted ? ItemSign::kGood : ItemSign::kWarning;
    out.verdict = Word(!isIntact   ? ViewerWord::kVerdictInvalid
                       : isTrusted ? ViewerWord::kVerdictValid
                                   : ViewerWord::kVerdictUntrusted);
}

void SayTimeStampRows(const CAsn1EncapsulatedContentInfo& content, ItemDescription& out) {
    CTextLines lines;
    if (SayTimeStamp(content, lines)) {
        out.summary.Row("timeStamp", ViewerWord::kTimeStamp, ShownText(lines.Take()));
    }
}

void SayMessage(const CAsn1SignedData& message, ItemDescription& out) {
    CSummary& summary = out.summary;
    if (const CAsn1EncapsulatedContentInfo* content = message.EncapContentInfo()) {
        const bool isAttached = content->EContent() != nullptr;
        SayTimeStampRows(*content, out);
        summary.Row("contentType", ViewerWord::kContentType,
                    ShownText(OidWithName(OctetsOf(content->EContentType()))));
        summary.Row("content", ViewerWord::kContent,
                    isAttached
                        ? Word(ViewerWord::kContentEnclosed) + ", " +
                              Counted(OctetsOf(content->EContent()).size(), ViewerWord::kOctetCount)
                        : Word(ViewerWord::kContentDetached));
    }
    QStringList inside;
    const auto count = [&inside](std::size_t number, ViewerWord noun) {
        if (number != 0) {
            inside += Counted(number, noun);
        }
    };
    count(CountOf(message.SignerInfos()), ViewerWord::kSignatures);
    count(CountOf(message.Certificates()), ViewerWord::kCertificates);
    count(CountOf(message.Crls()), ViewerWord::kCrls);
    summary.Row("inside", ViewerWord::kInside, inside.join(", "));
}

// The signer as its certificate has it, else as the signature names it.
void SayWhoSigned(const CertInfo& signer, const QString& name, ItemDescription& out) {
    if (signer.description.tags.empty() && signer.description.readable.empty()) {
        out.summary.Row("signer", ViewerWord::kSigner, name);
    } else {
        out.summary.Name("signer", Word(ViewerWord::kSigner), signer.description);
    }
    out.summary.Name("issuer", LabelOf("Issuer"), signer.issuer);
}

}  // namespace

namespace ca {

bool IsMessage(std::span<const unsigned char> octets) {
    return !FindSignedData(octets).empty();
}

bool IsTimeStamp(std::span<const unsigned char> octets) {
    return IsOid(EncapsulatedIn(octets).EContentType(), "id-ct-TSTInfo");
}

bool IsAttached(std::span<const unsigned char> octets) {
    return EncapsulatedIn(octets).HasEContent();
}

void ReadMessage(CFileReader& reader, ItemIndex item) {
    const OpenMessage message(FindSignedData(reader.Item(item).octets));
    if (message.Get() == nullptr) {
        return;
    }
    const auto each = [&](const auto* list, auto add) {
        if (list != nullptr) {
            reader.AddEach(list->ContentOctets(), item, add);
        }
    };
    each(message.Get()->SignerInfos(), [&](const CAsn1Element& signer) {
        reader.AddWhole(ItemKind::kSignature, signer.raw, item);
    });
    each(message.Get()->Certificates(),
         [&](const CAsn1Element& choice) { AddCertificate(reader, choice, item); });
    each(message.Get()->Crls(),
         [&](const CAsn1Element& choice) { AddRevocation(reader, choice, item); });
    const std::span<const unsigned char> content = PlainContent(ContentOf(message));
    // Signed around enveloped, or around signed again, as mail programs do it (RFC 8551, 3.7).
    if (IsMessage(content) || !FindEnvelope(content).empty()) {
        reader.AddObject(content, item);
    }
}

void ReadSignature(CFileReader& reader, ItemIndex item) {
    const CPartlyDecoded<CAsn1SignerInfo> signer(reader.Item(item).octets);
    if (signer.Get() == nullptr) {
        return;
    }
    for (const auto* list : {signer.Get()->SignedAttrs(), signer.Get()->UnsignedAttrs()}) {
        CAsn1Element attribute;
        CAsn1Cursor at(list != nullptr ? list->ContentOctets() : std::span<const unsigned char>());
        while (at.Step(attribute)) {
            ReadAttribute(reader, attribute, item);
        }
    }
}

QString MessageName(const CFileDocument& document, ItemIndex item) {
    const OpenMessage message(FindSignedData(document[item].octets));
    const CAsn1EncapsulatedContentInfo* const content = ContentOf(message);
    const Octets type = content != nullptr ? OctetsOf(content->EContentType()) : Octets();
    // Plain data are what nearly all messages are about; only others are worth a name.
    return type.empty() || IsOid(type, "id-data") ? QString() : ShownLine(OidName(type));
}

QString TimeStampName(const CFileDocument& document, ItemIndex item) {
    const OpenMessage message(FindSignedData(document[item].octets));
    const CPartlyDecoded<CAsn1TstInfo> stamp(PlainContent(ContentOf(message)));
    if (stamp.Get() == nullptr || stamp.Get()->GenTime() == nullptr) {
        return {};
    }
    return ShownLine(TimeLine(*stamp.Get()->GenTime()));
}

QString SignatureName(const CFileDocument& document, ItemIndex item) {
    if (const ItemIndex signer = document.SignerOf(item); signer != kNoItem) {
        return CertificateName(document, signer);
    }
    const CPartlyDecoded<CAsn1SignerInfo> signer(document[item].octets);
    return signer.Get() != nullptr ? ShownLine(SignerText(*signer.Get())) : QString();
}

void DescribeMessage(const CFileDocument& document, ItemIndex item, ItemDescription& out) {
    const OpenMessage message(FindSignedData(document[item].octets));
    out.title = Word(KindRow(document[item].kind).caption);
    out.sign = ItemSign::kInformation;
    SayFaults(message.Fault(), out);
    if (message.Get() != nullptr) {
        SayMessage(*message.Get(), out);
    }
    out.summary.Fingerprints(document[item].octets);
}

void DescribeSignature(const CFileDocument& document, ItemIndex item, ItemDescription& out) {
    const SignInfo record = RecordOf(document, item);
    CSummary& summary = out.summary;
    SayVerdict(record, out);
    SayFaults(record.signCert.error, out);
    SayWhoSigned(record.signCert, out.title, out);
    summary.Row("serial", "Serial", record.signCert.serial);
    summary.Heading(Word(KindRow(document[item].kind).caption));
    summary.Time("signTime", "SignTime", record.signTime);
    summary.Row("comment", "Comment", record.comment);
    summary.Row("uri", "Uri", record.uri);
    summary.Row("signatureAlg", "SignAlg", record.signAlg);
    summary.Row("hashAlg", "HashAlg", record.hashAlg);
    summary.Row(
        "content", ViewerWord::kContent,
        Word(record.isAttached ? ViewerWord::kContentEnclosed : ViewerWord::kContentDetached));
    summary.Row("signId", "SignId", record.signId);
    if (!out.verdict.isEmpty()) {
        // A line for each certificate of the path, after that of the whole.
        summary.Row(
            "checked", ViewerWord::kChecked,
            ShownText(record.verifyResultEx.certificateVerifyResultString).section('\n', 1));
    }
    out.fields = CRecordFields(BareJson(record));
}

std::string MessageJson(const CFileDocument& document, ItemIndex item) {
    SignInfos records;
    FillSignInfos(document[item].octets, records);
    return RecordJson("signInfo", records);
}

std::string BundleJson(const CFileDocument& document, ItemIndex item) {
    CertInfos2 records;
    for (const ItemIndex child : document[item].children) {
        if (document[child].kind == ItemKind::kCertificate) {
            auto record = std::make_unique<CertInfo2>();
            FillCertInfo(document[child].octets, *record);
            records.Add(std::move(record));
        }
    }
    return RecordJson("certInfos", records);
}

std::string SignatureJson(const CFileDocument& document, ItemIndex item) {
    SignInfos records;
    records.items.emplace_back(std::make_unique<SignInfo>(RecordOf(document, item)));
    return RecordJson("signInfo", records);
}

}  // namespace ca
