#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace host {

/// One operation of the module interface.
struct ModeRow {
    std::uint32_t number;  ///< "mode" of a request
    std::string_view name;
    bool gated;  ///< Uses a private key or shows a window: needs an interactive request or the
                 ///< configuration's AllowServicePrivateKeyAccess.
    std::string_view english;  ///< what it does
    std::string_view russian;
};

/// All operations by ascending number.
std::span<const ModeRow> AllModes();

/// The number of an operation given by name (letter case does not count) or by any number, also one
/// without a row: what to do with that is for the module to say. Nothing for anything else.
std::optional<std::uint32_t> ModeByName(std::string_view nameOrNumber);

/// "there is no operation ...", with the one that was meant, if that can be told.
std::string NoSuchMode(const std::string& name);

/// "mode 38 (EnumCerts)".
std::string NameMode(std::uint32_t mode);

}  // namespace host
