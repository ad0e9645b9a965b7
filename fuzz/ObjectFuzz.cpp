// Strangers' octets as objects of any kind: recognised, described, written as JSON.

#include "common/Json.h"
#include "common/Lng.h"
#include "records/Payload.h"
#include "records/objects/ObjectList.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

// Characters that an octet may become, and what the keys and a few texts take at the least.
constexpr std::size_t kTextPerOctet = 4096;
constexpr std::size_t kTextOfKeys = 65536;
constexpr std::size_t kDescribed = 8;  // objects of one payload

// Names the property that does not hold and stops.
void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", property);
        std::abort();
    }
}

// A description may be of more than one line, nothing else steers where it is shown.
void CheckFields(const std::vector<ca::DescriptionField>& fields) {
    for (const ca::DescriptionField& field : fields) {
        Require(std::ranges::all_of(
                    field.text, [](wchar_t c) { return c == L'\n' || (c >= 0x20 && c != 0x7F); }),
                "texts hold no control characters");
        Require(field.form != ca::FieldForm::kObject || field.kind != nullptr,
                "an object has a kind");
        CheckFields(field.fields);
    }
}

void Describe(const ca::PlacedObject& object, std::size_t size) {
    if (object.kind == nullptr) {
        return;
    }
    const ca::ObjectDescription description = ca::DescribeObject(*object.kind, object.source);
    CheckFields(description.fields);
    ca::JsonBuffer text;
    ca::JsonWriter writer(text);
    description.ToJson(writer);
    Require(text.GetSize() <= kTextOfKeys + size * kTextPerOctet, "the text is bounded");
    ca::JsonDocument read;
    read.Parse<ca::kJsonParseFlags | rapidjson::kParseValidateEncodingFlag>(text.GetString(),
                                                                            text.GetSize());
    Require(!read.HasParseError(), "it is JSON of valid UTF-8");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const wchar_t* language : {L"en", L"ru"}) {
        SetZORNALng(language);
        std::vector<unsigned char> payload(data, data + size);
        const std::vector<ca::PayloadItem> items = ca::DecodePayload(payload);
        const ca::ObjectList list = ca::ListObjects(items, kDescribed);
        for (const ca::PlacedObject& object : list.objects) {
            Require(object.offset + object.source.octets.size() <= items[object.item].octets.size(),
                    "an object stands inside its item");
            Describe(object, size);
        }
    }
    return 0;
}
