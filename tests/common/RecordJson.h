#pragma once

#include "common/ISerializable.h"

#include <gtest/gtest.h>

#include <string>

/// The record as one compact JSON text.
inline std::string ToJsonText(const ca::ISerializable& record) {
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    record.ToJson(writer);
    return buffer.GetString();
}

/// Reads the record from a JSON text.
inline void FromJsonText(ca::ISerializable& record, const std::string& json) {
    ca::JsonDocument document;
    document.Parse<ca::kJsonParseFlags>(json.data(), json.size());
    ASSERT_FALSE(document.HasParseError()) << json;
    record.FromJson(document);
}
