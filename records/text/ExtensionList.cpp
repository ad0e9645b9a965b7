#include "records/text/ExtensionList.h"

#include "asn1/Elements.h"
#include "records/AnswerBudget.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"

#include <memory>
#include <set>
#include <string_view>

namespace ca {

void FillExtensions(const CAsn1Extensions& list, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit) {
    FillExtensions(list.ContentOctets(), records, error, visit);
}

void FillExtensions(std::span<const unsigned char> content, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit) {
    std::set<std::string_view> seen;  // a tree: strangers choose what is in it
    CAsn1Cursor cursor(content);
    while (!cursor.AtEnd() && records.items.size() < kMaxListed) {
        const CAsn1Cursor before = cursor;
        CAsn1Element extension;
        cursor.StepOrRest(extension);
        if (!CAnswerBudget::HasRoomFor(extension.raw.size())) {
            cursor = before;
            break;
        }
        auto record = std::make_unique<CertInfoExtension>();
        const std::size_t errorsBefore = error.size();
        const ExtensionParts parts = FillExtension(extension, *record, error);
        CAnswerBudget::Take(CostOf(*record) + CostOfText(error.size() - errorsBefore));
        records.items.emplace_back(std::move(record));
        if (parts.oid.empty()) {
            continue;
        }
        if (!seen.insert(AsText(parts.oid)).second) {
            AddError(error,
                     SetZORNAMessage(kMsgExtensionRepeated) + (L": " + OidWithName(parts.oid)));
        }
        if (visit) {
            visit(FindOid(parts.oid), parts.value);
        }
    }
    AddMore(error, CountElements(cursor));
}

void SayExtensions(const CAsn1Extensions& list, CTextLines& lines) {
    const CBudgetLoan loan;  // the records are dropped
    CertInfoExtensionCollection records;
    std::wstring faults;  // the values' texts say them too
    FillExtensions(list, records, faults);
    for (const auto& record : records.items) {
        lines.Line(record->oidFriendlyName.empty() ? record->oidValue : record->oidFriendlyName,
                   L"");
        const CTextLines::Level level(lines);
        lines.Block(record->formattedData);
    }
}

}  // namespace ca
