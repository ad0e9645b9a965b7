#include "records/text/ExtensionList.h"

#include "asn1/Elements.h"
#include "records/AnswerBudget.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"

#include <memory>
#include <set>
#include <string_view>

namespace ca {

void DescribeExtensions(std::span<const unsigned char> content, std::wstring& error,
                        const ExtensionTaker& take, const ExtensionVisitor& visit) {
    std::set<std::string_view> seen;  // a tree: strangers choose what is in it
    CAsn1Cursor cursor(content);
    for (std::size_t count = 0; !cursor.AtEnd() && count < kMaxListed; ++count) {
        const CAsn1Cursor before = cursor;
        CAsn1Element extension;
        cursor.StepOrRest(extension);
        // Asked before it is described: the text of one extension may be as large as a whole
        // answer.
        if (!CAnswerBudget::HasRoomFor(extension.raw.size())) {
            cursor = before;
            break;
        }
        const std::size_t errorsBefore = error.size();
        ExtensionForms forms = DescribeExtension(extension, error);
        CAnswerBudget::Take(take(forms) + CostOfText(error.size() - errorsBefore));
        const ExtensionParts& parts = forms.parts;
        // Without a type nobody could ask for it, nor tell whether it is there twice.
        if (parts.oid.empty()) {
            continue;
        }
        // Never more than one of a type (RFC 5280, 4.2). Each of them is described all the same.
        if (!seen.insert(AsText(parts.oid)).second) {
            AddError(error,
                     SetZORNAMessage(kMsgExtensionRepeated) + (L": " + OidWithName(parts.oid)));
        }
        if (visit) {
            visit(FindOid(parts.oid), parts.value);
        }
    }
    // A list that was cut short says by how much.
    AddMore(error, CountElements(cursor));
}

void SayExtensions(const CAsn1Extensions& list, CTextLines& lines) {
    const CBudgetLoan loan;  // nothing is kept but the lines
    std::wstring faults;     // the values' texts say them too
    const auto say = [&lines](const ExtensionForms& forms) {
        const Octets oid = forms.parts.oid;
        lines.Line(oid.empty() ? L"" : OidName(oid), L"");
        const CTextLines::Level level(lines);
        lines.Block(forms.text);
        return CostOfText(forms.text.size() + forms.shown.size());
    };
    DescribeExtensions(list.ContentOctets(), faults, say);
}

}  // namespace ca
