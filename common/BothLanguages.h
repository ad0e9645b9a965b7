#pragma once

#include "common/Lng.h"

namespace ca {

/// A text in both languages: a row of a table of texts.
struct BothLanguages {
    const wchar_t* english;
    const wchar_t* russian;

    /// In the current language; static.
    const wchar_t* Text() const noexcept { return IsRussian() ? russian : english; }
};

}  // namespace ca
