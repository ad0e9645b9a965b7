#include "module/viewer/ItemKinds.h"

#include "asn1/BlockText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "module/viewer/ItemDescribers.h"
#include "module/viewer/ZonedTime.h"
#include "records/objects/ObjectKinds.h"
#include "records/text/TextLines.h"

#include <algorithm>

namespace {

using namespace ca;

QString FileItemName(const CFileDocument& document, ItemIndex item) {
    return OrDash(LaidOut(ShownText(document.FileName(item).toStdWString()), kMaxLineText));
}

void DescribeFile(const CFileDocument& document, ItemIndex item, ItemDescription& out) {
    out.summary.Row("name", ViewerWord::kFile, ShownText(document.FileName(item).toStdWString()));
    out.summary.Row("size", ViewerWord::kSize,
                    Counted(document[item].octets.size(), ViewerWord::kOctetCount));
    out.summary.Fingerprints(document[item].octets);
}

QString LabelName(const CFileDocument& document, ItemIndex item) {
    const ItemNote* const note = document[item].note.get();
    return note != nullptr ? LaidOut(ShownText(u8u16(note->label)), kMaxLineText) : QString();
}

void DescribeStructure(const CFileDocument& document, ItemIndex item, ItemDescription& out) {
    out.summary.Row("label", ViewerWord::kBlockLabel, LabelName(document, item));
    DescribeFile(document, item, out);
}

QString MoreName(const CFileDocument& document, ItemIndex item) {
    const std::size_t count = document[item].number;
    return count != 0 ? QString::fromStdWString(MoreText(count)) : MessageText(kMsgDlgTooDeep);
}

constexpr unsigned kPlain = PageBit(kGeneralPage) | PageBit(kStructurePage);
constexpr unsigned kRecord = kPlain | PageBit(kDetailsPage);
constexpr unsigned kCertified = kRecord | PageBit(kPathPage);
constexpr unsigned kListed = kRecord | PageBit(kEntriesPage);

// clang-format off
constexpr ItemKindRow kRows[] = {
    {ItemKind::kFile, ViewerWord::kFile, ViewerWord::kFiles, PageBit(kGeneralPage), "",
     nullptr, &FileItemName, &DescribeFile, nullptr},
    {ItemKind::kCertificate, ViewerWord::kCertificate, ViewerWord::kCertificates, kCertified, "CERTIFICATE",
     nullptr, &CertificateName, &DescribeCertificate, &CertificateJson},
    {ItemKind::kAttributeCertificate, ViewerWord::kAttributeCertificate,
     ViewerWord::kAttributeCertificates, kRecord, "ATTRIBUTE CERTIFICATE",
     nullptr, &AttributeCertificateName, &DescribeAttributeCertificate,
     &AttributeCertificateJson},
    {ItemKind::kCrl, ViewerWord::kCrl, ViewerWord::kCrls, kListed, "X509 CRL",
     nullptr, &CrlName, &DescribeCrl, &CrlJson},
    {ItemKind::kTimeStamp, ViewerWord::kTimeStamp, ViewerWord::kTimeStamps, kPlain, "CMS",
     &ReadMessage, &TimeStampName, &DescribeMessage, &MessageJson},
    {ItemKind::kMessage, ViewerWord::kMessage, ViewerWord::kMessages, kPlain, "CMS",
     &ReadMessage, &MessageName, &DescribeMessage, &MessageJson},
    {ItemKind::kBundle, ViewerWord::kBundle, ViewerWord::kBundles, kPlain, "CMS",
     &ReadMessage, nullptr, &DescribeMessage, &BundleJson},
    {ItemKind::kSignature, ViewerWord::kSignature, ViewerWord::kSignatures, kCertified, "",
     &ReadSignature, &SignatureName, &DescribeSignature, &SignatureJson},
    {ItemKind::kCountersignature, ViewerWord::kCountersignature, ViewerWord::kCountersignatures, kCertified, "",
     &ReadSignature, &SignatureName, &DescribeSignature, &SignatureJson},
    {ItemKind::kEnvelope, ViewerWord::kEnvelope, ViewerWord::kEnvelopes, kPlain, "CMS",
     &ReadEnvelope, nullptr, &DescribeEnvelope, &EnvelopeJson},
    {ItemKind::kRecipient, ViewerWord::kRecipient, ViewerWord::kRecipients, kRecord, "",
     nullptr, &RecipientName, &DescribeOneRecipient, &RecipientJson},
    {ItemKind::kObject, ViewerWord::kStructure, ViewerWord::kStructures, kRecord, "",
     &ReadOtherObject, nullptr, &DescribeOther, &OtherJson},
    {ItemKind::kStructure, ViewerWord::kStructure, ViewerWord::kStructures, kPlain, "",
     nullptr, &LabelName, &DescribeStructure, nullptr},
    {ItemKind::kUnreadable, ViewerWord::kUnreadable, ViewerWord::kUnreadables, kPlain, "",
     nullptr, &LabelName, &DescribeStructure, nullptr},
    {ItemKind::kMore, ViewerWord::kFile, ViewerWord::kFiles, PageBit(kGeneralPage), "",
     nullptr, &MoreName, nullptr, nullptr},
};
// clang-format on

QString DamageSentence(const Asn1Damage& damage) {
    const bool isEnd = damage.fault == Asn1Fault::kTruncated && damage.announced == 0;
    const bool isCut = damage.fault == Asn1Fault::kTruncated && !isEnd;
    if (isCut) {
        return Word(ViewerWord::kDamageCut)
            .arg(damage.offset)
            .arg(QString::fromStdString(TagText(damage.tag)))
            .arg(damage.announced)
            .arg(damage.available);
    }
    return Word(isEnd ? ViewerWord::kDamageEnd : ViewerWord::kDamageForm).arg(damage.offset);
}

// A record has but one of the fingerprints.
void AddFingerprint(ItemDescription& description) {
    const std::vector<SummaryRow>& rows = description.summary.Rows();
    const auto row = std::ranges::find(rows, QString("sha256"), &SummaryRow::key);
    if (row != rows.end() && description.fields.Size() > 1) {
        description.fields.Add(CRecordFields::kRoot, row->caption, row->text);
    }
}

}  // namespace

