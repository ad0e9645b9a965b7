#include "host/JsonEvents.h"

#include "common/Encode.h"
#include "host/Terminal.h"

namespace {

// Takes the text of a root that is a string.
class RootString : public host::CJsonEvents {
  public:
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        if (GetDepth() == 0) {
            value = std::string(text, length);
        }
        return true;
    }

    std::optional<std::string> value;
};

}  // namespace

namespace host {

std::string QuoteJson(std::string_view text) {
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    // Through the wide form, so that octets that are not UTF-8 do not break the line of JSON.
    writer.String(ca::u16u8(ca::u8u16(std::string(text))));
    return EscapeHidden({buffer.GetString(), buffer.GetSize()});
}

std::string FileMembers(const std::string& path) {
    std::string members = "\"file\":" + QuoteJson(path);
    // A name that is not UTF-8 cannot stand in JSON: its octets go beside it.
    if (ca::u16u8(ca::u8u16(path)) != path) {
        std::string octets;
        ca::Base64Encode(reinterpret_cast<const unsigned char*>(path.data()),
                         static_cast<unsigned>(path.size()), octets);
        members += ",\"fileBase64\":\"" + octets + "\"";
    }
    return members;
}

bool IsJson(std::string_view text) {
    CJsonEvents events;
    return ReadJsonEvents(text, events).empty();
}

std::optional<std::string> UnquoteJson(std::string_view json) {
    RootString root;
    return ReadJsonEvents(json, root).empty() ? root.value : std::nullopt;
}

}  // namespace host
