#include "module/viewer/ZonedTime.h"

#include "common/Encode.h"
#include "common/ZonedTime.h"
#include "module/viewer/ViewerText.h"
#include "records/text/TimeText.h"

namespace {

constexpr int kNoEndYear = 9999;
constexpr qint64 kSecondsOfHour = 3600;

}  // namespace

namespace ca {

QDateTime ReadUtc(std::wstring_view utc) {
    QDateTime time =
        QDateTime::fromString(QString::fromWCharArray(utc.data(), static_cast<int>(utc.size())),
                              QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    time.setTimeSpec(Qt::UTC);
    return time;
}

QString ZonedTime(const TimeTexts& time) {
    return ShownText(u8u16(WithZone(u16u8(time.local), u16u8(time.utc))));
}

QString RemainingText(const QDateTime& from, const QDateTime& to, const QDateTime& now) {
    if (!from.isValid() || !to.isValid() || from > to) {
        return {};
    }
    if (now < from) {
        const qint64 days = (now.secsTo(from) + kSecondsOfDay - 1) / kSecondsOfDay;
        return MessageText(kMsgDaysUntilStart) + QString::number(days);
    }
    const qint64 left = now.secsTo(to);
    if (left < 0) {
        return MessageText(kMsgDaysSinceEnd) + QString::number(-left / kSecondsOfDay);
    }
    if (to.date().year() == kNoEndYear) {
        return {};
    }
    return left < kSecondsOfDay
               ? MessageText(kMsgHoursLeft) + QString::number(left / kSecondsOfHour)
               : MessageText(kMsgDaysLeft) + QString::number(left / kSecondsOfDay);
}

}  // namespace ca
