#include "common/Json.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"

#include <cstdlib>
#include <string>

namespace {

constexpr ca::JsonPosition kNowhere{"", 0, ""};

// Of the thread, since rapidjson's checks call back without a context.
constinit thread_local ca::JsonPosition currentPosition = kNowhere;
constinit thread_local const char* currentMember = "";

// Appends a key, if there is one, in quotes.
void AppendKey(const char* key, std::wstring& place) {
    if (*key != '\0') {
        place.append(place.empty() ? L"\"" : L", \"");
        place.append(key, key + std::char_traits<char>::length(key)).append(L"\"");
    }
}

}  // namespace

namespace ca {

void SetJsonPosition(const JsonPosition& position) noexcept {
    currentPosition = position;
    currentMember = "";
}

void SetJsonMember(const char* key) noexcept {
    currentMember = key;
}

std::wstring JsonPlace() {
    std::wstring place;
    AppendKey(currentPosition.key, place);
    AppendKey(currentMember, place);
    return place;
}

void ClearJsonPosition() noexcept {
    SetJsonPosition(kNowhere);
}

void JsonTypeFault(const char* condition) {
#ifdef MOD_FOO_REPORT_JSON_TYPES
    static_cast<void>(condition);
    throw Exception(kErrJsonParse, SetZORNAMessage(kMsgWrongJsonType), currentPosition.file,
                    currentPosition.line);
#else
    std::wstring text = SetZORNAMessage(kMsgProcessStops);
    for (const char* part : {"\"", currentPosition.key, "\" (", condition, ")"}) {
        text.append(part, part + std::char_traits<char>::length(part));
    }
    const std::wstring location = GetLineString(currentPosition.file, currentPosition.line, "");
    // The log line is all that is left of the request, so that it names the key.
    LogError(text.c_str(), location.c_str(), kErrJsonParse, /*throwIt=*/false);
    std::abort();
#endif
}

}  // namespace ca
