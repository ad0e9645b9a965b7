#include "records/fill/CrlEntries.h"

#include "asn1/Elements.h"
#include "asn1/IntegerContent.h"
#include "asn1/views/NameViews.h"
#include "common/DecimalText.h"
#include "records/fill/ExtensionFill.h"
#include "records/text/ExtensionList.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/NameText.h"
#include "records/text/OutlineText.h"
#include "records/text/ReasonText.h"
#include "records/text/SerialText.h"
#include "records/text/TimeText.h"

#include <algorithm>
#include <string_view>

namespace {

using ca::CrlEntry;
using ca::Octets;

// Characters of an issuer's text. It is repeated with each entry that it carries over to; whole it
// stands in the extension it is from.
constexpr std::size_t kMaxIssuerText = 512;

// GeneralNames as one line: names of directories as such, the others as they are said elsewhere.
std::wstring IssuerText(std::span<const unsigned char> generalNames, Octets listIssuer) {
    const CAsn1GeneralNamesView names(ca::FirstElement(generalNames));
    ca::CTextLines text;
    // Empty where the list's own issuer is meant: no entry before has named another one.
    if (!generalNames.empty() && names.Element().tag != kAsn1Sequence) {
        text.Unreadable(generalNames);
        return text.Take();
    }
    CAsn1Element element;
    CAsn1Cursor cursor = names.Names();
    for (std::size_t index = 0; index < ca::kMaxListed && cursor.Step(element); ++index) {
        const CAsn1GeneralNameView name(element);
        const CAsn1NameView directory = name.DirectoryName();
        if (!directory.IsThere()) {
            ca::SayGeneralName(name, text);
        } else if (!std::ranges::equal(directory.Element().raw, listIssuer)) {
            // The list's own issuer is not repeated at each entry (RFC 5280, 5.3.3: it is the
            // default).
            text.Line(ca::ReadableName(directory));
        }
    }
    return text.Take();
}

void FillFromExtension(const ca::OidInfo* type, std::span<const unsigned char> value,
                       ca::RevokedCert& record) {
    // Entries may hold any extension; only those of entries have members in the record.
    if (type == nullptr || type->kind != ca::OidKind::kCrlEntryExtension) {
        return;
    }
    const CAsn1Element element = ca::FirstElement(value);
    std::uint32_t reason = 0;
    if (type == ca::COid("invalidityDate")) {
        record.invalidityDate = ca::DescribeTime(element).local;
    } else if (type == ca::COid("cRLReason") && element.tag == kAsn1Enumerated &&
               ca::ReadSmallInteger(element, reason)) {
        record.reason = ca::ReasonText(reason);
    }
}

}  // namespace

