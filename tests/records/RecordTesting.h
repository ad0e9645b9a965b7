#pragma once

#include "common/Exception.h"
#include "common/Json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

/// A parsed text; the test fails when it is not JSON.
class ParsedJson {
  public:
    explicit ParsedJson(const std::string& text) {
        m_document.Parse<ca::kJsonParseFlags>(text.data(), text.size());
        EXPECT_FALSE(m_document.HasParseError()) << text.substr(0, 200);
    }
    ca::JsonDocument& operator*() { return m_document; }
    ca::JsonDocument* operator->() { return &m_document; }

  private:
    ca::JsonDocument m_document;
};

template <class Record>
std::string ToText(const Record& record) {
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    record.ToJson(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

inline std::string ToText(const ca::JsonValue& value) {
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

template <class Record>
void FromText(Record& record, const std::string& text) {
    ParsedJson parsed(text);
    record.FromJson(*parsed);
}

/// The code of the ca::Exception that the action throws, 0 when it throws none.
template <class Action>
std::uint32_t ErrorOf(Action&& action) {
    try {
        action();
    } catch (const ca::Exception& error) {
        return error.errorCode;
    }
    return 0;
}
