#include "records/fill/SignedFill.h"

#include "asn1/Elements.h"
#include "common/DecimalText.h"
#include "records/text/AlgorithmText.h"
#include "records/text/ExtensionText.h"
#include "records/text/OutlineText.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ca {

std::wstring VersionText(const CAsn1Integer* version, std::int64_t highest, std::wstring& error) {
    // A missing version is the DEFAULT, v1.
    const std::int64_t number = version != nullptr ? IntegerOf(version, -1) : 0;
    if (number < 0 || number > highest) {
        AddError(error, SetZORNAMessage(kMsgUnknownVersion));
    }
    constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::max();
    return number < 0 || number == kNone
               ? std::wstring()
               : L'V' + DecimalText(static_cast<std::uint64_t>(number) + 1);
}

TimeForms TimeOf(const CAsn1Time* time, Sentence place, std::wstring& error) {
    if (time == nullptr) {
        return {};
    }
    TimeForms forms = DescribeTime(*time);
    if (!forms.seconds) {
        AddError(error, place, UnreadableText(ElementOf(*time).raw));
    }
    return forms;
}

void FillSignatureAlgorithm(const CAsn1AlgorithmIdentifier* outer,
                            const CAsn1AlgorithmIdentifier* inner, std::wstring& signatureAlg,
                            std::wstring& hashAlg, std::wstring& error) {
    // Both algorithms must be the same (RFC 5280, 4.1.1.2); the outer one is what verifiers use.
    const CAsn1AlgorithmIdentifier* shown = outer != nullptr ? outer : inner;
    if (shown == nullptr) {
        return;
    }
    SignatureAlgorithmForms forms = DescribeSignatureAlgorithm(*shown);
    signatureAlg = std::move(forms.text);
    hashAlg = std::move(forms.digest);
    AddError(error, forms.error);
    if (outer != nullptr && inner != nullptr && !std::ranges::equal(outer->Raw(), inner->Raw())) {
        AddError(error, SetZORNAMessage(kMsgAlgorithmsDiffer));
    }
}

}  // namespace ca
