#include "common/Json.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Log.h"

#include <cstdlib>
#include <string>

namespace {

thread_local ca::JsonPosition currentPosition{"", 0, ""};

}  // namespace

namespace ca {

void SetJsonPosition(const JsonPosition& position) noexcept {
    currentPosition = position;
}

void JsonTypeFault(const char* condition) {
#ifdef MOD_FOO_REPORT_JSON_TYPES
    static_cast<void>(condition);
    throw Exception(kErrJsonParse);
#else
    std::wstring text = L"wrong JSON type of \"";
    for (const char* part : {currentPosition.key, "\": ", condition}) {
        text.append(part, part + std::char_traits<char>::length(part));
    }
    const std::wstring location = GetLineString(currentPosition.file, currentPosition.line, "");
    LogError(text.c_str(), location.c_str(), kErrJsonParse, /*throwIt=*/false);
    std::abort();
#endif
}

}  // namespace ca
