#include "providers/openssl/ProviderWords.h"

#include "common/Lng.h"

#include <cstddef>

namespace {

struct Row {
    const wchar_t* english;
    const wchar_t* russian;
};

constexpr Row kRows[] = {
#define CA_WORDS(name, english, russian) {english, russian},
#include "providers/openssl/ProviderWords.inc"
#undef CA_WORDS
};

}  // namespace

namespace ca {

const wchar_t* Say(Words words) noexcept {
    const Row& row = kRows[static_cast<std::size_t>(words)];
    return IsRussian() ? row.russian : row.english;
}

}  // namespace ca
