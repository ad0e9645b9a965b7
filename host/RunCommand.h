#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds `cmhost run`: a session of many requests. \param exitCode  set when the command has run.
void AddRunCommand(CLI::App& program, int& exitCode);

}  // namespace host
