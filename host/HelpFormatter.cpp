#include "host/HelpFormatter.h"

#include <cstddef>
#include <sstream>

namespace {

// As manual pages are folded; the terminal's width would make help differ from run to run.
constexpr std::size_t kColumns = 80;

// ASCII text in lines of at most `width` columns.
std::string Fold(const std::string& text, std::size_t width) {
    std::istringstream words(text);
    std::string folded;
    std::size_t used = 0;
    for (std::string word; words >> word;) {
        const bool fits = used + 1 + word.size() <= width;
        folded += used == 0 ? "" : fits ? " " : "\n";
        used = word.size() + (used != 0 && fits ? used + 1 : 0);
        folded += word;
    }
    return folded;
}

}  // namespace

namespace host {

std::string CHelpFormatter::make_option_opts(const CLI::Option* option) const {
    // The library would print the type of a flag, too.
    if (option->get_type_size() == 0) {
        return "";  // a flag
    }
    const bool isList = option->get_expected_max() == CLI::detail::expected_max_vector_size;
    return " " + option->get_type_name() + (isList ? " ..." : "");
}

std::string CHelpFormatter::make_option_desc(const CLI::Option* option) const {
    return Fold(option->get_description(), kColumns - get_column_width());
}

}  // namespace host
