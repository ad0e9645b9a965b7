#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds `cmhost call`: one request, one answer. \param exitCode  set when the command has run.
void AddCallCommand(CLI::App& program, int& exitCode);

}  // namespace host
