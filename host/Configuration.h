#pragma once

#include <optional>
#include <string>

namespace host {

/// The service configuration that the module would read, as far as this program looks into it.
struct Configuration {
    std::string path;                     ///< "" when there is none
    std::string content;                  ///< "" when it cannot be read
    std::string fault;                    ///< why it cannot be read; "" when it can
    std::optional<std::string> language;  ///< its `Language`, if it has that key
};

/// \param given  the file that the user names; "" for the one that the module finds by itself.
/// Throws CHostError (usage) when a given one cannot be read.
Configuration FindConfiguration(const std::string& given);

/// The one rule for the language of texts, the module's and this program's: `option` ("ru", "en"),
/// or for "" what the configuration names, or else the environment's locale.
bool IsRussian(const std::string& option, const Configuration& configuration);

/// Whether a module that reads this configuration speaks Russian.
bool MakesRussian(const Configuration& configuration);

}  // namespace host
