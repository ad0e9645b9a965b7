#include "records/fill/CrlInfoFill.h"

#include "asn1/Elements.h"
#include "asn1/crl/CertificateList.h"
#include "asn1/views/CrlViews.h"
#include "asn1/views/MessageViews.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/InitString.h"
#include "common/Lng.h"
#include "records/AnswerBudget.h"
#include "records/fill/CertificateBundle.h"
#include "records/fill/CrlEntries.h"
#include "records/fill/ExtensionFill.h"
#include "records/fill/SignedFill.h"
#include "records/scan/LooksLike.h"
#include "records/text/Decoded.h"
#include "records/text/DescriptionWords.h"
#include "records/text/ExtensionList.h"
#include "records/text/ExtensionText.h"
#include "records/text/NameText.h"
#include "records/text/SerialText.h"

#include <limits>
#include <memory>
#include <optional>
#include <string_view>

namespace {

using ca::CAnswerBudget;
using ca::CrlInfo;
using ca::CrlPage;
using ca::Octets;

// The parameter that asks for one entry, in hex digits as a record shows it.
constexpr std::wstring_view kSerial = L"CRL_SERIAL";

// Throws 16268.
std::vector<unsigned char> ReadSerial(std::wstring_view text) {
    auto serial = ca::ReadSerialText(text);
    if (!serial) {
        throw ca::Exception(ca::kErrParameters,
                            SetZORNAMessage(kMsgInitStringItem) + std::wstring(kSerial));
    }
    return *std::move(serial);
}

void FillIssuer(const CAsn1TbsCertList& tbs, CrlInfo& record) {
    if (tbs.Issuer() == nullptr) {
        return;
    }
    ca::NameForms issuer = ca::DescribeName(*tbs.Issuer());
    // The record takes the forms; the error, which is not one of them, stays here.
    record.issuer = std::move(issuer);
    ca::AddError(record.error, kMsgIssuer, issuer.error);
    CAnswerBudget::Take(ca::CostOfText(record.issuer.readable.size() + record.issuer.oid.size() +
                                       record.issuer.x500.size() + record.issuer.tags.size()));
}

void FillFromExtensions(const CAsn1TbsCertList& tbs, CrlInfo& record) {
    if (tbs.CrlExtensions() == nullptr) {
        return;
    }
    ca::FillExtensions(*tbs.CrlExtensions(), record.extensions, record.error,
                       [&](const ca::OidInfo* type, std::span<const unsigned char> value) {
                           const Octets number =
                               ca::ContentIf(ca::FirstElement(value), kAsn1Integer);
                           // Numbers of up to 20 octets (RFC 5280, 5.2.3), as texts.
                           if (type == ca::COid("cRLNumber")) {
                               record.number = ca::SerialText(number);
                           } else if (type == ca::COid("deltaCRLIndicator")) {
                               record.baseNumber = ca::SerialText(number);
                           }
                       });
}

std::wstring NotOfVersion() {
    return ca::WordText(ca::Word::kNotOfVersion);
}

// \return octets of JSON that the entry becomes.
std::size_t DescribeEntry(const ca::CrlEntry& entry, ca::CCrlDescriber& describer,
                          ca::RevokedCert& scratch, std::wstring& error) {
    const ca::CBudgetLoan loan;
    describer.Describe(entry, scratch, error);
    return describer.TextOctets(scratch);
}

// Octets of JSON that the members after the entries take besides "Error" and "RawData". Room is
// reserved once for all of it: too little costs a copy of the text, too much nothing.
constexpr std::size_t kOtherMembers = 64 << 10;

// The entries of a page as they were when the record was filled. Its part of the list's octets
// outlives the record, and whatever the record reads in their place.
struct PageEntries : ca::CLazyElements::Source {
    ca::SharedBlob owner;  // of what the next two view
    std::span<const unsigned char> entries;
    Octets issuer;
    CrlPage page;
    CAnswerBudget::Rest rest{};  // what was left then
    std::size_t room = 0;        // octets that will be written here and after it

