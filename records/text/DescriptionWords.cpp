#include "records/text/DescriptionWords.h"

#include "common/BothLanguages.h"
#include "common/DecimalText.h"
#include "common/Lng.h"

namespace {

constexpr ca::BothLanguages kWords[] = {
#define CA_WORD(name, english, russian) {english, russian},
#include "records/text/DescriptionWords.inc"
#undef CA_WORD
};

}  // namespace

namespace ca {

const wchar_t* WordText(Word word) noexcept {
    return kWords[static_cast<std::size_t>(word)].Text();
}

std::wstring OctetsCountText(std::size_t count) {
    // Russian counts 2 to 4, and numbers that end in them, in another case; 12 to 14 not.
    const auto isFew = [](std::size_t last) { return last >= 2 && last <= 4; };
    const bool isTeen = count % 100 >= 11 && count % 100 <= 14;
    Word unit = count == 1 ? Word::kOctet : Word::kOctets;
    if (IsRussian() && isFew(count % 10) && !isTeen) {
        unit = Word::kFewOctets;
    }
    return DecimalText(count) + L' ' + WordText(unit);
}

}  // namespace ca
