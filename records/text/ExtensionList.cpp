#include "records/text/ExtensionList.h"

#include "records/text/Elements.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace ca {

void FillExtensions(const CAsn1Extensions& list, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit) {
    FillExtensions(list.ContentOctets(), records, error, visit);
}

void FillExtensions(std::span<unsigned char> content, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit) {
    std::vector<std::string_view> seen;  // few, and never more than are listed
    CAsn1Cursor cursor(content);
    while (!cursor.AtEnd() && records.items.size() < kMaxListed) {
        CAsn1Element extension;
        if (cursor.Next(extension) != Asn1Fault::kNone) {
            extension.raw = cursor.Rest();
            cursor = {};
        }
        auto record = std::make_unique<CertInfoExtension>();
        const ExtensionParts parts = FillExtension(extension.raw, *record, error);
        records.items.emplace_back(std::move(record));
        if (parts.oid.empty()) {
            continue;
        }
        if (std::ranges::find(seen, AsText(parts.oid)) == seen.end()) {
            seen.push_back(AsText(parts.oid));
        } else {
            AddError(error,
                     SetZORNAMessage(kMsgExtensionRepeated) + (L": " + OidWithName(parts.oid)));
        }
        if (visit) {
            visit(FindOid(parts.oid), parts.value);
        }
    }
    if (!cursor.AtEnd()) {
        AddError(error, MoreText(CountElements(cursor)));
    }
}

void SayExtensions(const CAsn1Extensions& list, CTextLines& lines) {
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

std::wstring SerialText(Octets octets) {
    const bool hasLeadingZero = octets.size() > 1 && octets[0] == 0;
    return Hex(octets.subspan(hasLeadingZero ? 1 : 0));
}

}  // namespace ca
