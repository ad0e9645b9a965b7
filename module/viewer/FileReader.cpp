#include "module/viewer/FileReader.h"

#include "asn1/Asn1Tags.h"
#include "asn1/Elements.h"
#include "asn1/TruncatedObject.h"
#include "module/viewer/ItemDescribers.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

// What editors leave behind the last element.
bool IsBlank(std::span<const unsigned char> octets) {
    return std::ranges::all_of(octets, [](unsigned char octet) {
        return octet == ' ' || octet == '\t' || octet == '\r' || octet == '\n';
    });
}

// What an object is in the list.
ca::ItemKind ListedKind(const ca::ObjectKind* kind, std::span<const unsigned char> octets) {
    using ca::ItemKind;
    if (kind == nullptr || kind->reader == ca::ObjectReader::kNone) {
        return ItemKind::kStructure;
    }
    const bool isDescribed = kind->reader == ca::ObjectReader::kDescription;
    if (kind->contentTypes.Has(ca::COid("id-signedData")) && !isDescribed &&
        ca::IsMessage(octets)) {
        return kind != ca::FindObjectKind("signature") ? ItemKind::kBundle
               : ca::IsTimeStamp(octets)               ? ItemKind::kTimeStamp
                                                       : ItemKind::kMessage;
    }
    switch (kind->reader) {
        case ca::ObjectReader::kCertificates:
            return kind == ca::FindObjectKind("certificate") ? ItemKind::kCertificate
                                                             : ItemKind::kAttributeCertificate;
        case ca::ObjectReader::kCrl:
            return ItemKind::kCrl;
        case ca::ObjectReader::kRecipients:
            return ItemKind::kEnvelope;
        default:  // a label may claim what the octets are not
            return kind->describe != nullptr ? ItemKind::kObject : ItemKind::kStructure;
    }
}

}  // namespace

namespace ca {

void CFileReader::Read() {
    m_items.emplace_back().octets = m_file.octets;
    m_file.payload = DecodePayload(m_file.octets);
    for (const PayloadItem& block : m_file.payload) {
        ReadBlock(block);
    }
    if (m_left != 0) {
        FileItem& more = m_items.emplace_back();
        more.kind = ItemKind::kMore;
        more.parent = 0;
        more.row = static_cast<std::uint32_t>(m_items[0].children.size());
        more.number = static_cast<std::uint32_t>(m_left);
        m_items[0].children.push_back(static_cast<ItemIndex>(m_items.size() - 1));
    }
}

// Some objects have no element around them all; otherwise the label is that of the first one. What
// is not listed is not looked at.
void CFileReader::ReadBlock(const PayloadItem& block) {
    m_block = block.octets;
    const CAsn1Element first = FirstElement(block.octets);
    const ObjectKind* const kind = IsFull() ? nullptr : RecogniseObject(SourceOf(block));
    if (first.raw.empty() && !block.octets.empty()) {
        AddCut(block.octets, 0, &block);
        return;
    }
    const bool isOne =
        kind != nullptr && RecogniseObject({block.label, block.headers, first.raw}) != kind;
    const std::span<const unsigned char> object = isOne ? block.octets : first.raw;
    AddItem(kind, object, 0, &block);
    AddEach(block.octets.subspan(object.size()), 0,
            [this](const CAsn1Element& element) { AddObject(element.raw, 0); });
}

// \param block  the PEM block that an object is the first one of; null for others.
ItemIndex CFileReader::AddItem(const ObjectKind* kind, std::span<const unsigned char> octets,
                               ItemIndex parent, const PayloadItem* block) {
    const ItemKind listed = octets.empty() ? ItemKind::kUnreadable : ListedKind(kind, octets);
    const ItemIndex item = Add(listed, octets, parent);
    if (item == kNoItem) {
        return item;
    }
    if (listed >= ItemKind::kObject) {
        m_items[item].object = kind;
        if (block != nullptr && !block->label.empty()) {
            NoteOf(item).label = block->label;
            NoteOf(item).headers = block->headers;
        }
    }
    ReadInside(item);
    return item;
}

ItemIndex CFileReader::Add(ItemKind kind, std::span<const unsigned char> octets, ItemIndex parent) {
    if (IsFull()) {
        ++m_left;
        return kNoItem;
    }
    const auto index = static_cast<ItemIndex>(m_items.size());
    FileItem& item = m_items.emplace_back();
    item.kind = kind;
    item.octets = octets;
    item.parent = parent;
    item.row = static_cast<std::uint32_t>(m_items[parent].children.size());
    m_items[parent].children.push_back(index);
    return index;
}

ItemIndex CFileReader::AddWhole(ItemKind kind, std::span<const unsigned char> octets,
                                ItemIndex parent) {
    const ItemIndex item = Add(kind, octets, parent);
    if (item != kNoItem) {
        ReadInside(item);
    }
    return item;
}

// Recursion as deep as kMaxLevels.
void CFileReader::ReadInside(ItemIndex item) {
    const ItemKindRow& row = KindRow(m_items[item].kind);
    if (row.readInside == nullptr) {
        return;
    }
    if (m_level == kMaxLevels) {
        Add(ItemKind::kMore, {}, item);
        return;
    }
    ++m_level;
    row.readInside(*this, item);
    --m_level;
}

ItemIndex CFileReader::AddObject(std::span<const unsigned char> element, ItemIndex parent) {
    const ObjectKind* const kind = IsFull() ? nullptr : RecogniseObject({{}, {}, element});
    return AddItem(kind, element, parent, nullptr);
}

void CFileReader::AddKnown(const ObjectKind& kind, std::span<const unsigned char> octets,
                           ItemIndex parent) {
    AddItem(&kind, m_file.copies.emplace_back(octets.begin(), octets.end()), parent, nullptr);
}

std::span<const unsigned char> CFileReader::CopyAs(unsigned char tag,
                                                   std::span<const unsigned char> element) {
    std::vector<unsigned char>& copy = m_file.copies.emplace_back(element.begin(), element.end());
    copy.front() = tag;
    return copy;
}

// What is cut off is shown as far as it goes.
void CFileReader::AddCut(std::span<const unsigned char> rest, ItemIndex parent,
                         const PayloadItem* block) {
    if (IsBlank(rest)) {
        return;
    }
    if (IsFull()) {
        ++m_left;
        return;
    }
    std::span<const unsigned char> readable = rest;
    if (std::optional<CAsn1Beginning> there = MendTruncated(rest)) {
        readable = m_file.copies.emplace_back(std::move(there->octets));
    }
    const ObjectKind* const kind =
        RecogniseObject(block != nullptr ? SourceOf(*block) : ObjectSource{{}, {}, rest});
    const bool isStart = rest.front() == kAsn1Sequence || rest.front() == kAsn1Set;
    const ItemIndex item = kind != nullptr || isStart
                               ? AddItem(kind, readable, parent, block)
                               : AddWhole(ItemKind::kUnreadable, rest, parent);
    if (item == kNoItem) {
        return;
    }
    NoteOf(item).asReceived = rest;
    if (std::optional<Asn1Damage> damage = FindAsn1Damage(rest)) {
        damage->offset += static_cast<std::size_t>(rest.data() - m_block.data());
        NoteOf(item).cut = damage;
    }
}

ItemNote& CFileReader::NoteOf(ItemIndex item) {
    if (m_items[item].note == nullptr) {
        m_items[item].note = std::make_unique<ItemNote>();
    }
    return *m_items[item].note;
}

}  // namespace ca
