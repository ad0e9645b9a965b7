#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds `cmhost describe`: says what files hold. \param exitCode  set when the command has run.
void AddDescribeCommand(CLI::App& program, int& exitCode);

}  // namespace host
