#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds "verify" to the program.
void AddVerifyCommand(CLI::App& program, int& exitCode);

}  // namespace host
