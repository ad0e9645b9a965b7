#pragma once

#include <CLI/App.hpp>

namespace host {

/// Adds `cmhost asn1`: lists files of BER or DER. \param exitCode  set when the command has run.
void AddAsn1Command(CLI::App& program, int& exitCode);

}  // namespace host
