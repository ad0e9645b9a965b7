#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace ca {

/// The one exception type below the request dispatch; thrown and caught by value.
struct Exception {
    explicit Exception(std::uint32_t code, std::wstring text = {})
        : errorCode(code), message(std::move(text)) {}

    std::uint32_t errorCode;  ///< One of ErrorCodes.h; its text comes from GetErrorMessage().
    std::wstring message;     ///< Empty unless the thrower has more to say than the code.
};

}  // namespace ca
