#include "asn1/FieldReader.h"

CFieldReader::CFieldReader(CAsn1TypedObject& owner, const char* ownerName)
    : m_owner(owner), m_ownerName(ownerName), m_cursor(owner.ContentOctets()) {
    m_owner.DeleteInnerObjects();  // of an earlier Decode()
    m_owner.m_hasFault = false;
}

void CFieldReader::ReadOwnElement() {
    m_cursor = CAsn1Cursor(m_owner.RawOctets());
    m_isChoice = true;
}

void CFieldReader::End() {
    if (!m_fault && !m_blocked && !m_cursor.AtEnd()) {
        // What is left over is either unreadable or a member that the type does not have.
        CAsn1Element left;
        const auto at = m_cursor.Rest();
        const Asn1Fault fault = m_cursor.Next(left);
        if (fault != Asn1Fault::kNone) {
            Unreadable("", fault, at);
        } else {
            WrongTag("", left);
        }
    }
    if (m_fault) {
        // Thrown last: members after the fault have been read as well, and describers show them.
        m_owner.m_hasFault = true;
        throw *std::move(m_fault);
    }
}

void CFieldReader::Own(std::unique_ptr<CAsn1Object> member) {
    m_owner.OwnInnerObject(std::move(member));
}

void CFieldReader::DecodeMember(CAsn1TypedObject& member) {
    try {
        member.Decode();
    } catch (const ca::Exception& fault) {
        Keep(fault);
    }
}

bool CFieldReader::TakeElement(const char* name) {
    const auto at = m_cursor.Rest();
    const Asn1Fault fault = m_cursor.Next(m_element);
    if (fault != Asn1Fault::kNone) {
        // Nobody knows where the next element begins.
        m_blocked = true;
        Unreadable(name, fault, at);
        return false;
    }
    ++m_taken;
    return true;
}

bool CFieldReader::TakeInner(const char* name, CAsn1Element& inner) {
    CAsn1Cursor cursor(m_element.content);
    if (cursor.AtEnd()) {
        Keep(MakeAsn1Missing(NameOf(name), OffsetOf(cursor.Rest())));
        return false;
    }
    const Asn1Fault fault = cursor.Next(inner);
    if (fault != Asn1Fault::kNone) {
        Unreadable(name, fault, m_element.content);
        return false;
    }
    if (!cursor.AtEnd()) {  // the one that is there is read all the same
        Keep(MakeAsn1Fault(Asn1Fault::kMalformed, NameOf(name), OffsetOf(cursor.Rest())));
    }
    return true;
}

CAsn1Block* CFieldReader::TakenBlock(const char* name) {
    // A CHOICE has no element of its own: what it holds is the alternative itself.
    return m_isChoice ? m_owner.GetBlock()
                      : ChildBlock(name, m_owner.GetBlock(), m_taken - 1, m_element);
}

CAsn1Block* CFieldReader::InnerBlock(const char* name, const CAsn1Element& inner) {
    CAsn1Block* outer = TakenBlock(name);
    return outer != nullptr ? ChildBlock(name, outer, 0, inner) : nullptr;
}

// Child `index`: made here, or found where a parser or an earlier Decode() made it. A parser lets
// children overrun their parent; such a tree does not fit the elements.
CAsn1Block* CFieldReader::ChildBlock(const char* name, CAsn1Block* parent, std::size_t index,
                                     const CAsn1Element& element) {
    CAsn1Block* child = parent->GetInnerBlock(index);
    if (child == nullptr) {
        child = parent->AddInnerBlock();
        BindBlock(*child, element, OffsetOf(element.raw));
    } else if (child->start != element.raw.data()) {
        Unreadable(name, Asn1Fault::kMalformed, element.raw);
        return nullptr;
    }
    return child;
}

bool CFieldReader::TakenBoolean(const char* name) {
    const CAsn1Block* block = TakenBlock(name);
    // Any octet but zero is TRUE in BER (X.690, 8.2.2).
    return block != nullptr && block->contentLength != 0 && block->content[0] != 0;
}

std::string CFieldReader::NameOf(const char* member) const {
    std::string name = m_ownerName;
    if (*member != 0) {
        name.append(1, '.').append(member);
    }
    return name;
}

std::uint32_t CFieldReader::OffsetOf(std::span<const unsigned char> octets) const {
    const CAsn1Block* block = m_owner.GetBlock();
    if (block == nullptr || block->start == nullptr) {
        return 0;  // an object that was not made from octets
    }
    return block->offset + static_cast<std::uint32_t>(octets.data() - block->start);
}

void CFieldReader::NotThere(const char* name) {
    // A member after a fault need not be missing: nobody looked for it.
    if (m_fault || m_blocked) {
        return;
    }
    const auto at = m_cursor.Rest();
    CAsn1Element other;
    if (at.empty()) {
        Keep(MakeAsn1Missing(NameOf(name), OffsetOf(at)));
    } else if (const Asn1Fault fault = CAsn1Cursor(at).Next(other); fault != Asn1Fault::kNone) {
        Unreadable(name, fault, at);
    } else {
        WrongTag(name, other);
    }
}

void CFieldReader::WrongTag(const char* name, const CAsn1Element& element) {
    Keep(MakeAsn1WrongTag(NameOf(name), element.tag, OffsetOf(element.raw)));
}

void CFieldReader::Unreadable(const char* name, Asn1Fault fault,
                              std::span<const unsigned char> at) {
    Keep(MakeAsn1Fault(fault, NameOf(name), OffsetOf(at)));
}

void CFieldReader::Keep(const ca::Exception& fault) {
    // The first fault is told: those after it are mostly its consequences.
    if (!m_fault) {
        m_fault = fault;
    }
}
