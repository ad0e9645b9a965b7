#include "records/SerializableContainer.h"

#include "common/Encode.h"
#include "records/FileData.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <limits>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>

namespace {

// Indexed by the type number.
constexpr const char* kRecordKeys[] = {
#define CA_RECORD(name, type, key, json, meaning) key,
#include "common/RecordTable.inc"
#undef CA_RECORD
};

constexpr std::string_view kPayloadName = "fileData";
constexpr std::string_view kSizeHintRest = "EncodedSize\":";
constexpr std::string_view kPayloadOpening = "fileData\":\"";

// The number that `digits` begins with, read as strtol does; none for a number that is not
// positive or does not fit.
std::optional<std::size_t> ReadSizeHint(std::string_view digits) {
    const std::size_t start = digits.find_first_not_of(" \t\n\v\f\r");
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    digits.remove_prefix(start + (digits[start] == '+' ? 1 : 0));
    long size = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), size);
    if (error != std::errc{} || size <= 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(size);
}

// Where the announced payload lies in the text.
struct PayloadPlace {
    std::size_t start;
    std::size_t size;
};

// The place that the size hint and the opening of "fileData" name, when its closing quote and at
// least one character more lie within the text's bounds. The payload itself is not looked at.
std::optional<PayloadPlace> FindPayload(std::string_view text) {
    // Not a JSON reader: hosts announce the size before the payload in this very form, and anything
    // else is left to the parser.
    const std::size_t name = text.find(kPayloadName);
    if (name == std::string_view::npos ||
        !text.substr(name + kPayloadName.size()).starts_with(kSizeHintRest)) {
        return std::nullopt;
    }
    const std::size_t digits = name + kPayloadName.size() + kSizeHintRest.size();
    const std::size_t comma = text.find(',', digits);
    if (comma == std::string_view::npos) {
        return std::nullopt;
    }
    const std::optional<std::size_t> size = ReadSizeHint(text.substr(digits, comma - digits));
    const std::size_t opening = text.find(kPayloadOpening, comma);
    if (!size || opening == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t start = opening + kPayloadOpening.size();
    const std::size_t left = text.size() - start;
    // The size is a stranger's: compared by subtraction, so that no sum wraps.
    if (left < 2 || left - 2 < *size || text[start + *size] != '"' ||
        text.substr(0, start).find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    return PayloadPlace{start, *size};
}

// Decodes the payload in one pass over it; null when it does not decode or is not one string up
// to its end. Base64 itself ends at the first other character, which must not be one that ends or
// escapes the JSON string, or the text.
std::unique_ptr<ca::FileData> DecodePayload(std::string_view payload) {
    ca::BytePtr octets = ca::BytePtr::Make((payload.size() + 3) / 4 * 3);
    const Base64Run run = base64_decode_run(payload.data(), payload.size(), octets.Get());
    const std::string_view rest = payload.substr(run.consumed);
    const bool isOneString = std::all_of(rest.begin(), rest.end(), [](char character) {
        return character != '"' && character != '\\' && character != '\0';
    });
    if (!isOneString || run.written == 0 ||
        run.written > std::numeric_limits<std::uint32_t>::max()) {
        return nullptr;
    }
    auto fileData = std::make_unique<ca::FileData>();
    fileData->Adopt(std::move(octets), static_cast<std::uint32_t>(run.written));
    return fileData;
}

// Closes the text over the payload. The text ends with a NUL afterwards; the octets after its old
// end are not touched.
void CutOut(char* json, std::size_t length, const PayloadPlace& place) {
    // Moved in place: the request's buffer is the only copy of the text.
    char* target = json + place.start;
    const char* rest = target + place.size;
    const auto restBound = static_cast<std::size_t>(json + length - rest);
    const std::size_t restLength = ::strnlen(rest, restBound);
    std::memmove(target, rest, restLength);
    target[restLength] = '\0';
}

}  // namespace

namespace ca {

const char* RecordKey(int type) noexcept {
    const bool isListed = type >= 0 && static_cast<std::size_t>(type) < std::size(kRecordKeys);
    return isListed ? kRecordKeys[static_cast<std::size_t>(type)] : nullptr;
}

ISerializable* SerializableContainer::GetObj(int type) {
    // operator[] makes an empty entry, as GetObj() has always done; IsEmpty() looks past those.
    return m_records[type].get();
}

void SerializableContainer::SetObject(ISerializable* obj, bool clear) {
    // The container owns the record from here on, also when the map needs memory and does not get
    // it.
    std::unique_ptr<ISerializable> owner(obj);
    std::map<int, std::unique_ptr<ISerializable>> fresh;
    std::map<int, std::unique_ptr<ISerializable>>& target = clear ? fresh : m_records;
    if (owner != nullptr) {
        target[owner->GetType()] = std::move(owner);
    }
    if (clear) {
        m_records.swap(fresh);
    }
}

bool SerializableContainer::IsEmpty() const noexcept {
    return std::none_of(m_records.begin(), m_records.end(),
                        [](const auto& entry) { return entry.second != nullptr; });
}

void SerializableContainer::WriteTo(JsonWriter& writer, const ContainerForm& form) const {
    for (const auto& [type, record] : m_records) {
        const char* key = RecordKey(type);
        if (record == nullptr || key == nullptr) {
            continue;
        }
        // The data follow the JSON text as they are; only their size stands in it.
        if (type == kTypeFileData && form.rawFileData) {
            writer.Key("fileDataSize");
            writer.Uint(dynamic_cast<const FileData&>(*record).size());
            continue;
        }
        writer.Key(key);
        record->ToJson(writer);
        // Whether the signatures hold their content belongs to the list, which is an array in JSON.
        if (type == kTypeSignInfo) {
            writer.Key("isAttached");
            writer.Bool(form.isAttached);
        }
    }
}

bool SerializableContainer::PreParseFileData(char* json, std::size_t length) noexcept {
    if (json == nullptr) {
        return false;
    }
    const std::string_view text(json, length);
    const std::optional<PayloadPlace> place = FindPayload(text);
    if (!place) {
        return false;
    }
    try {
        std::unique_ptr<FileData> fileData = DecodePayload(text.substr(place->start, place->size));
        if (fileData == nullptr) {
            return false;
        }
        SetObject(fileData.release(), /*clear=*/true);
    } catch (const std::bad_alloc&) {
        // Without memory the text stays as it was, and the parser says what is wrong.
        return false;
    }
    CutOut(json, length, *place);
    return true;
}

}  // namespace ca
