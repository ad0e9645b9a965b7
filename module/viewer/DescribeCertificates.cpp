// Certificates and attribute certificates.

#include "asn1/Oid.h"
#include "module/viewer/ItemDescribers.h"
#include "records/fill/AttrCertInfoFill.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/CertificateBundle.h"
#include "records/scan/CertificateNames.h"
#include "records/text/NameText.h"

#include <memory>
#include <utility>

namespace {

using namespace ca;

CAsn1Element NameElement(std::string_view encoded) {
    const auto* const octets = reinterpret_cast<const unsigned char*>(encoded.data());
    return FirstElement(Octets(octets, encoded.size()));
}

// A copy without its issuers.
CertInfo2 RecordOf(const CFileDocument& document, ItemIndex item) {
    CertInfo2 record;
    if (const CertInfo2* known = document.RecordOf(item)) {
        static_cast<CertInfo&>(record) = *known;
    } else {
        FillCertInfo(document[item].octets, record);
    }
    return record;
}

// Both extensions that limit the use (RFC 5280, 4.2.1.3, 4.2.1.12). Without them it is not limited,
// which can be said of a certificate alone that is there and was read without faults.
QString UsageText(const CertInfo& record) {
    std::wstring usage = record.keyUsageStr;
    bool isKnown = !record.rawData.empty() && record.error.empty();
    for (const auto& extension : record.extensions.items) {
        if (extension->oidValue == COid("extKeyUsage")->dotted) {
            usage += (usage.empty() ? L"" : L"\n") + extension->formattedData;
        }
        isKnown = isKnown && extension->oidValue != COid("keyUsage")->dotted;
    }
    return usage.empty() && isKnown ? MessageText(kMsgDlgUsageNotLimited) : ShownText(usage);
}

QString KeyText(const CertInfo& record) {
    const QString params = ShownText(record.publicKeyParams);
    return ShownText(record.publicKeyAlg) + (params.isEmpty() ? "" : ", ") + params;
}

void SayNameAndPeriod(const CertInfo& record, ItemDescription& out) {
    CSummary& summary = out.summary;
    ItemDescription period;
    const bool isInPeriod = SayPeriod(record.validFrom, record.validTo, period);
    SayStatus(record.validity, record.validityNumber, isInPeriod, out);
    SayFaults(record.error, out);
    summary.Name("subject", LabelOf("Description"), record.description);
    summary.AlternativeNames(record.extensions);
    summary.Name("issuer", LabelOf("Issuer"), record.issuer);
    summary.Heading(Word(ViewerWord::kCertificate));
    summary.Append(period.summary);
}

}  // namespace

namespace ca {

QString CertificateName(const CFileDocument& document, ItemIndex item) {
    if (const CertInfo2* record = document.RecordOf(item)) {
        return ShortName(record->description);
    }
    const NameForms name = DescribeName(NameElement(NamesOf(document[item].octets).subject));
    return ShortName(name);
}

void DescribeCertificate(const CFileDocument& document, ItemIndex item, ItemDescription& out) {
    const CertInfo2 record = RecordOf(document, item);
    SayNameAndPeriod(record, out);
    CSummary& summary = out.summary;
    summary.Row("usage", LabelOf("KeyUsageStr"), OrDash(UsageText(record)));
    summary.Row("serial", "Serial", record.serial);
    summary.Row("key", LabelOf("PublicKey"), KeyText(record));
    summary.Row("signatureAlg", "SignatureAlg", record.signatureAlg);
    summary.Fingerprints(document.EncodingOf(item));
    out.fields = CRecordFields(BareJson(record));
}

std::string CertificateJson(const CFileDocument& document, ItemIndex item) {
    if (const CertInfo2* known = document.RecordOf(item)) {
        return RecordJson("certInfo", *known);
    }
    const ItemPath path = document.PathOf(item);
    std::unique_ptr<CertInfo2> above;
    for (auto at = path.items.rbegin(); at != path.items.rend(); ++at) {
        auto record = std::make_unique<CertInfo2>();
        FillCertInfo(document[*at].octets, *record);
        record->issuerCert = std::move(above);
        above = std::move(record);
    }
    return RecordJson("certInfo", *above);
}

QString AttributeCertificateName(const CFileDocument& document, ItemIndex item) {
    AttrCertInfo record;
    FillAttrCertInfo(document[item].octets, record);
    const QString holder = ShortName(record.holderIssuer);
    return record.holderSerial.empty() ? holder : holder + ", " + ShownLine(record.holderSerial);
}

void DescribeAttributeCertificate(const CFileDocument& document, ItemIndex item,
                                  ItemDescription& out) {
    AttrCertInfo record;
    FillAttrCertInfo(document[item].octets, record);
    CSummary& summary = out.summary;
    ItemDescription period;
    const bool isInPeriod = SayPeriod(record.validFrom, record.validTo, period);
    SayStatus(record.validity, record.validityNumber, isInPeriod, out);
    SayFaults(record.error, out);
    summary.Name("holder", LabelOf("HolderIssuer"), record.holderIssuer);
    summary.Row("holderSerial", "HolderSerial", record.holderSerial);
    summary.Name("issuer", LabelOf("Issuer"), record.issuer);
    summary.Heading(LabelOf("Attributes"));
    for (const auto& each : record.attributes.items) {
        summary.Row("attribute", ShownLine(each->oidFriendlyName), ShownText(each->formattedData));
    }
    summary.Heading(Word(ViewerWord::kAttributeCertificate));
    summary.Append(period.summary);
    summary.Row("serial", "Serial", record.serial);
    summary.Row("signatureAlg", "SignatureAlg", record.signatureAlg);
    summary.Fingerprints(document[item].octets);
    out.fields = CRecordFields(BareJson(record));
}

std::string AttributeCertificateJson(const CFileDocument& document, ItemIndex item) {
    AttrCertInfo record;
    FillAttrCertInfo(document[item].octets, record);
    return RecordJson("attrCertInfo", record);
}

}  // namespace ca
