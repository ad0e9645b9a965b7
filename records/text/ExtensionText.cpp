#include "records/text/ExtensionText.h"

#include "asn1/Elements.h"
#include "asn1/views/ExtensionView.h"
#include "common/Exception.h"
#include "common/Lazy.h"
#include "records/text/DescriptionWords.h"
#include "records/text/GeneralNameText.h"
#include "records/text/OcspText.h"
#include "records/text/OutlineText.h"

#include <algorithm>

namespace {

using ca::Octets;

// One table for certificates, lists and their entries: an extension means the same wherever it
// stands.
ca::CLazy<ca::CFormatterTable> extensionFormatters([] {
    return ca::CFormatterTable{ca::StandardExtensionRows(),  ca::AttributeExtensionRows(),
                               ca::QualifiedExtensionRows(), ca::ProfessionExtensionRows(),
                               ca::NetworkExtensionRows(),   ca::MediaExtensionRows(),
                               ca::OcspExtensionRows(),      ca::VendorExtensionRows()};
});

std::wstring OddValueText(Octets octets) {
    ca::CTextLines lines;
    ca::SayOddValue(octets, lines);
    return lines.Take();
}

}  // namespace

namespace ca {

CFormatterTable::CFormatterTable(std::initializer_list<std::span<const ExtensionRow>> subjects) {
    for (const auto rows : subjects) {
        for (const ExtensionRow& row : rows) {
            m_formatters[*row.type] = row.say;
        }
    }
}

ExtensionFormatter CFormatterTable::Find(Octets oid) const {
    return m_formatters.Find(FindOid(oid));
}

ValueForms DescribeExtension(Octets oid, std::span<const unsigned char> value) {
    const ExtensionFormatter say = extensionFormatters.Get().Find(oid);
    CTextLines lines;
    // A value that cannot be read is shown none the less, and what is wrong with it goes into the
    // error.
    const std::wstring fault = SayValue(say, value, lines);
    ValueForms forms;
    forms.text = say != nullptr ? lines.TakeOr(kMsgEmpty) : lines.Take();
    lines.Fault(fault);
    AddValueError(forms.error, oid, lines.TakeFaults());
    return forms;
}

std::wstring SayValue(ExtensionFormatter say, std::span<const unsigned char> value,
                      CTextLines& lines) {
    if (say == nullptr) {
        SayUnknownValue(value, lines);
        return {};
    }
    // What was said before the fault is taken back: half a value would pass for a whole one.
    const CTextLines::Mark before = lines.Here();
    try {
        say(value, lines);
        return {};
    } catch (const Exception& fault) {
        lines.GoBack(before);
        SayOddValue(value, lines);
        return fault.message;
    }
}

ExtensionForms DescribeExtension(const CAsn1ExtensionView& extension, std::wstring& error) {
    ExtensionForms forms;
    ExtensionParts& parts = forms.parts;
    parts.oid = extension.ExtnId();
    // Without a type it is not an extension, so that all of it is shown.
    if (parts.oid.empty()) {
        forms.shown = extension.Element().raw;
        forms.text = OddValueText(forms.shown);
        AddError(error, UnreadableText(forms.shown));
        return forms;
    }
    forms.isCritical = extension.IsCritical();
    try {
        const CAsn1Element value = extension.RequireValue();
        parts.value = value.content;
        // A string in segments has its octets nowhere in one piece: they are joined, and kept with
        // the parts.
        if (value.IsConstructed()) {
            parts.joined = OctetStringOf(value);
            parts.value = parts.joined;
        }
    } catch (const Exception& fault) {
        // Its octets as far as they go, so that nothing of a certificate stays unseen.
        forms.shown = extension.ValueOctets();
        forms.text = OddValueText(forms.shown);
        AddValueError(error, parts.oid, fault.message);
        return forms;
    }
    forms.shown = parts.value;
    ValueForms value = DescribeExtension(parts.oid, parts.value);
    forms.text = std::move(value.text);
    AddError(error, value.error);
    return forms;
}

void AddError(std::wstring& errors, std::wstring_view fault) {
    // Marks errors that were cut; it also tells the next call that there is nothing to add.
    constexpr std::wstring_view kMore = L"\n\u2026";
    if (fault.empty() || errors.ends_with(kMore)) {
        return;
    }
    const std::size_t most = MaxValueText();
    if (errors.size() > most) {
        errors += kMore;
        return;
    }
    if (!errors.empty()) {
        errors += L'\n';
    }
    errors += fault.substr(0, most);
}

void AddError(std::wstring& errors, Sentence place, std::wstring_view fault) {
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

void AddValueError(std::wstring& errors, Octets type, std::wstring_view fault) {
    if (!fault.empty()) {
        const std::wstring place = type.empty() ? std::wstring() : OidWithName(type) + L": ";
        AddError(errors, place + std::wstring(fault));
    }
}

void NoteRepeated(std::vector<Octets>& types, std::wstring& errors) {
    // Sorted in place: no memory an element, and n log n steps whatever a stranger chooses.
    std::ranges::sort(types, {}, AsText);
    for (auto at = types.begin(); at != types.end();) {
        const Octets type = *at;
        const auto next = std::find_if(at, types.end(),
                                       [&](Octets other) { return AsText(other) != AsText(type); });
        if (next - at > 1) {
            AddValueError(errors, type, WordText(Word::kMoreThanOnce));
        }
        at = next;
    }
}

}  // namespace ca
