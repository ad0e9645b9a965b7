#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Elements.h"
#include "asn1/views/AttributeViews.h"
#include "asn1/views/NameViews.h"
#include "records/text/ExtensionText.h"
#include "records/text/TextLines.h"

#include <span>
#include <string>

class CAsn1Attribute;
class CAsn1ObjectDigestInfo;
class CAsn1SecurityCategory;

namespace ca {

// The values of signed and unsigned attributes of signatures, by subject.
std::span<const ExtensionRow> EssAttributeRows();      ///< RFC 5652, 5035, 2634, 8551, 8894
std::span<const ExtensionRow> CadesAttributeRows();    ///< RFC 5126, ETSI EN 319 122-1
std::span<const ExtensionRow> CodeAttributeRows();     ///< signatures of programs and documents
std::span<const ExtensionRow> RequestAttributeRows();  ///< requests, key stores: RFC 2985

/// Says each value of an attribute, of signatures and of attribute certificates: an outline or
/// hexadecimal digits for a type without a formatter; a value that is not of its type is outlined
/// as unreadable, and added to `error`. Values that are not elements are faults of `lines`.
void SayAttributeValues(Octets type, const CAsn1SetOf<CAsn1Any>& values, CTextLines& lines,
                        std::wstring& error);

/// Says an attribute that a signer claims (RFC 5126, 5.11.3), one of attribute certificates or of
/// directories: its name, below it its values. Attributes of signatures are outlined, so that no
/// input nests without end.
void SayClaimedAttribute(const CAsn1Attribute& attribute, CTextLines& lines);

/// "secret" for 4 (RFC 2634, 3.2, RFC 5755, 4.4.6); the digits of a number without a name.
std::wstring ClearanceLevelText(std::uint64_t level);
/// Each category, its value outlined; null says nothing.
void SaySecurityCategories(const CAsn1SetOf<CAsn1SecurityCategory>* categories, CTextLines& lines);

/// "SHA-256: hex"
std::wstring ObjectDigestText(const CAsn1ObjectDigestInfo& digest);

/// A name of GeneralNames for use inside a line: a directory's as such, others with their kind.
/// What could not be read of it is shown as such and added to the faults of `faults`.
std::wstring GeneralNameLine(const CAsn1GeneralNameView& name, CTextLines& faults);
/// All names of GeneralNames in a line, ", " between them; at most kMaxListed.
std::wstring GeneralNamesLine(const CAsn1GeneralNamesView& names, CTextLines& faults);

}  // namespace ca
