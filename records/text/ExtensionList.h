#pragma once

#include "asn1/OidTable.h"
#include "asn1/x509/Extension.h"
#include "records/CertInfoExtension.h"
#include "records/text/TextLines.h"

#include <functional>
#include <span>
#include <string>

namespace ca {

/// Is told of each extension that could be read: its row of the table of identifiers (null when it
/// has none) and the encoding inside extnValue.
using ExtensionVisitor =
    std::function<void(const OidInfo* type, std::span<const unsigned char> value)>;

/// Appends the records of all extensions, in order, repeated ones too; at most kMaxListed. Faults
/// and repetitions are added to `error`.
void FillExtensions(const CAsn1Extensions& list, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit = {});

/// The same for the content of Extensions.
void FillExtensions(std::span<const unsigned char> content, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit = {});

/// Says extensions inside another value, their names with their texts below them.
void SayExtensions(const CAsn1Extensions& list, CTextLines& lines);

}  // namespace ca
