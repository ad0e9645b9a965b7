#pragma once

#include "asn1/OidTable.h"
#include "asn1/x509/Extension.h"
#include "records/text/ExtensionText.h"
#include "records/text/TextLines.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>

namespace ca {

/// Is told of each extension that could be read: its row of the table of identifiers (null when it
/// has none) and the encoding inside extnValue.
using ExtensionVisitor =
    std::function<void(const OidInfo* type, std::span<const unsigned char> value)>;

/// Takes what an extension says; returns what it costs where that is kept (CAnswerBudget).
using ExtensionTaker = std::function<std::size_t(ExtensionForms& forms)>;

/// Describes all extensions in order, repeated ones too; at most kMaxListed, and as far as there is
/// room. Faults and repetitions are added to `error`.
/// \param content  of Extensions.
void DescribeExtensions(std::span<const unsigned char> content, std::wstring& error,
                        const ExtensionTaker& take, const ExtensionVisitor& visit = {});

/// Says extensions inside another value, their names with their texts below them.
void SayExtensions(const CAsn1Extensions& list, CTextLines& lines);

}  // namespace ca
