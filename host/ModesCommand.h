#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds `cmhost modes`: the table of operations. \param exitCode  set when the command has run.
void AddModesCommand(CLI::App& program, int& exitCode);

}  // namespace host
