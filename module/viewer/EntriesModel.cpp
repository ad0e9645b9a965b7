#include "module/viewer/EntriesModel.h"

#include "common/Lng.h"
#include "module/viewer/ItemDescribers.h"
#include "module/viewer/RecordFields.h"
#include "module/viewer/ViewerText.h"
#include "module/viewer/ZonedTime.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::size_t kKept = 256;

}  // namespace

namespace ca {

void CEntriesModel::SetList(std::span<const unsigned char> list) {
    beginResetModel();
    m_index = list.empty() ? CCrlIndex() : CCrlIndex(list);
    m_kept.assign(kKept, {});
    endResetModel();
}

void CEntriesModel::SetLanguage(std::uint32_t language) {
    m_language = language;
    m_kept.assign(kKept, {});
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
    Q_EMIT dataChanged({}, {});
}

const CEntriesModel::Described& CEntriesModel::Entry(int row) const {
    Described& place = m_kept[static_cast<std::size_t>(row) % kKept];
    if (place.row != row) {
        place = {};
        place.row = row;
        place.faults = m_index.Describe(static_cast<std::size_t>(row), place.record);
    }
    return place;
}

QString CEntriesModel::TextOf(int row) const {
    const CLanguageScope scope(m_language);
    CRecordFields fields(BareJson(Entry(row).record));
    if (!Entry(row).faults.empty()) {
        fields.Add(CRecordFields::kRoot, LabelOf("Error"), ShownText(Entry(row).faults));
    }
    return fields.AsText().trimmed();
}

int CEntriesModel::FindSerial(const QString& digits, int row, bool forward) const {
    std::string wanted = digits.toLower().toStdString();
    std::erase_if(wanted, [](char c) { return c == ' ' || c == ':'; });
    if (wanted.empty()) {
        return -1;
    }
    const auto place = static_cast<std::size_t>(std::max(row, 0));
    const std::size_t all = m_index.Count();
    auto found = forward ? m_index.Find(wanted, place, all) : m_index.FindLast(wanted, 0, place);
    if (!found) {
        found = forward ? m_index.Find(wanted, 0, place) : m_index.FindLast(wanted, place, all);
    }
    return found ? static_cast<int>(*found) : -1;
}

int CEntriesModel::rowCount(const QModelIndex& parent) const {
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return parent.isValid() ? 0 : static_cast<int>(std::min(m_index.Count(), kMost));
}

QVariant CEntriesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) {
        return {};
    }
    const CLanguageScope scope(m_language);
    const RevokedCert& record = Entry(index.row()).record;
    switch (index.column()) {
        case kNumber:
            return index.row() + 1;
        case kSerial:
            return ShownLine(record.serial);
        case kDate:
            return ZonedTime(record.revocationDate);
        case kReason:
            return ShownLine(record.reason);
        case kInvalidity:
            return ShownLine(record.invalidityDate);
        default:
            return ShownLine(record.certificateIssuer);
    }
}

QVariant CEntriesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr const char* kMembers[kColumns] = {
        "", "Serial", "RevocationDate", "Reason", "InvalidityDate", "CertificateIssuer"};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= kColumns) {
        return {};
    }
    const CLanguageScope scope(m_language);
    return section == kNumber ? Word(ViewerWord::kEntry) : LabelOf(kMembers[section]);
}

}  // namespace ca
