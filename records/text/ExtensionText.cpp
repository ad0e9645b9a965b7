#include "records/text/ExtensionText.h"

#include "asn1/OidTable.h"
#include "common/Exception.h"
#include "common/Lazy.h"
#include "records/text/Elements.h"
#include "records/text/GeneralNameText.h"
#include "records/text/OcspText.h"
#include "records/text/OutlineText.h"

namespace {

using ca::Octets;

ca::CLazy<ca::CFormatterTable> extensionFormatters([] {
    return ca::CFormatterTable{ca::StandardExtensionRows(),  ca::AttributeExtensionRows(),
                               ca::QualifiedExtensionRows(), ca::ProfessionExtensionRows(),
                               ca::NetworkExtensionRows(),   ca::MediaExtensionRows(),
                               ca::OcspExtensionRows(),      ca::VendorExtensionRows()};
});

}  // namespace

namespace ca {

CFormatterTable::CFormatterTable(std::initializer_list<std::span<const ExtensionRow>> subjects)
    : m_formatters(AllOids().size()) {
    for (const auto rows : subjects) {
        for (const ExtensionRow& row : rows) {
            if (const OidInfo* info = FindOidByShortName(row.shortName)) {
                m_formatters[RowOf(*info)] = row.say;
            }
        }
    }
}

ExtensionFormatter CFormatterTable::Find(Octets oid) const {
    const OidInfo* info = FindOid(oid);
    return info != nullptr ? m_formatters[RowOf(*info)] : nullptr;
}

ValueForms DescribeExtension(Octets oid, std::span<unsigned char> value) {
    const ExtensionFormatter say = extensionFormatters.Get().Find(oid);
    if (say == nullptr) {
        return {UnknownValueText(value), {}};
    }
    try {
        CTextLines lines;
        say(value, lines);
        const std::wstring faults = lines.TakeFaults();
        return {lines.TakeOr(kMsgEmpty),
                faults.empty() ? faults : OidWithName(oid) + L": " + faults};
    } catch (const Exception& fault) {
        return {UnreadableText(value), OidWithName(oid) + L": " + fault.message};
    }
}

ExtensionParts FillExtension(std::span<unsigned char> extension, CertInfoExtension& record,
                             std::wstring& error) {
    const CAsn1Element element = FirstElement(extension);
    const Octets oid = ContentIf(Child(element, 0), kAsn1ObjectIdentifier);
    CAsn1Element value = Child(element, 1);
    if (value.tag == kAsn1Boolean) {
        record.critical = !value.content.empty() && value.content[0] != 0;
        value = Child(element, 2);
    }
    if (oid.empty() || value.tag != kAsn1OctetString) {
        record.rawData = Base64Text(extension);
        record.formattedData = UnreadableText(extension);
        AddError(error, record.formattedData);
        return {};
    }
    record.oidFriendlyName = OidName(oid);
    record.oidValue = OidText(oid);
    record.rawData = Base64Text(value.content);
    ValueForms forms = DescribeExtension(oid, value.content);
    record.formattedData = std::move(forms.text);
    AddError(error, forms.error);
    return {oid, value.content};
}

void AddError(std::wstring& errors, std::wstring_view fault) {
    const std::size_t most = MaxValueText();
    if (fault.empty() || errors.size() > most) {
        return;
    }
    if (!errors.empty()) {
        errors += L'\n';
    }
    errors += fault.substr(0, most);
}

void AddError(std::wstring& errors, ZornaMessage place, std::wstring_view fault) {
    if (!fault.empty()) {
        AddError(errors, SetZORNAMessage(place) + std::wstring(L": ").append(fault));
    }
}

// Never dropped: a list that ends early must not pass for a whole one.
void AddMore(std::wstring& errors, std::size_t count) {
    if (count != 0) {
        errors += errors.empty() ? L"" : L"\n";
        errors += MoreText(count);
    }
}

}  // namespace ca
