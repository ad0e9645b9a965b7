#pragma once

#include <string>
#include <string_view>

namespace ca {

/// "01.02.2024 10:00:00 UTC+03:00": a local time of a record with its zone, which the same time in
/// UTC tells. A text that is not a time of that form stays as it is.
std::string WithZone(std::string_view local, std::string_view utc);

/// The same by the time zone of the process, where the record has no time in UTC.
std::string WithZone(std::string_view local);

}  // namespace ca
