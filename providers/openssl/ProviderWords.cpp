#include "providers/openssl/ProviderWords.h"

#include "common/BothLanguages.h"

#include <cstddef>

namespace {

constexpr ca::BothLanguages kRows[] = {
#define CA_WORDS(name, english, russian) {english, russian},
#include "providers/openssl/ProviderWords.inc"
#undef CA_WORDS
};

}  // namespace

namespace ca {

const wchar_t* Say(Words words) noexcept {
    return kRows[static_cast<std::size_t>(words)].Text();
}

}  // namespace ca
