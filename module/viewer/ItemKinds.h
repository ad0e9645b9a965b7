#pragma once

#include "module/viewer/FileDocument.h"
#include "module/viewer/FileItem.h"
#include "module/viewer/RecordFields.h"
#include "module/viewer/Summary.h"
#include "module/viewer/ViewerText.h"

#include <QString>

#include <span>
#include <string>

namespace ca {

class CFileReader;

/// The sign beside what is said of an item. What was not checked is neither good nor bad.
enum class ItemSign : std::uint8_t { kNone, kGood, kInformation, kWarning, kBad };

/// What is said of an item, in the current language.
struct ItemDescription {
    QString kind;  ///< what sort of thing it is
    QString title;
    ItemSign sign = ItemSign::kNone;
    QString verdict;  ///< in a few words, where one was found; goes with the sign
    CSummary summary;
    CRecordFields fields;
};

/// The pages of the window. The numbers are those of the viewer's property "page".
enum ViewerPage : int {
    kGeneralPage,
    kDetailsPage,
    kPathPage,
    kStructurePage,
    kEntriesPage,
    kPages
};

/// Pages as bits of a set.
constexpr unsigned PageBit(ViewerPage page) {
    return 1U << page;
}

/// All that the viewer knows of a kind. Null where there is nothing of the sort.
struct ItemKindRow {
    ItemKind kind;
    ViewerWord caption;
    ViewerWord counted;
    unsigned pages;
    const char* pemLabel;  ///< RFC 7468; "" for what is not sent by itself
    /// Adds what is inside of an item.
    void (*readInside)(CFileReader& reader, ItemIndex item);
    /// What it is called in one line, without its kind.
    QString (*name)(const CFileDocument& document, ItemIndex item);
    void (*describe)(const CFileDocument& document, ItemIndex item, ItemDescription& description);
    /// Its record as answers hold it, an object under its key.
    std::string (*json)(const CFileDocument& document, ItemIndex item);
};

const ItemKindRow& KindRow(ItemKind kind);

/// What sort of thing an item is: "Certificate", "OCSP response".
QString KindText(const FileItem& item);
/// How many there are of its sort: "2 signatures".
QString CountText(const FileItem& item, std::size_t count);
/// The label of its PEM block (RFC 7468); "" for what is not sent by itself.
std::string PemLabelOf(const FileItem& item);

/// What an item is called in the list: its kind, where that is not a certificate, and its name.
QString ListedName(const CFileDocument& document, ItemIndex item);
/// What is said of it; never fails: what cannot be described says why.
ItemDescription DescribeItem(const CFileDocument& document, ItemIndex item);
/// The same as text, for the clipboard, the printer and files; of a message with its signatures or
/// recipients.
QString ItemText(const CFileDocument& document, ItemIndex item);

/// What is wrong with an item's octets, a sentence; "" for nothing.
QString DamageText(const CFileDocument& document, ItemIndex item);

}  // namespace ca
