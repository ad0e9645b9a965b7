#include "records/objects/DescriptionBuilder.h"

#include "asn1/TruncatedObject.h"
#include "common/DecimalText.h"
#include "common/Exception.h"
#include "records/AnswerBudget.h"
#include "records/RecordOctets.h"
#include "records/text/ExtensionText.h"
#include "records/text/OutlineText.h"
#include "records/text/TextLines.h"

#include <utility>

namespace ca {

CDescriptionBuilder::Level::Level(CDescriptionBuilder& builder, FieldId id, FieldForm form)
    : m_builder(builder), m_outer(builder.m_open), m_outerId(builder.m_id), m_form(form) {
    builder.m_open = &builder.Add(id, form)->fields;
    builder.m_id = id;
}

CDescriptionBuilder::Level::~Level() {
    const bool isEmpty = m_builder.m_open->empty();
    const bool isSink = m_builder.m_open == &m_builder.m_sink.fields;
    m_builder.m_open = m_outer;
    m_builder.m_id = m_outerId;
    // A group without members would say that there is something.
    if (m_form == FieldForm::kGroup && isEmpty && !isSink) {
        m_outer->pop_back();
        --m_builder.m_count;
    }
}

DescriptionField* CDescriptionBuilder::Add(FieldId id, FieldForm form) {
    // Beyond the limit fields go where nobody reads them: describers need not ask each time.
    if (m_count == kMaxDescribedFields || !CAnswerBudget::HasRoomFor(0)) {
        ++m_leftOut;
        m_sink = {};
        return &m_sink;
    }
    ++m_count;
    CAnswerBudget::Take(sizeof(DescriptionField));
    DescriptionField& field = m_open->emplace_back();
    field.id = id;
    field.form = form;
    return &field;
}

void CDescriptionBuilder::Text(FieldId id, std::wstring text) {
    if (!text.empty()) {
        CAnswerBudget::Take(CostOfText(text.size()));
        Add(id, FieldForm::kText)->text = std::move(text);
    }
}

void CDescriptionBuilder::Absent(FieldId id, Word word) {
    // Of an object that was cut off nobody knows what came after.
    if (!m_isCut) {
        Text(id, word);
    }
}

void CDescriptionBuilder::Named(DescriptionField field) {
    field.form = FieldForm::kNamed;
    CAnswerBudget::Take(CostOfText(field.name.size() + field.oid.size() + field.text.size()) +
                        field.octets.size());
    *Add(m_id, field.form) = std::move(field);
}

void CDescriptionBuilder::Object(FieldId id, const ObjectKind& kind,
                                 std::span<const unsigned char> octets, std::wstring about) {
    DescriptionField* const field = Add(id, FieldForm::kObject);
    if (field != &m_sink) {
        CAnswerBudget::Take(octets.size());
        field->kind = &kind;
        field->octets.assign(octets.begin(), octets.end());
        field->text = std::move(about);
    }
}

void CDescriptionBuilder::LeaveOut(std::size_t count) {
    Element(MoreText(count));
    Fault(std::wstring(NameOf(m_id).Caption()) + L": " + MoreText(count));
}

void CDescriptionBuilder::Unreadable(FieldId id, std::span<const unsigned char> octets) {
    // Of a secret only its size: its octets are the secret.
    Text(id, m_isSecret ? SetZORNAMessage(kMsgUnreadable) + OctetsCountText(octets.size())
                        : UnreadableText(octets));
}

void CDescriptionBuilder::Fault(std::wstring_view fault) {
    AddError(m_description.error, fault);
}

std::span<const unsigned char> CDescriptionBuilder::Joined(const CAsn1Object* octetString) {
    if (octetString == nullptr || octetString->GetBlock() == nullptr) {
        return {};
    }
    const CAsn1Block& block = *octetString->GetBlock();
    if (!block.IsConstructed()) {
        return {block.content, block.contentLength};
    }
    CAnswerBudget::Take(block.contentLength);
    try {
        // Kept until the description is made, as the describers view it.
        return m_copies.emplace_back(OctetStringOf(octetString));
    } catch (const Exception& fault) {
        Fault(fault.message);
        return {};
    }
}

std::span<const unsigned char> CDescriptionBuilder::Mended(std::span<const unsigned char> octets) {
    // Whole objects are described where they are, without a copy.
    auto mended = MendTruncated(octets);
    if (!mended) {
        return octets;
    }
    m_isCut = true;
    CAnswerBudget::Take(octets.size());
    Fault(WordText(Word::kCutOff) + ca::DecimalText(octets.size()));
    return m_copies.emplace_back(std::move(mended->octets));
}

// 0 for what stands in a copy, whose place in the object is not known.
std::uint32_t CDescriptionBuilder::OffsetOf(std::span<const unsigned char> octets) const {
    const bool isInside = !octets.empty() && octets.data() >= m_object.data() &&
                          octets.data() < m_object.data() + m_object.size();
    return isInside ? static_cast<std::uint32_t>(octets.data() - m_object.data()) : 0;
}

ObjectDescription CDescriptionBuilder::Take(const ObjectKind& kind) {
    if (m_leftOut != 0) {
        Fault(MoreText(m_leftOut));
    }
    m_description.kind = &kind;
    m_description.octets = m_object.size();
    return std::move(m_description);
}

}  // namespace ca
