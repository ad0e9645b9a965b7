#include "host/ModeTable.h"

#include "host/Suggestion.h"
#include "mod_foo_codes.h"

#include <algorithm>
#include <charconv>
#include <strings.h>
#include <vector>

namespace {

// The module's own list (module/Modes.h), so that both cannot differ.
constexpr host::ModeRow kModes[] = {
#define CMHOST_MODE(number, name, gated, english, russian) \
    {number, name, (gated) != 0, english, russian},
    CM_MODES(CMHOST_MODE)
#undef CMHOST_MODE
};

}  // namespace

namespace host {

std::span<const ModeRow> AllModes() {
    return kModes;
}

std::optional<std::uint32_t> ModeByName(std::string_view nameOrNumber) {
    // A number, even one that no row has; then a name in whatever case.
    std::uint32_t number = 0;
    const char* const last = nameOrNumber.data() + nameOrNumber.size();
    const auto [end, error] = std::from_chars(nameOrNumber.data(), last, number);
    if (error == std::errc() && end == last) {
        return number;
    }
    const auto* const row = std::ranges::find_if(kModes, [nameOrNumber](const ModeRow& mode) {
        return !mode.name.empty() && mode.name.size() == nameOrNumber.size() &&
               ::strncasecmp(mode.name.data(), nameOrNumber.data(), mode.name.size()) == 0;
    });
    return row != std::end(kModes) ? std::optional(row->number) : std::nullopt;
}

std::string NoSuchMode(const std::string& name) {
    std::vector<std::string> names;
    for (const ModeRow& mode : kModes) {
        if (!mode.name.empty()) {
            names.emplace_back(mode.name);
        }
    }
    return "there is no operation \"" + name + "\"" + DidYouMean(name, names);
}

std::string NameMode(std::uint32_t mode) {
    const auto* const row = std::ranges::find(kModes, mode, &ModeRow::number);
    const bool isNamed = row != std::end(kModes) && !row->name.empty();
    return "mode " + std::to_string(mode) + (isNamed ? " (" + std::string(row->name) + ")" : "");
}

}  // namespace host
