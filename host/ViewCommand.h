#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds `cmhost view`: shows files in the module's viewer.
/// \param exitCode  set when the command has run.
void AddViewCommand(CLI::App& program, int& exitCode);

}  // namespace host
