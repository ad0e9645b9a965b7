#include "records/StringArray.h"

namespace ca {

void StringArray::FromJson(const JsonValue& value) {
    AppendArray(value);
}

void StringArray::ToJson(JsonWriter& writer) const {
    WriteArray(writer);
}

void StringArray2::FromJson(const JsonValue& value) {
    AppendJson(value, items);
}

void StringArray2::ToJson(JsonWriter& writer) const {
    WriteJson(writer, items);
}

}  // namespace ca
