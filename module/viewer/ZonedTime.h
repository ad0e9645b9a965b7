#pragma once

#include "records/text/TimeText.h"

#include <QDateTime>
#include <QString>

#include <string_view>

namespace ca {

// Times of records are "dd.mm.yyyy hh:mm:ss", the local one beside the one in UTC.

/// The local time with its zone, "01.01.2024 03:00:00 UTC+03:00"; the zone is what both times say.
/// The local time as it stands when one of them cannot be read.
QString ZonedTime(const TimeTexts& time);

/// The moment; an invalid one for a text that is none.
QDateTime ReadUtc(std::wstring_view utc);

/// How long something still holds, in words of the current language: "days left: 12". "" for times
/// that cannot be read and for the one that says that there is no end (RFC 5280, 4.1.2.5).
QString RemainingText(const QDateTime& from, const QDateTime& to, const QDateTime& now);

}  // namespace ca
