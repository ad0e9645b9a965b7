#include "records/StringArray.h"

#include "records/JsonFields.h"

namespace {

void WriteTexts(ca::JsonWriter& writer, const std::vector<std::wstring>& texts) {
    writer.StartArray();
    for (const std::wstring& text : texts) {
        ca::WriteJson(writer, text);
    }
    writer.EndArray();
}

}  // namespace

namespace ca {

void StringArray::FromJson(const JsonValue& value) {
    AppendJson(value, items);
}

void StringArray::ToJson(JsonWriter& writer) const {
    WriteTexts(writer, items);
}

void StringArray2::FromJson(const JsonValue& value) {
    AppendJson(value, items);
}

void StringArray2::ToJson(JsonWriter& writer) const {
    WriteTexts(writer, items);
}

}  // namespace ca
