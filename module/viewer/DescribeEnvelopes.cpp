// Enveloped messages and who can read them.

#include "asn1/cms/EnvelopedData.h"
#include "asn1/views/MessageViews.h"
#include "common/Encode.h"
#include "common/Exception.h"
#include "module/viewer/FileReader.h"
#include "module/viewer/ItemDescribers.h"
#include "records/fill/RecipientsFill.h"
#include "records/text/GeneralNameText.h"

namespace {

using namespace ca;

// The record of a recipient; an empty one where it cannot be told from the others.
CertInfo2 RecordOf(const CFileDocument& document, ItemIndex item) {
    const FileItem& recipient = document[item];
    const auto record = DescribeRecipient(recipient.octets, recipient.number);
    return record != nullptr ? *record : CertInfo2();
}

// Keys that are agreed on, and some other forms, name several recipients (RFC 5652, 6.2).
std::size_t CountIn(const CAsn1Element& info) {
    const bool isOne = info.tag == kAsn1Sequence || info.tag == ContextConstructed(2) ||
                       info.tag == ContextConstructed(3);
    return isOne ? 1 : std::max<std::size_t>(CountRecipients(info.raw), 1);
}

}  // namespace

namespace ca {

void ReadEnvelope(CFileReader& reader, ItemIndex item) {
    const std::span<const unsigned char> infos =
        RecipientInfosOf(FindEnvelope(reader.Item(item).octets));
    reader.AddEach(infos, item, [&](const CAsn1Element& info) {
        const auto add = [&](ItemKind kind, std::span<const unsigned char> octets,
                             std::size_t number) {
            const ItemIndex added = reader.Add(kind, octets, item);
            if (added != kNoItem) {
                reader.SetNumber(added, static_cast<std::uint32_t>(number));
            }
        };
        const std::size_t count = reader.IsFull() ? 1 : CountIn(info);
        const std::size_t listed = std::min(count, kMaxListed);
        for (std::size_t number = 0; number < listed; ++number) {
            add(ItemKind::kRecipient, info.raw, number);
        }
        if (count > listed) {
            add(ItemKind::kMore, {}, count - listed);
        }
    });
}

QString RecipientName(const CFileDocument& document, ItemIndex item) {
    const CertInfo2 record = RecordOf(document, item);
    if (!record.description.readable.empty()) {
        return ShownLine(record.description.readable);
    }
    const QString issuer = ShortName(record.issuer);
    const QString serial = ShownLine(record.serial);
    return issuer + (issuer.isEmpty() || serial.isEmpty() ? "" : ", ") + serial;
}

void DescribeEnvelope(const CFileDocument& document, ItemIndex item, ItemDescription& out) {
    out.title = Word(ViewerWord::kEnvelope);
    out.sign = ItemSign::kInformation;
    const CAsn1ContentInfoView message(FirstElement(document[item].octets));
    out.summary.Row("contentType", ViewerWord::kContentType,
                    ShownText(OidWithName(message.ContentType())));
    out.summary.Row("inside", ViewerWord::kInside,
                    Counted(document[item].children.size(), ViewerWord::kRecipients));
    out.summary.Fingerprints(document[item].octets);
}

void DescribeOneRecipient(const CFileDocument& document, ItemIndex item, ItemDescription& out) {
    const CertInfo2 record = RecordOf(document, item);
    CSummary& summary = out.summary;
    out.sign = ItemSign::kInformation;
    SayFaults(record.error, out);
    summary.Row("description", LabelOf("Description", RecordSort::kRecipient),
                ShownText(record.description.readable));
    summary.Name("issuer", LabelOf("Issuer"), record.issuer);
    summary.Heading(Word(ViewerWord::kRecipient));
    summary.Row("serial", "Serial", record.serial);
    summary.Row("key", LabelOf("PublicKeyAlg", RecordSort::kRecipient),
                ShownText(record.publicKeyAlg));
    summary.Row("parameters", LabelOf("PublicKeyParams", RecordSort::kRecipient),
                ShownText(record.publicKeyParams));
    summary.Row("id", LabelOf("Id", RecordSort::kRecipient), ShownText(record.id));
    out.fields = CRecordFields(BareJson(record), RecordSort::kRecipient);
}

std::string EnvelopeJson(const CFileDocument& document, ItemIndex item) {
    return RecordJson("certInfos", DescribeRecipients(FindEnvelope(document[item].octets)).records);
}

std::string RecipientJson(const CFileDocument& document, ItemIndex item) {
    CertInfos2 records;
    records.items.emplace_back(std::make_unique<CertInfo2>(RecordOf(document, item)));
    return RecordJson("certInfos", records);
}

}  // namespace ca
