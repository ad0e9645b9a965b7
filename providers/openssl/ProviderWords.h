#pragma once

#include <cstdint>

namespace ca {

/// The rows of ProviderWords.inc.
enum class Words : std::uint8_t {
#define CA_WORDS(name, english, russian) name,
#include "providers/openssl/ProviderWords.inc"
#undef CA_WORDS
};

/// In the current language; static.
const wchar_t* Say(Words words) noexcept;

}  // namespace ca
