#include "module/viewer/FileHeadline.h"

#include "module/viewer/CrlIndex.h"
#include "module/viewer/ItemDescribers.h"
#include "module/viewer/ItemKinds.h"

#include <QStringList>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using namespace ca;

// How many there are of a kind.
struct KindCount {
    const FileItem* first;
    std::size_t count;
};
// In the order in which they come.
using KindCounts = std::vector<KindCount>;

KindCounts CountKinds(const CFileDocument& document, const std::vector<ItemIndex>& items) {
    KindCounts counts;
    for (const ItemIndex item : items) {
        const FileItem& each = document[item];
        auto place = std::ranges::find_if(counts, [&each](const KindCount& known) {
            return known.first->kind == each.kind && known.first->object == each.object;
        });
        if (place == counts.end()) {
            place = counts.insert(place, {&each, 0});
        }
        place->count += each.kind == ItemKind::kMore ? each.number : 1;
    }
    return counts;
}

QStringList CountTexts(const KindCounts& counts) {
    QStringList texts;
    for (const auto& [first, count] : counts) {
        texts += CountText(*first, count);
    }
    return texts;
}

QString MessageLine(const CFileDocument& document, ItemIndex item) {
    QStringList words(KindText(document[item]));
    KindCounts inside = CountKinds(document, document[item].children);
    std::erase_if(inside, [](const KindCount& each) {
        return each.first->kind != ItemKind::kSignature && each.first->kind != ItemKind::kMore;
    });
    words += CountTexts(inside);
    words += Word(IsAttached(document[item].octets) ? ViewerWord::kContentEnclosed
                                                    : ViewerWord::kContentDetached);
    return words.join(", ");
}

QString ItemLine(const CFileDocument& document, ItemIndex item) {
    const FileItem& only = document[item];
    QStringList words(KindText(only));
    switch (only.kind) {
        case ItemKind::kMessage:
            return MessageLine(document, item);
        case ItemKind::kBundle:
        case ItemKind::kEnvelope:
            words += CountTexts(CountKinds(document, only.children));
            break;
        case ItemKind::kCrl:
            words += Counted(CCrlIndex(only.octets).Count(), ViewerWord::kEntries);
            break;
        case ItemKind::kStructure:
            return ListedName(document, item);
        default:
            break;
    }
    return words.join(", ");
}

QString FileLine(const CFileDocument& document, ItemIndex file) {
    if (document[file].octets.empty()) {  // a record
        return Word(ViewerWord::kCertificate);
    }
    const std::vector<ItemIndex>& items = document[file].children;
    const KindCounts counts = CountKinds(document, items);
    QStringList texts = CountTexts(counts);
    // What is counted only, after the one object, does not make a file one of several objects.
    const bool isOne =
        items.size() == 1 || (items.size() == 2 && document[items.back()].kind == ItemKind::kMore);
    if (isOne) {
        texts.front() = ItemLine(document, items.front());
    }
    return texts.join(", ");
}

}  // namespace

namespace ca {

QString Headline(const CFileDocument& document, ItemIndex item) {
    if (document.IsEmpty() || item == kNoItem) {
        return Word(ViewerWord::kNothingOpen);
    }
    const ItemIndex file = document.FileOf(item);
    const QString line = FileLine(document, file);
    if (document.Files().size() == 1) {
        return line;
    }
    const QString name = LaidOut(ShownText(document.FileName(file).toStdWString()), kMaxLineText);
    return QStringLiteral("%1. %2: %3")
        .arg(Counted(document.Files().size(), ViewerWord::kFiles), name, line);
}

}  // namespace ca
