// Revocation lists. Their entries have a page of their own, which describes them as they come in
// sight.

#include "asn1/Elements.h"
#include "asn1/views/CrlViews.h"
#include "module/viewer/ItemDescribers.h"
#include "module/viewer/ZonedTime.h"
#include "records/fill/CrlInfoFill.h"
#include "records/text/NameText.h"

#include <limits>

namespace {

using namespace ca;

// The list without its entries, and without a copy of its octets.
void FillHead(const CFileDocument& document, ItemIndex item, CrlInfo& record) {
    FillCrlInfo(document[item].octets, {.first = 0, .count = 0, .serial = {}}, record);
    record.rawData = {};
}

}  // namespace

namespace ca {

QString CrlName(const CFileDocument& document, ItemIndex item) {
    const CAsn1CertificateListView list(FirstElement(document[item].octets));
    const NameForms issuer = DescribeName(list.TbsCertList().Issuer());
    return ShortName(issuer);
}

void DescribeCrl(const CFileDocument& document, ItemIndex item, ItemDescription& out) {
    CrlInfo record;
    FillHead(document, item, record);
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const QString remaining =
        RemainingText(ReadUtc(record.thisUpdate.utc), ReadUtc(record.nextUpdate.utc), now);
    const QString next = ZonedTime(record.nextUpdate);
    const bool isLate = ReadUtc(record.nextUpdate.utc) < now;
    out.sign = isLate ? ItemSign::kWarning : ItemSign::kInformation;
    CSummary& summary = out.summary;
    SayFaults(record.error, out);
    summary.Name("issuer", LabelOf("Issuer"), record.issuer);
    summary.Heading(Word(ViewerWord::kCrl));
    summary.Time("thisUpdate", "ThisUpdate", record.thisUpdate);
    summary.Row("nextUpdate", LabelOf("NextUpdate"),
                remaining.isEmpty() ? next : next + " (" + remaining + ")");
    summary.Row("count", LabelOf("RevokedCount"), QString::number(record.revokedCount));
    summary.Row("number", "Number", record.number);
    summary.Row("baseNumber", "BaseNumber", record.baseNumber.value_or(L""));
    summary.Row("signatureAlg", "SignatureAlg", record.signatureAlg);
    summary.Fingerprints(document[item].octets);
    out.fields = CRecordFields(BareJson(record));
}

// All entries: a file has room for them.
std::string CrlJson(const CFileDocument& document, ItemIndex item) {
    CrlInfo record;
    FillCrlInfo(document[item].octets,
                {.first = 0, .count = std::numeric_limits<std::size_t>::max(), .serial = {}},
                record);
    return RecordJson("crlInfo", record);
}

}  // namespace ca
