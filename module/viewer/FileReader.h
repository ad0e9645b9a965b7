#pragma once

#include "module/viewer/FileItem.h"
#include "module/viewer/SourceFile.h"
#include "records/objects/ObjectKinds.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace ca {

/// Finds the items of one file: every object in order, and inside the objects what they hold.
/// Cost is linear in the octets, times the levels.
class CFileReader {
  public:
    /// Items of one file; the last one then says how many more there are.
    static constexpr std::size_t kMaxItems = 1 << 18;
    /// Messages, signatures and stamps in one another that are opened.
    static constexpr unsigned kMaxLevels = 16;

    /// \param file   its octets are there; what the items view is added.
    /// \param items  empty; the first one will be the file.
    CFileReader(SourceFile& file, std::vector<FileItem>& items) : m_file(file), m_items(items) {}

    void Read();

    // For the rows of ItemKinds.cpp.

    const FileItem& Item(ItemIndex item) const { return m_items[item]; }
    bool IsFull() const { return m_items.size() >= kMaxItems; }
    /// Adds an item; kNoItem when there are kMaxItems.
    ItemIndex Add(ItemKind kind, std::span<const unsigned char> octets, ItemIndex parent);
    /// Adds an item and what it holds.
    ItemIndex AddWhole(ItemKind kind, std::span<const unsigned char> octets, ItemIndex parent);
    /// Adds an element as what it is.
    ItemIndex AddObject(std::span<const unsigned char> element, ItemIndex parent);
    /// Adds an object of which the kind is known, with a copy of its octets.
    void AddKnown(const ObjectKind& kind, std::span<const unsigned char> octets, ItemIndex parent);
    /// Adds the elements that stand one after the other, each by `add(element)`; what follows
    /// them without being one is an unreadable part.
    template <class AddOne>
    void AddEach(std::span<const unsigned char> elements, ItemIndex parent, AddOne add);
    /// A copy of an element with the identifier octet that its type has.
    std::span<const unsigned char> CopyAs(unsigned char tag,
                                          std::span<const unsigned char> element);
    /// The recipients that one item's octets name are told apart by number.
    void SetNumber(ItemIndex item, std::uint32_t number) { m_items[item].number = number; }

  private:
    void ReadBlock(const PayloadItem& block);
    void ReadInside(ItemIndex item);
    ItemIndex AddItem(const ObjectKind* kind, std::span<const unsigned char> octets,
                      ItemIndex parent, const PayloadItem* block);
    void AddCut(std::span<const unsigned char> rest, ItemIndex parent,
                const PayloadItem* block = nullptr);
    ItemNote& NoteOf(ItemIndex item);

    SourceFile& m_file;
    std::vector<FileItem>& m_items;
    std::span<const unsigned char>
        m_block;  // that is being read: places of damage count from its first
    unsigned m_level = 0;
    std::size_t m_left = 0;  // items that are not listed
};

template <class AddOne>
void CFileReader::AddEach(std::span<const unsigned char> elements, ItemIndex parent, AddOne add) {
    CAsn1Cursor cursor(elements);
    CAsn1Element element;
    while (cursor.Step(element)) {
        add(element);
    }
    if (!cursor.AtEnd()) {
        AddCut(cursor.Rest(), parent);
    }
}

}  // namespace ca
