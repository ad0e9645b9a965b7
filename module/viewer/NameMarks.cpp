#include "module/viewer/NameMarks.h"

#include "module/viewer/ViewerText.h"
#include "records/scan/CertificateNames.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kMaxShownWords = 3;
constexpr int kMaxWord = 60;  // characters of a word in the sentence

struct Alphabet {
    QChar::Script script;
    ca::ViewerWord name;
};
constexpr Alphabet kAlphabets[] = {
    {QChar::Script_Latin, ca::ViewerWord::kLatin},
    {QChar::Script_Cyrillic, ca::ViewerWord::kCyrillic},
    {QChar::Script_Greek, ca::ViewerWord::kGreek},
};

bool IsOfWord(QChar c) {
    return c.isLetterOrNumber() || c.isMark();
}

// One bit an alphabet.
unsigned AlphabetsOf(QStringView word) {
    unsigned found = 0;
    for (const QChar c : word) {
        const auto* const row = std::ranges::find(kAlphabets, c.script(), &Alphabet::script);
        found |= c.isLetter() && row != std::end(kAlphabets) ? 1U << (row - kAlphabets) : 0U;
    }
    return found;
}

QString NamesOf(unsigned alphabets) {
    QStringList names;
    for (std::size_t i = 0; i < std::size(kAlphabets); ++i) {
        if ((alphabets & 1U << i) != 0) {
            names += ca::Word(kAlphabets[i].name);
        }
    }
    return names.join(", ");
}

// "Ивaнов" (Latin, Cyrillic)
QStringList MixedWords(const QString& text) {
    QStringList mixed;
    for (int at = 0; at < text.size();) {
        int end = at;
        while (end < text.size() && IsOfWord(text[end])) {
            ++end;
        }
        const unsigned alphabets = AlphabetsOf(QStringView(text).mid(at, end - at));
        if ((alphabets & (alphabets - 1)) != 0) {  // more than one
            const QString word = ca::LaidOut(text.mid(at, end - at), kMaxWord);
            mixed += QStringLiteral("\"%1\" (%2)").arg(word, NamesOf(alphabets));
        }
        at = std::max(end, at + 1);
    }
    return mixed;
}

// Whether \uXXXX stands for a character that does not show. A backslash of the text's own is
// doubled, where it could be taken for one of these.
bool HasEscapes(const QString& text) {
    const QRegularExpression escape(
        QStringLiteral("(?<!\\\\)(?:\\\\\\\\)*\\\\[uU][0-9A-Fa-f{]{4}"));
    return text.contains(escape);
}

}  // namespace

namespace ca {

QString NameMarks(const QString& shown) {
    QStringList marks;
    QStringList words = MixedWords(shown);
    if (const int left = words.size() - kMaxShownWords; left > 0) {
        words = words.mid(0, kMaxShownWords);
        words += MessageText(kMsgAndMore).replace('N', QString::number(left));
    }
    if (!words.isEmpty()) {
        marks += Word(ViewerWord::kMixedAlphabets) + words.join(", ");
    }
    if (HasEscapes(shown)) {
        marks += Word(ViewerWord::kHiddenCharacters);
    }
    return marks.join("\n");
}

}  // namespace ca
