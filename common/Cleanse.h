#pragma once

#include <cstring>
#include <string>

namespace ca {

/// Overwrites what a text holds, and what it held before it became shorter, so that no password stays
/// in memory that is given back; then it is empty. Not what earlier, smaller blocks of it held: who
/// fills a text with secrets reserves first.
template <class Char>
void CleanseText(std::basic_string<Char>& text) noexcept {
    text.resize(text.capacity());  // takes no memory
    ::explicit_bzero(text.data(), text.size() * sizeof(Char));
    text.clear();
}

}  // namespace ca