namespace ca {

const ItemKindRow& KindRow(ItemKind kind) {
    return *std::ranges::find(kRows, kind, &ItemKindRow::kind);
}

QString KindText(const FileItem& item) {
    if (item.object == nullptr) {
        return Word(KindRow(item.kind).caption);
    }
    QString name = QString::fromWCharArray(item.object->Name());
    name[0] = name[0].toUpper();
    return name;
}

QString CountText(const FileItem& item, std::size_t count) {
    if (item.kind == ItemKind::kMore) {
        return MessageText(kMsgAndMore).replace('N', QString::number(count));
    }
    if (item.object == nullptr) {
        return Counted(count, KindRow(item.kind).counted);
    }
    // The names of objects have no forms.
    return QString::fromWCharArray(item.object->Name()) +
           (count == 1 ? QString() : QStringLiteral(": %1").arg(count));
}

std::string PemLabelOf(const FileItem& item) {
    if (item.kind != ItemKind::kObject) {
        return KindRow(item.kind).pemLabel;
    }
    if (item.note != nullptr && !item.note->label.empty()) {
        return item.note->label;
    }
    const std::string_view labels = item.object->labels;
    const char* const message = item.object->contentTypes.IsEmpty() ? "" : "CMS";
    return labels.empty() ? message : std::string(labels.substr(0, labels.find('|')));
}

QString ListedName(const CFileDocument& document, ItemIndex item) {
    const ItemKind kind = document[item].kind;
    const ItemKindRow& row = KindRow(kind);
    const QString name = row.name != nullptr ? row.name(document, item) : QString();
    const bool isNameAlone = kind == ItemKind::kFile || kind == ItemKind::kMore ||
                             (kind == ItemKind::kCertificate && !name.isEmpty());
    return isNameAlone ? name : KindText(document[item]) + (name.isEmpty() ? name : ": " + name);
}

ItemDescription DescribeItem(const CFileDocument& document, ItemIndex item) {
    const ItemKindRow& row = KindRow(document[item].kind);
    ItemDescription description;
    description.kind = KindText(document[item]);
    description.title = OrDash(row.name != nullptr ? row.name(document, item) : QString());
    const QString damage = DamageText(document, item);
    description.summary.Row("damage", MessageText(kMsgFieldFaults), damage);
    try {
        if (row.describe != nullptr) {
            row.describe(document, item, description);
        }
        AddFingerprint(description);
    } catch (const Exception& fault) {
        SayFaults(fault.message, description);
    }
    if (!damage.isEmpty()) {
        description.sign = ItemSign::kWarning;
    }
    return description;
}

QString ItemText(const CFileDocument& document, ItemIndex item) {
    const ItemDescription description = DescribeItem(document, item);
    if (description.fields.Size() > 1) {
        return description.fields.AsText();
    }
    const ItemKindRow& row = KindRow(document[item].kind);
    QString text = description.summary.AsText();
    try {
        if (row.json != nullptr) {
            const RecordSort sort =
                row.kind == ItemKind::kEnvelope ? RecordSort::kRecipient : RecordSort::kRecord;
            text += CRecordFields(row.json(document, item), sort).AsText();
        }
    } catch (const Exception&) {  // recipients that nobody may know of
    }
    return text;
}

QString DamageText(const CFileDocument& document, ItemIndex item) {
    const FileItem& shown = document[item];
    if (shown.kind == ItemKind::kUnreadable && shown.octets.empty()) {
        return Word(ViewerWord::kDamageBlock);
    }
    if (shown.note != nullptr && shown.note->cut) {
        return DamageSentence(*shown.note->cut);
    }
    const std::optional<Asn1Damage> damage =
        shown.kind == ItemKind::kFile ? std::nullopt : FindAsn1Damage(shown.octets);
    return damage ? DamageSentence(*damage) : QString();
}

bool SayPeriod(const TimeTexts& from, const TimeTexts& to, ItemDescription& out) {
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const QString remaining = RemainingText(ReadUtc(from.utc), ReadUtc(to.utc), now);
    const QString end = ZonedTime(to);
    out.summary.Time("validFrom", "ValidFrom", from);
    out.summary.Row("validTo", LabelOf("ValidTo"),
                    remaining.isEmpty() ? end : end + " (" + remaining + ")");
    return ReadUtc(from.utc) <= now && now <= ReadUtc(to.utc);
}

void SayStatus(std::wstring_view words, std::uint32_t code, bool isInPeriod, ItemDescription& out) {
    const bool isUnchecked = code == kErrNotVerified || code == 0;
    out.sign = code == kErrChainValid      ? ItemSign::kGood
               : isUnchecked && isInPeriod ? ItemSign::kInformation
                                           : ItemSign::kWarning;
    out.summary.Row("status", MessageText(kMsgOcspStatus), ShownText(words));
}

void SayFaults(std::wstring_view error, ItemDescription& out) {
    out.summary.Row("faults", "Error", error);
}

}  // namespace ca
