#include "records/text/TeletexText.h"

#include "common/Lazy.h"

#include <QString>

#include <array>
#include <cstddef>
#include <iterator>

namespace {

using Octets = std::span<const unsigned char>;

// Combining characters of the accents of T.61, 0xC1 to 0xCF; 0 where there is none, or none that
// letters are composed with.
constexpr char16_t kAccents[] = {0x0300, 0x0301, 0x0302, 0x0303, 0x0304, 0x0306, 0x0307, 0x0308,
                                 0,      0x030A, 0x0327, 0,      0x030B, 0x0328, 0x030C};
constexpr unsigned char kFirstAccent = 0xC1;
constexpr std::size_t kLetters = 'z' - 'A' + 1;

// The other characters of its upper half from 0xA0 on, by rows of 16; 0 for none.
constexpr char16_t kUpperHalf[] =
    u"\u00A0\u00A1\u00A2\u00A3$\u00A5#\u00A7\u00A4\0\0\u00AB\0\0\0\0"
    u"\u00B0\u00B1\u00B2\u00B3\u00D7\u00B5\u00B6\u00B7\u00F7\0\0\u00BB\u00BC\u00BD\u00BE\u00BF"
    u"\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
    u"\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
    u"\u2126\u00C6\u0110\u00AA\u0126\0\u0132\u013F\u0141\u00D8\u0152\u00BA\u00DE\u0166\u014A\u0149"
    u"\u0138\u00E6\u0111\u00F0\u0127\u0131\u0133\u0140\u0142\u00F8\u0153\u00DF\u00FE\u0167\u014B";
constexpr unsigned char kFirstUpper = 0xA0;
static_assert(std::size(kUpperHalf) == 0x100 - kFirstUpper);

bool IsSmall(unsigned char c) {
    return c >= 'a' && c <= 'z';
}
bool IsCapital(unsigned char c) {
    return c >= 'A' && c <= 'Z';
}

// In T.61 an accent stands before the letter that it belongs to.
bool IsAccent(unsigned char c) {
    return c >= kFirstAccent && c < kFirstAccent + std::size(kAccents);
}

// Each letter with each accent; 0 where there is no such character.
using Composed = std::array<std::array<char16_t, kLetters>, std::size(kAccents)>;

Composed MakeComposed() {
    // Composed by Qt once: no table of some hundred letters has to be kept right by hand.
    Composed table{};
    for (std::size_t accent = 0; accent < table.size(); ++accent) {
        for (char letter = 'A'; letter <= 'z'; ++letter) {
            const QChar pair[] = {QLatin1Char(letter), kAccents[accent]};
            const QString composed =
                QString(pair, std::size(pair)).normalized(QString::NormalizationForm_C);
            table[accent][static_cast<std::size_t>(letter - 'A')] =
                composed.size() == 1 ? composed[0].unicode() : u'\0';
        }
    }
    return table;
}

ca::CLazy<Composed> composedLetters(&MakeComposed);

// The letter with the accent that the octet in front of it is; 0 when there is none.
wchar_t Compose(unsigned char accent, unsigned char letter) {
    const bool isLetter = IsSmall(letter) || IsCapital(letter);
    return isLetter ? composedLetters.Get()[accent - kFirstAccent][letter - 'A'] : wchar_t{0};
}

// True when a capital letter of Latin-1 at `i` would be odd: inside a word, "m\u00C8u" or
// "M\u00C8u", or before "Ub". There is a letter after it.
bool IsNoCapital(Octets octets, std::size_t i) {
    const unsigned char before = i > 0 ? octets[i - 1] : '\0';
    const unsigned char after = i + 2 < octets.size() ? octets[i + 2] : '\0';
    return IsSmall(before) || (IsCapital(before) && IsSmall(octets[i + 1])) ||
           (IsCapital(octets[i + 1]) && IsSmall(after));
}

// The text as T.61; empty when it is not that, or might as well be Latin-1.
std::wstring ReadT61(Octets octets) {
    std::wstring text;
    bool isPlain = false;
    for (std::size_t i = 0; i < octets.size(); ++i) {
        wchar_t c = octets[i];
        if (IsAccent(octets[i]) && i + 1 < octets.size()) {
            isPlain = isPlain || IsNoCapital(octets, i);
            c = Compose(octets[i], octets[i + 1]);
            ++i;
        } else if (octets[i] >= 0x80) {
            c = octets[i] >= kFirstUpper ? kUpperHalf[octets[i] - kFirstUpper] : u'\0';
        }
        if (c == 0) {
            return {};
        }
        text += c;
    }
    return isPlain ? text : std::wstring();
}

}  // namespace

namespace ca {

std::wstring ReadTeletex(Octets octets) {
    std::wstring text = ReadT61(octets);
    // Latin-1 is what most writers of this type put there.
    if (text.empty()) {
        text.assign(octets.begin(), octets.end());
    }
    return text;
}

}  // namespace ca
