#include "records/fill/ExtensionFill.h"

#include "asn1/views/AttributeViews.h"
#include "asn1/x509/Attribute.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/OutlineText.h"

#include <memory>
#include <utility>

namespace {

// What is shown of an extension, in its record.
void Keep(ca::ExtensionForms& forms, ca::CertInfoExtension& record) {
    // Without a type there is nothing to name; the text then holds all that is there.
    if (!forms.parts.oid.empty()) {
        record.oidFriendlyName = ca::OidName(forms.parts.oid);
        record.oidValue = ca::OidText(forms.parts.oid);
    }
    record.critical = forms.isCritical;
    record.rawData = ca::Base64Text(forms.shown);
    record.formattedData = std::move(forms.text);
}

}  // namespace

namespace ca {

ExtensionParts FillExtension(const CAsn1ExtensionView& extension, CertInfoExtension& record,
                             std::wstring& error) {
    ExtensionForms forms = DescribeExtension(extension, error);
    Keep(forms, record);
    return std::move(forms.parts);
}

void FillExtensions(const CAsn1Extensions& list, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit) {
    FillExtensions(list.ContentOctets(), records, error, visit);
}

void FillExtensions(std::span<const unsigned char> content, CertInfoExtensionCollection& records,
                    std::wstring& error, const ExtensionVisitor& visit) {
    const auto take = [&records](ExtensionForms& forms) {
        auto record = std::make_unique<CertInfoExtension>();
        Keep(forms, *record);
        const std::size_t cost = CostOf(*record);
        records.items.emplace_back(std::move(record));
        return cost;
    };
    DescribeExtensions(content, error, take, visit);
}

void FillAttribute(const CAsn1AttributeView& attribute, CertInfoAttributeCollection& records,
                   std::wstring& error) {
    auto record = std::make_unique<CertInfoAttribute>();
    const Octets octets = attribute.Element().raw;
    // Partly: an attribute whose values cannot be read has a type all the same.
    const CPartlyDecoded<CAsn1Attribute> read(octets);
    const CAsn1Attribute* known = read.Get();
    const Octets type = known != nullptr ? OctetsOf(known->Type()) : Octets();
    if (!type.empty()) {
        record->oidFriendlyName = OidName(type);
        record->oidValue = OidText(type);
    }
    CTextLines lines;
    if (!type.empty() && known->Values() != nullptr && read.IsWhole()) {
        record->rawData = Base64Text(known->Values()->ContentOctets());
        SayAttributeValues(type, *known->Values(), lines, error);
    } else {
        // All of it, since nobody knows where its values begin.
        record->rawData = Base64Text(octets);
        SayOddValue(octets, lines);
        lines.Fault(read.Fault());
    }
    record->formattedData = lines.Take();
    AddValueError(error, type, lines.TakeFaults());
    records.items.emplace_back(std::move(record));
}

}  // namespace ca
