#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds "sign" to the program.
void AddSignCommand(CLI::App& program, int& exitCode);

}  // namespace host
