#include "host/RecordMembers.h"

#include "common/ZonedTime.h"

#include <QByteArray>
#include <QCryptographicHash>

#include <algorithm>
#include <iterator>

namespace host {

std::string StringMember(const ca::JsonValue& object, const char* key) {
    const auto member = object.FindMember(key);
    const bool isText = member != object.MemberEnd() && member->value.IsString();
    return isText ? std::string(Utf8Of(member->value)) : "";
}

// Keys whose times are local; each has its twin with "UTC" after it.
bool IsLocalTime(std::string_view key) {
    constexpr std::string_view kTimes[] = {"ValidFrom",     "ValidTo",        "ThisUpdate",
                                           "NextUpdate",    "RevocationDate", "SignTime",
                                           "InvalidityDate"};
    return std::ranges::find(kTimes, key) != std::end(kTimes);
}

std::string ZonedText(const ca::JsonValue& object, std::string_view key, const std::string& text) {
    const std::string utc = StringMember(object, (std::string(key) + "UTC").c_str());
    // The twin tells the zone that holds at that time, summer time too.
    return utc.empty() ? ca::WithZone(text) : ca::WithZone(text, utc);
}

std::string Sha256Text(const std::string& base64) {
    // Of the encoding, as people compare certificates by it.
    const QByteArray octets = QByteArray::fromBase64(QByteArray::fromStdString(base64));
    return octets.isEmpty()
               ? ""
               : QCryptographicHash::hash(octets, QCryptographicHash::Sha256).toHex().toStdString();
}

}  // namespace host