    void ToJson(ca::JsonWriter& writer) const override {
        // What was left when the entries were counted: writing must not come to another end than
        // counting did.
        const CAnswerBudget budget(rest);
        writer.Reserve(room);
        // Walked a second time: keeping a million records instead would take many times the list's
        // octets.
        ca::CCrlWalk walk(entries, page);
        ca::CCrlDescriber describer(issuer);
        ca::RevokedCert entry;
        while (walk.Next()) {
            const std::size_t before = writer.Size();
            std::wstring noted;
            {
                const ca::CBudgetLoan loan;
                describer.Describe(walk.Entry(), entry, noted);
            }
            entry.ToJson(writer);
            CAnswerBudget::Take(writer.Size() - before);
        }
    }
};

// Counts the entries, and notes the faults of those that are described; they themselves are made
// when the record is written, from the octets that it holds.
void FillEntries(std::span<const unsigned char> entries, Octets issuer, const CrlPage& page,
                 bool mayExtend, CrlInfo& record) {
    const CAnswerBudget::Rest rest{CAnswerBudget::Left()};
    ca::CCrlWalk walk(entries, page);
    ca::CCrlDescriber describer(issuer);
    ca::RevokedCert scratch;
    std::optional<std::size_t> described;
    std::size_t fitting = 0;
    std::size_t hidden = 0;
    while (walk.Next()) {
        const ca::CrlEntry& entry = walk.Entry();
        const std::size_t faults = ca::CostOfText(record.error.size());
        // After the first one without room no other is described: a page has no gaps.
        if (hidden != 0 || !CAnswerBudget::HasRoomFor(entry.raw.size(), faults)) {
            ++hidden;
            continue;
        }
        described = entry.index;
        ++fitting;
        // Plain entries are measured, the others described once to know what they say.
        if (ca::IsPlainCrlEntry(entry)) {
            CAnswerBudget::Take(describer.PlainTextOctets(entry));
        } else {
            CAnswerBudget::Take(DescribeEntry(entry, describer, scratch, record.error));
        }
        if (!mayExtend && entry.HasExtensions()) {
            mayExtend = true;  // once
            ca::AddError(record.error,
                         ca::CrlEntryFault(*described, SetZORNAMessage(kMsgFieldExtensions) +
                                                           (L": " + NotOfVersion())));
        }
    }
    const std::size_t text = rest.left - CAnswerBudget::Left();
    // The faults of the entries, which were only asked about so far.
    CAnswerBudget::Take(ca::CostOfText(record.error.size()));
    ca::AddMore(record.error, hidden);
    const std::size_t count = walk.CountAll();
    if (walk.IsBroken() && hidden == 0 && described != count - 1) {
        ca::AddError(record.error,
                     ca::CrlEntryFault(count - 1, SetZORNAMessage(kMsgAsn1Malformed)));
    }
    record.revokedCount = static_cast<std::uint32_t>(count);
    auto written = std::make_shared<PageEntries>();
    written->owner = record.rawData;
    written->entries = entries;
    written->issuer = issuer;
    // Its own page: as many as there was room for.
    written->page = page;
    written->page.count = fitting;
    written->rest = rest;
    written->room =
        text + 2 * record.error.size() + record.rawData.Octets().size() / 3 * 4 + kOtherMembers;
    record.revoked.AddLazily(std::move(written));
}

void FillFromTbs(const CAsn1TbsCertList& tbs, const CrlPage& page, CrlInfo& record) {
    // Version: v1(0), v2(1) (RFC 5280, 5.1.2.1).
    record.version = ca::VersionText(tbs.Version(), /*highest=*/1, record.error);
    FillIssuer(tbs, record);
    record.thisUpdate = ca::TimeOf(tbs.ThisUpdate(), kMsgThisUpdate, record.error);
    record.nextUpdate = ca::TimeOf(tbs.NextUpdate(), kMsgNextUpdate, record.error);
    FillFromExtensions(tbs, record);
    // A missing version is v1, which has no extensions.
    const bool isV1 = tbs.Version() == nullptr || IntegerOf(tbs.Version(), -1) == 0;
    if (isV1 && tbs.CrlExtensions() != nullptr) {
        ca::AddError(record.error, kMsgFieldExtensions, NotOfVersion());
    }
    if (tbs.RevokedCertificates() != nullptr) {
        const Octets issuer = tbs.Issuer() != nullptr ? tbs.Issuer()->Raw() : Octets();
        FillEntries(tbs.RevokedCertificates()->ContentOctets(), issuer, page,
                    /*mayExtend=*/!isV1, record);
    }
}

}  // namespace

namespace ca {

CrlPage ReadCrlPage(const InitString& parameters) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
    CrlPage page;
    // Places and numbers are those of the list, from 0 on.
    page.first = parameters.GetUnsigned(L"CRL_FIRST", 0, kMost, page.first);
    page.count = parameters.GetUnsigned(L"CRL_COUNT", 0, kMost, page.count);
    if (const std::wstring* serial = parameters.Find(kSerial)) {
        page.serial = ReadSerial(*serial);
    }
    return page;
}

std::span<const unsigned char> FindCrl(std::span<const unsigned char> object) {
    if (LooksLikeCrl(object)) {
        return object;
    }
    // A message may carry lists beside its certificates; the first one that is a list is taken.
    CAsn1Cursor lists(SignedDataIn(FirstElement(object)).Crls().content);
    CAsn1Element list;
    while (lists.Step(list)) {
        if (LooksLikeCrl(list.raw)) {
            return list.raw;
        }
    }
    return {};
}

void FillCrlInfo(std::span<const unsigned char> der, const CrlPage& page, CrlInfo& record) {
    if (!LooksLikeCrl(der)) {
        throw Exception(kErrBadData);
    }
    const CAsn1Element whole = FirstElement(der);
    const CAnswerBudget budget(der.size());
    // The record keeps the octets, since its entries are made from them when it is written.
    Blob copy;
    copy.Assign(whole.raw.data(), static_cast<std::uint32_t>(whole.raw.size()));
    record.rawData = SharedBlob(std::move(copy));
    CAsn1Root<CAsn1CertificateList> list(record.rawData.Octets(), Asn1Blocks::kRead);
    try {
        list->Decode();
    } catch (const Exception& fault) {
        AddError(record.error, fault.message);
    }
    if (whole.raw.size() < der.size()) {
        AddError(record.error, SetZORNAMessage(kMsgAsn1TrailingData));
    }
    // LooksLikeCrl() has seen a signed part, so that there is one even where decoding failed.
    const CAsn1TbsCertList& tbs = *list->TbsCertList();
    CAnswerBudget::Take(CostOf(record));
    FillSignatureAlgorithm(list->SignatureAlgorithm(), tbs.Signature(), record.signatureAlg,
                           record.hashAlg, record.error);
    FillFromTbs(tbs, page, record);
}

}  // namespace ca
