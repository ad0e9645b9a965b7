#include "records/fill/SignatureAttributes.h"

#include "asn1/Oid.h"
#include "asn1/attributes/EssAttributes.h"
#include "asn1/views/AttributeViews.h"
#include "common/Exception.h"
#include "records/AnswerBudget.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/DescriptionWords.h"
#include "records/text/ExtensionText.h"
#include "records/text/GeneralNameText.h"
#include "records/text/OutlineText.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

using ca::SignatureFacts;
using Value = std::span<const unsigned char>;

// The first of several: which one a verifier takes nobody knows, and the error says that there are
// several.
void TakeTime(Value value, SignatureFacts& facts) {
    if (!facts.signingTime.seconds) {
        facts.signingTime = ca::DescribeTime(ca::FirstElement(value));
    }
}

// BinaryTime ::= INTEGER     -- seconds since 1970-01-01 UTC     RFC 6019, 3
void TakeBinaryTime(Value value, SignatureFacts& facts) {
    const CAsn1Root<CAsn1Integer> seconds(value);
    constexpr std::int64_t kNone = -1;
    const std::int64_t number = IntegerOf(&*seconds, kNone);
    if (number != kNone && !facts.binarySigningTime.seconds) {
        facts.binarySigningTime = ca::DescribeTime(number);
    }
}

// A description that is not a text states nothing.
void TakeDescription(Value value, SignatureFacts& facts) {
    const CAsn1Element text = ca::FirstElement(value);
    facts.description = ca::IsText(text) ? ca::ValueText(text) : std::wstring();
}

void TakeContentHint(Value value, SignatureFacts& facts) {
    const ca::CDecoded<CAsn1ContentHints> hints(value);
    if (hints->ContentDescription() != nullptr) {
        facts.contentHint = ca::ValueText(*hints->ContentDescription());
    }
}

// Of the publisher's information what a record has a member for.
void TakeAddress(Value value, SignatureFacts& facts) {
    const CAsn1SpcOpusInfoView info(ca::FirstElement(value));
    if (const CAsn1Element url = info.MoreInfo().Url(); !url.raw.empty()) {
        facts.address = ca::ValueText(url);
    }
}

// A signed attribute stands once (RFC 5652, 11, RFC 5035, 3): of two signing times nobody knows
// which one a verifier goes by. Only time stamps of the content may be several.
bool StandsOnce(const CAsn1Attribute& attribute) {
    return attribute.Type() != nullptr &&
           !ca::IsOid(OctetsOf(attribute.Type()), "id-aa-ets-contentTimestamp");
}

struct FactRow {
    ca::COid type;
    bool isSignedOnly;  // what anybody may add later is not a fact
    void (*take)(Value value, SignatureFacts& facts);
};
constexpr FactRow kFacts[] = {
    {"id-signingTime", /*isSignedOnly=*/true, TakeTime},
    {"id-aa-binarySigningTime", /*isSignedOnly=*/true, TakeBinaryTime},
    {"signingDescription", /*isSignedOnly=*/false, TakeDescription},
    {"id-aa-contentHint", /*isSignedOnly=*/false, TakeContentHint},
    {"spcSpOpusInfo", /*isSignedOnly=*/false, TakeAddress},
};

// A value of another type states nothing; the attribute's own text says that it is unreadable.
// \return whether the attribute is one that may state something.
bool TakeFact(const ca::OidInfo* type, bool isSigned, Value values, SignatureFacts& facts) {
    const auto* const row =
        std::ranges::find_if(kFacts, [&](const FactRow& each) { return each.type == type; });
    if (row == std::end(kFacts) || (row->isSignedOnly && !isSigned)) {
        return false;
    }
    // The attribute's own text has told the fault.
    try {
        row->take(values, facts);
    } catch (const ca::Exception&) {
        return true;
    }
    return true;
}

}  // namespace

