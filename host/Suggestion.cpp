#include "host/Suggestion.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <limits>
#include <utility>

namespace {

constexpr std::size_t kLongestWord = 64;  // bounds the square of the lengths
// Fewer letters begin too many names.
constexpr std::size_t kShortestBeginning = 3;

bool SameLetter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
}

// The optimal string alignment distance, three rows of its table at a time.
// Characters to insert, drop, replace or swap with their neighbour to make one word of the other.
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::swap(beforeLast, last);
        std::swap(last, row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = SameLetter(a[i - 1], b[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && SameLetter(a[i - 1], b[j - 2]) &&
                SameLetter(a[i - 2], b[j - 1])) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return row[b.size()];
}

bool IsBeginning(std::string_view word, std::string_view candidate) {
    return word.size() >= kShortestBeginning && word.size() <= candidate.size() &&
           std::equal(word.begin(), word.end(), candidate.begin(), SameLetter);
}

}  // namespace

namespace host {

std::string DidYouMean(std::string_view word, const std::vector<std::string>& candidates) {
    // Typing errors are words; longer ones are something else.
    if (word.size() > kLongestWord) {
        return "";
    }
    std::size_t least = std::numeric_limits<std::size_t>::max();
    const std::string* nearest = nullptr;
    for (const std::string& candidate : candidates) {
        // A name that was not typed to its end is as near as one letter that is wrong.
        const std::size_t distance = IsBeginning(word, candidate) ? 1 : Distance(word, candidate);
        if (distance < least) {
            least = distance;
            nearest = &candidate;
        }
    }
    // A third of the letters may be wrong, one of a short word.
    const bool isNear = nearest != nullptr && least * 3 <= std::max<std::size_t>(word.size(), 3);
    return isNear ? "; did you mean " + *nearest + "?" : "";
}

}  // namespace host
