#include "records/text/ReasonText.h"

#include "common/DecimalText.h"
#include "common/Lng.h"

namespace {

struct ReasonRow {
    std::uint32_t code;  // CRLReason
    int flag;            // bit of ReasonFlags; -1: none
    Sentence text;
};

// The order is that of the codes. 7 is not used; removeFromCRL and unspecified have no flag (RFC
// 5280, 4.2.1.13 and 5.3.1).
constexpr ReasonRow kReasons[] = {
    {0, -1, kMsgReasonUnspecified}, {1, 1, kMsgReasonKeyCompromise},
    {2, 2, kMsgReasonCaCompromise}, {3, 3, kMsgReasonAffiliation},
    {4, 4, kMsgReasonSuperseded},   {5, 5, kMsgReasonCessation},
    {6, 6, kMsgReasonHold},         {8, -1, kMsgReasonRemoved},
    {9, 7, kMsgReasonPrivilege},    {10, 8, kMsgReasonAaCompromise},
};

}  // namespace

namespace ca {

std::wstring ReasonText(std::uint32_t reason) {
    for (const ReasonRow& row : kReasons) {
        if (row.code == reason) {
            return SetZORNAMessage(row.text);
        }
    }
    return ca::DecimalText(reason);
}

std::wstring ReasonFlagsText(const CAsn1Bits& flags) {
    std::wstring text;
    for (const ReasonRow& row : kReasons) {
        if (row.flag >= 0 && flags[static_cast<std::size_t>(row.flag)]) {
            text += text.empty() ? L"" : L", ";
            text += SetZORNAMessage(row.text);
        }
    }
    return text;
}

}  // namespace ca