namespace ca {

void CSignatureAttributes::AddSigned(const CAsn1SetOf<CAsn1Attribute>* attributes) {
    if (attributes != nullptr) {
        Add(*attributes, nullptr);
        // Only signed ones must be alone; several unsigned ones are allowed (RFC 5652, 11).
        NoteRepeated(m_signedTypes, m_record.signCert.error);
    }
}

void CSignatureAttributes::AddUnsigned(const CAsn1SetOf<CAsn1Attribute>* attributes,
                                       const CountersignatureVisitor& visit) {
    if (attributes != nullptr) {
        Add(*attributes, &visit);
    }
}

void CSignatureAttributes::Add(const CAsn1SetOf<CAsn1Attribute>& attributes,
                               const CountersignatureVisitor* visit) {
    std::size_t index = 0;
    for (auto at = attributes.Elements(); at.Next(); ++index) {
        std::wstring& error = m_record.signCert.error;
        if (m_record.extensions.size() == kMaxListed ||
            !CAnswerBudget::HasRoomFor(at.Raw().size())) {
            AddMore(error, attributes.Count() - index);
            return;
        }
        const std::size_t errorsBefore = error.size();
        AddOne(at, visit);
        CAnswerBudget::Take(CostOfText(error.size() - errorsBefore));
    }
}

// Signers of one message often repeat an attribute, as a policy: its text is made once.
const SignExtension* CAttributeMemo::Find(std::span<const unsigned char> attribute) const {
    const auto kept = std::ranges::find_if(
        m_kept, [&](const Kept& each) { return std::ranges::equal(each.octets, attribute); });
    return kept != m_kept.end() ? &kept->extension : nullptr;
}

void CAttributeMemo::Keep(std::span<const unsigned char> attribute,
                          const SignExtension& extension) {
    // Large ones are seldom the same, and their texts would stay in memory until the message ends.
    if (attribute.size() > kMaxOctets || CostOf(extension) > kMaxCost) {
        return;
    }
    if (m_kept.size() < kMaxKept) {
        m_kept.push_back({attribute, extension});
    } else {
        // The oldest goes: a message repeats its attributes signer by signer.
        m_kept[m_oldest] = {attribute, extension};
        m_oldest = (m_oldest + 1) % kMaxKept;
    }
}

void CSignatureAttributes::AddOne(CAsn1ListCursor<CAsn1Attribute>& at,
                                  const CountersignatureVisitor* visit) {
    const CAsn1Attribute* attribute = at.Item();
    if (visit == nullptr && attribute != nullptr && StandsOnce(*attribute)) {
        m_signedTypes.push_back(OctetsOf(attribute->Type()));
    }
    // Unsigned ones differ, as time stamps do.
    if (const SignExtension* known = visit == nullptr ? m_memo.Find(at.Raw()) : nullptr) {
        m_record.extensions.emplace_back(std::make_unique<SignExtension>(*known));
        CAnswerBudget::Take(CostOf(*known));
        return;
    }
    auto extension = std::make_unique<SignExtension>();
    CRecordMeter meter(*extension);
    if (at.Fault() != nullptr) {
        AddError(m_record.signCert.error, at.Fault()->message);
    }
    if (attribute == nullptr || attribute->Type() == nullptr || attribute->Values() == nullptr) {
        FillOdd(attribute, at.Raw(), *extension);
    } else {
        const bool isAll = FillValues(*attribute, visit, *extension, meter);
        // One with a fault is described again, since its fault belongs in each record.
        if (isAll && visit == nullptr && m_record.signCert.error.empty()) {
            m_memo.Keep(at.Raw(), *extension);
        }
    }
    meter.Take();
    m_record.extensions.emplace_back(std::move(extension));
}

// What cannot be read as an attribute: its type where there is one, and an outline.
void CSignatureAttributes::FillOdd(const CAsn1Attribute* attribute, Octets raw,
                                   SignExtension& extension) {
    const Octets type = attribute != nullptr ? OctetsOf(attribute->Type()) : Octets();
    if (!type.empty()) {
        extension.extensionName = OidName(type);
        extension.extensionOid = OidText(type);
    }
    CTextLines lines;
    SayOddValue(raw, lines);
    extension.extensionInterpretedString = lines.Take();
    extension.extensionInterpretedData = Base64Text(raw);
    AddValueError(m_record.signCert.error, type, lines.TakeFaults());
}

bool CSignatureAttributes::FillValues(const CAsn1Attribute& attribute,
                                      const CountersignatureVisitor* visit,
                                      SignExtension& extension,
                                      CRecordMeter<SignExtension>& meter) {
    const Octets type = OctetsOf(attribute.Type());
    const Values& values = *attribute.Values();
    const OidInfo* const row = FindOid(type);
    extension.extensionName = OidName(type);
    extension.extensionOid = OidText(type);
    CTextLines lines(&m_signers);
    SayAttributeValues(type, values, lines, m_record.signCert.error);
    extension.extensionInterpretedString = lines.Take();
    // What signers are known to state of themselves is one value each.
    if (visit == nullptr && row != nullptr && values.Count() > 1) {
        lines.Fault(WordText(Word::kMoreThanOnce));
    }
    AddValueError(m_record.signCert.error, type, lines.TakeFaults());
    const bool hasFact =
        TakeFact(row, /*isSigned=*/visit == nullptr, values.ContentOctets(), m_facts);
    meter.Take();  // countersignatures are described with what is left
    const bool isCountersignature = visit != nullptr && row == COid("id-countersignature");
    // Nested countersignatures have their octets in those of the outermost, and repeat them only
    // while there is room.
    if (!isCountersignature || (*visit)(values)) {
        extension.extensionInterpretedData = Base64Text(values.ContentOctets());
    }
    return !hasFact;
}

void CSignatureAttributes::Finish() {
    // signingTime is what all programs read; binarySigningTime is for those that have no other.
    const bool hasTime = m_facts.signingTime.seconds.has_value();
    m_record.signTime = std::move(hasTime ? m_facts.signingTime : m_facts.binarySigningTime);
    m_record.comment =
        std::move(m_facts.description.empty() ? m_facts.contentHint : m_facts.description);
    m_record.uri = std::move(m_facts.address);
    CAnswerBudget::Take(CostOfText(m_record.comment.size() + m_record.uri.size()));
}

}  // namespace ca
