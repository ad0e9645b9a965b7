#pragma once

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <string>

namespace host {

/// Lays the help out for a terminal of 80 columns. What an option takes stands after its name;
/// what it requires or excludes is for its description to say.
class CHelpFormatter : public CLI::Formatter {
  public:
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_option_desc(const CLI::Option* option) const override;
};

}  // namespace host
