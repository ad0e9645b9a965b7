#include "records/StringArray.h"

#include "records/JsonFields.h"

namespace {

void WriteTexts(ca::JsonWriter& writer, const std::vector<std::wstring>& texts) {
    for (const std::wstring& text : texts) {
        ca::WriteJson(writer, text);
    }
}

}  // namespace

namespace ca {

void StringArray::FromJson(const JsonValue& value) {
    AppendJson(value, items);
}

void StringArray::ToJson(JsonWriter& writer) const {
    writer.StartArray();
    WriteTexts(writer, items);
    more.ToJson(writer);
    writer.EndArray();
}

void StringArray2::FromJson(const JsonValue& value) {
    AppendJson(value, items);
}

void StringArray2::ToJson(JsonWriter& writer) const {
    writer.StartArray();
    WriteTexts(writer, items);
    writer.EndArray();
}

}  // namespace ca
