#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds "store" to the program.
void AddStoreCommand(CLI::App& program, int& exitCode);

}  // namespace host