namespace ca {

CCrlWalk::CCrlWalk(std::span<const unsigned char> entries, const CrlPage& page)
    : m_cursor(entries), m_page(page) {}

CCrlWalk::CCrlWalk(std::span<const unsigned char> entries, const CrlPage& page,
                   const CrlEntry& reached)
    : m_cursor(entries), m_page(page), m_walked(reached.index) {
    // Goes on where an earlier walk stopped: the issuer it had carries over.
    m_entry.certificateIssuer = reached.certificateIssuer;
}

bool CCrlWalk::Step(CAsn1Element& element) {
    if (!m_cursor.StepOrRest(element)) {
        return false;
    }
    ++m_walked;
    // Octets that cannot be read as an element have no tag.
    m_isBroken = m_isBroken || element.tag == 0;
    return true;
}

bool CCrlWalk::IsAskedFor() const {
    if (m_page.serial) {
        // Without padding: damaged lists have serial numbers in more octets than they need.
        return !m_entry.Serial().raw.empty() &&
               std::ranges::equal(WithoutSignOctets(m_entry.Serial().content), *m_page.serial);
    }
    return m_entry.index >= m_page.first;
}

bool CCrlWalk::Next() {
    if (m_found == m_page.count) {
        return false;
    }
    CAsn1Element element;
    while (Step(element)) {
        m_entry.raw = element.raw;
        m_entry.members.Read(element);
        m_entry.index = m_walked - 1;
        if (m_entry.HasExtensions()) {
            // An issuer holds for the entries after its own, too, until another one is named (RFC
            // 5280, 5.3.3).
            const auto issuer = m_entry.members.CertificateIssuer();
            m_entry.certificateIssuer = issuer.empty() ? m_entry.certificateIssuer : issuer;
        }
        if (IsAskedFor()) {
            ++m_found;
            return true;
        }
    }
    return false;
}

std::size_t CCrlWalk::CountAll() {
    CAsn1Element element;
    while (Step(element)) {
    }
    return m_walked;
}

std::wstring CrlEntryFault(std::size_t index, const std::wstring& fault) {
    return SetZORNAMessage(kMsgCrlEntry) + (L' ' + ca::DecimalText(index + 1) + L": " + fault);
}

// What needs no describer: its text has a known size, so that a list of a million plain entries is
// not described twice.
bool IsPlainCrlEntry(const CrlEntry& entry) {
    return entry.members.IsWhole() && !entry.HasExtensions() && !entry.Serial().content.empty() &&
           ReadTime(entry.members.RevocationDate()).has_value();
}

const std::wstring& CCrlDescriber::IssuerOf(const CrlEntry& entry) {
    // The octets tell whether it is the one of the entry before: texts are made once a change.
    if (m_issuerOctets != entry.certificateIssuer.data()) {
        m_issuerOctets = entry.certificateIssuer.data();
        m_issuer = IssuerText(entry.certificateIssuer, m_listIssuer);
        if (m_issuer.size() > kMaxIssuerText) {
            m_issuer.resize(kMaxIssuerText);
            m_issuer += L'\u2026';
        }
        m_plainOctets = 0;
    }
    return m_issuer;
}

std::size_t CCrlDescriber::TextOctets(const RevokedCert& record) {
    m_scratch.Clear();
    JsonWriter writer(m_scratch);
    record.ToJson(writer);
    return m_scratch.GetSize() + 1;  // a comma follows
}

std::size_t CCrlDescriber::PlainTextOctets(const CrlEntry& entry) {
    constexpr std::size_t kDates = 2 * 19;  // dd.mm.yyyy hh:mm:ss
    const std::wstring& issuer = IssuerOf(entry);
    if (m_plainOctets == 0) {
        RevokedCert empty;
        empty.certificateIssuer = issuer;
        // Both dates have one length; the serial number is each entry's own.
        m_plainOctets = TextOctets(empty) + kDates;
    }
    return m_plainOctets + 2 * entry.Serial().content.size();
}

void CCrlDescriber::Describe(const CrlEntry& entry, RevokedCert& record, std::wstring& error) {
    std::wstring faults;
    record.serial = entry.Serial().content.empty() ? UnreadableText(entry.raw)
                                                   : SerialText(entry.Serial().content);
    TimeForms date = DescribeTime(entry.members.RevocationDate(), &m_offsets);
    if (!entry.members.IsWhole() || !date.seconds) {
        AddError(faults, UnreadableText(entry.raw));
    }
    record.revocationDate = std::move(date);
    // One record serves all entries: its memory stays, its texts must not.
    record.reason.clear();
    record.invalidityDate.clear();
    record.extensions.items.clear();
    record.certificateIssuer = IssuerOf(entry);
    if (entry.HasExtensions()) {
        FillExtensions(entry.members.CrlEntryExtensions().content, record.extensions, faults,
                       [&](const OidInfo* type, std::span<const unsigned char> value) {
                           FillFromExtension(type, value, record);
                       });
    }
    if (!faults.empty()) {
        AddError(error, CrlEntryFault(entry.index, faults));
    }
}

}  // namespace ca
