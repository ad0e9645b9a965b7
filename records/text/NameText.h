#pragma once

#include "asn1/views/NameViews.h"

#include <string>

namespace ca {

/// The four forms of a distinguished name, as records carry it. An empty name is four empty texts
/// (RFC 5280, 4.1.2.6).
struct NameTexts {
    /// Encoded order, short type names: `C=RU, O="Ромашка, ООО", CN=Иванов Иван`. " + " joins the
    /// attributes of one RDN; a value with a comma, plus, quote or outer blank stands in quotes,
    /// quotes inside doubled.
    std::wstring readable;
    std::wstring oid;   ///< the same with dotted types
    std::wstring x500;  ///< RFC 4514: last RDN first
    /// Encoded order, `TAG=value;`, with `\` before `\`, `;`, `=` and `\n` for a line end; other
    /// hidden characters as in every text, which no backslash of a value can imitate here.
    std::wstring tags;
};

/// A name as it is described.
struct NameForms : NameTexts {
    /// What could not be read or is not shown whole, for the record's "Error"; empty when all is.
    std::wstring error;
};

/// Describes a Name or RDNSequence (RFC 5280, 4.1.2.4). What is not an attribute is left out and
/// noted.
NameForms DescribeName(const CAsn1NameView& name);

/// The readable form alone.
std::wstring ReadableName(const CAsn1NameView& name);
/// The readable form of one RDN, whatever its tag.
std::wstring ReadableRdn(const CAsn1RdnView& rdn);

}  // namespace ca
