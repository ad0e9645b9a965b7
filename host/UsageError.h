#pragma once

#include <CLI/App.hpp>

#include <string>

namespace host {

/// What is wrong with a command line, in a sentence for the user that names what was meant as far
/// as that can be told, and, in a line of its own, where to read on.
std::string UsageErrorText(const CLI::App& program, const CLI::ParseError& error);

}  // namespace host
