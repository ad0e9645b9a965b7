#pragma once

#include "host/Answer.h"
#include "host/ModuleOptions.h"
#include "host/Request.h"

#include <CLI/App.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace host {

/// What the commands that sign, verify and fill stores have in common: a provider whose results are
/// real, a user's own request, and parameters of the call.
struct CallParameters {
    CallParameters() { module.provider = "openssl"; }

    /// Adds the options to a command.
    void AddTo(CLI::App& command, bool withPassword);
    /// A builder with the mode of this name, the client and the parameters in it. Throws CHostError
    /// (usage) for a password file that cannot be read.
    CRequestBuilder Begin(std::string_view mode) const;
    /// Adds a parameter for the call.
    void Add(const std::string& name, const std::string& value);

    ModuleOptions module;
    std::string passwordFile;  ///< "" for none
    std::vector<std::string> params;
};

/// Asks, as an interactive user's own request. For an answer with an error code, or none, what is
/// wrong is on the standard error.
CAnswer AskAsUser(const CLoadedModule& module, const CRequestBuilder& builder,
                  const std::string* payload, std::string_view name);

/// "storeAddress" of a store: "MY", or "sslm:Root" with its location; "" for none.
std::string StoreJson(const std::string& store);

}  // namespace host
