#include "records/CrlEntries.h"

#include "asn1/Elements.h"
#include "asn1/IntegerContent.h"
#include "common/DecimalText.h"
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

// The octets of an OCTET STRING that came as one piece; the pieces themselves of another one, which
// read as no names.
std::span<const unsigned char> WholeSegment(const CAsn1Element& string) {
    if (!string.IsConstructed()) {
        return string.content;
    }
    const CAsn1Element segment = ca::Child(string, 0);
    const bool isOne =
        segment.tag == kAsn1OctetString && segment.raw.size() == string.content.size();
    return isOne ? segment.content : string.content;
}

// The encoding inside the certificateIssuer extension of an entry; empty when it has none.
std::span<const unsigned char> FindCertificateIssuer(const CAsn1Element& extensions) {
    CAsn1Element extension;
    for (CAsn1Cursor cursor(extensions.content); !cursor.AtEnd();) {
        if (cursor.Next(extension) != Asn1Fault::kNone) {
            break;
        }
        CAsn1Cursor members(extension.content);
        CAsn1Element member;
        if (members.AtEnd() || members.Next(member) != Asn1Fault::kNone ||
            !ca::IsOid(member.content, "certificateIssuer")) {
            continue;
        }
        while (!members.AtEnd() && members.Next(member) == Asn1Fault::kNone) {
            if ((member.tag & ~kAsn1ConstructedBit) == kAsn1OctetString) {
                return WholeSegment(member);
            }
        }
    }
    return {};
}

// Makes the next element a member when it is of an accepted type.
template <class Accepts>
bool TakeMember(CAsn1Cursor& cursor, CAsn1Element& member, Accepts accepts) {
    return !cursor.AtEnd() && accepts(cursor.PeekTag()) && cursor.Next(member) == Asn1Fault::kNone;
}

constexpr auto kIsInteger = [](unsigned char tag) { return tag == kAsn1Integer; };
constexpr auto kIsTime = [](unsigned char tag) {
    return tag == kAsn1UtcTime || tag == kAsn1GeneralizedTime;
};
constexpr auto kIsSequence = [](unsigned char tag) { return tag == kAsn1Sequence; };

void ReadEntry(const CAsn1Element& element, CrlEntry& entry) {
    entry.raw = element.raw;
    entry.serial = {};
    entry.date = {};
    entry.extensions = {};
    CAsn1Cursor cursor(element.tag == kAsn1Sequence ? element.content
                                                    : std::span<const unsigned char>());
    const bool hasSerial = TakeMember(cursor, entry.serial, kIsInteger);
    const bool hasDate = TakeMember(cursor, entry.date, kIsTime);
    TakeMember(cursor, entry.extensions, kIsSequence);
    entry.isWhole = hasSerial && hasDate && cursor.AtEnd();
}

// GeneralNames as one line: names of directories as such, the others as they are said elsewhere.
std::wstring IssuerText(std::span<const unsigned char> generalNames, Octets listIssuer) {
    const CAsn1Element names = ca::FirstElement(generalNames);
    ca::CTextLines text;
    if (!generalNames.empty() && names.tag != kAsn1Sequence) {
        text.Unreadable(generalNames);
        return text.Take();
    }
    CAsn1Element name;
    std::size_t index = 0;
    for (CAsn1Cursor cursor(names.content); !cursor.AtEnd() && index < ca::kMaxListed; ++index) {
        if (cursor.Next(name) != Asn1Fault::kNone) {
            break;
        }
        const CAsn1Element directory =
            name.tag == ca::ContextConstructed(4) ? ca::Child(name, 0) : CAsn1Element();
        if (directory.raw.empty()) {
            ca::SayGeneralName(name, text);
        } else if (!std::ranges::equal(directory.raw, listIssuer)) {
            text.Line(ca::ReadableName(directory));
        }
    }
    return text.Take();
}

void FillFromExtension(const ca::OidInfo* type, std::span<const unsigned char> value,
                       ca::RevokedCert& record) {
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
    m_entry.certificateIssuer = reached.certificateIssuer;
}

bool CCrlWalk::Step(CAsn1Element& element) {
    if (m_cursor.AtEnd()) {
        return false;
    }
    ++m_walked;
    const std::span<const unsigned char> rest = m_cursor.Rest();
    if (m_cursor.Next(element) != Asn1Fault::kNone) {
        element = {};
        element.raw = rest;
        m_cursor = {};
        m_isBroken = true;
    }
    return true;
}

bool CCrlWalk::IsAskedFor() const {
    if (m_page.serial) {
        return !m_entry.serial.raw.empty() &&
               std::ranges::equal(WithoutSignOctets(m_entry.serial.content), *m_page.serial);
    }
    return m_entry.index >= m_page.first;
}

bool CCrlWalk::Next() {
    if (m_found == m_page.count) {
        return false;
    }
    CAsn1Element element;
    while (Step(element)) {
        ReadEntry(element, m_entry);
        m_entry.index = m_walked - 1;
        if (!m_entry.extensions.raw.empty()) {
            const auto issuer = FindCertificateIssuer(m_entry.extensions);
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

bool IsPlainCrlEntry(const CrlEntry& entry) {
    return entry.isWhole && entry.extensions.raw.empty() && !entry.serial.content.empty() &&
           ReadTime(entry.date).has_value();
}

const std::wstring& CCrlDescriber::IssuerOf(const CrlEntry& entry) {
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
        m_plainOctets = TextOctets(empty) + kDates;
    }
    return m_plainOctets + 2 * entry.serial.content.size();
}

void CCrlDescriber::Describe(const CrlEntry& entry, RevokedCert& record, std::wstring& error) {
    std::wstring faults;
    record.serial =
        entry.serial.content.empty() ? UnreadableText(entry.raw) : SerialText(entry.serial.content);
    TimeForms date = DescribeTime(entry.date, &m_offsets);
    if (!entry.isWhole || !date.seconds) {
        AddError(faults, UnreadableText(entry.raw));
    }
    record.revocationDate = std::move(date);
    record.reason.clear();
    record.invalidityDate.clear();
    record.extensions.items.clear();
    record.certificateIssuer = IssuerOf(entry);
    if (!entry.extensions.raw.empty()) {
        FillExtensions(entry.extensions.content, record.extensions, faults,
                       [&](const OidInfo* type, std::span<const unsigned char> value) {
                           FillFromExtension(type, value, record);
                       });
    }
    if (!faults.empty()) {
        AddError(error, CrlEntryFault(entry.index, faults));
    }
}

}  // namespace ca
