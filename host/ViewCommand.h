#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds `cmhost view`: shows a file in the module's certificate viewer.
/// \param exitCode  set when the command has run.
void AddViewCommand(CLI::App& program, int& exitCode);

}  // namespace host
