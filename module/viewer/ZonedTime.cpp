#include "module/viewer/ZonedTime.h"

#include "module/viewer/ViewerText.h"

#include <cstdlib>

namespace {

constexpr int kNoEndYear = 9999;
constexpr qint64 kSecondsOfMinute = 60;
constexpr qint64 kSecondsOfHour = 60 * kSecondsOfMinute;
constexpr qint64 kSecondsOfDay = 24 * kSecondsOfHour;

QString ZoneText(qint64 seconds) {
    if (seconds == 0) {
        return QStringLiteral("UTC");
    }
    const qint64 minutes = std::abs(seconds) / kSecondsOfMinute;
    return QStringLiteral("UTC%1%2:%3")
        .arg(seconds < 0 ? '-' : '+')
        .arg(minutes / 60, 2, 10, QLatin1Char('0'))
        .arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

}  // namespace

namespace ca {

QDateTime ReadUtc(std::wstring_view utc) {
    QDateTime time =
        QDateTime::fromString(QString::fromWCharArray(utc.data(), static_cast<int>(utc.size())),
                              QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    time.setTimeSpec(Qt::UTC);
    return time;
}

QString ZonedTime(std::wstring_view local, std::wstring_view utc) {
    const QString shown = ShownText(local);
    // Read as if it were UTC: the difference is the zone.
    const QDateTime here = ReadUtc(local);
    const QDateTime there = ReadUtc(utc);
    const qint64 ahead = here.isValid() && there.isValid() ? there.secsTo(here) : kSecondsOfDay;
    return std::abs(ahead) < kSecondsOfDay ? shown + " " + ZoneText(ahead) : shown;
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
