#include "module/CryptoModule.h"

#include <algorithm>
#include <iterator>

const CCryptoModule::CModeRow CCryptoModule::kModes[] = {
#define CA_MODE(number, name, gate, english, russian) \
    {number, L"> " #name, &CCryptoModule::name, gate},
#define CA_MODE_EMPTY(number, gate, english, russian) {number, nullptr, nullptr, gate},
#include "module/ModeTable.inc"
#undef CA_MODE_EMPTY
#undef CA_MODE
};

const CCryptoModule::CModeRow* CCryptoModule::FindMode(int mode) noexcept {
    // The rows stand by ascending number, which a test holds them to.
    const CModeRow* row = std::ranges::lower_bound(kModes, mode, {}, &CModeRow::mode);
    return row != std::end(kModes) && row->mode == mode ? row : nullptr;
}
