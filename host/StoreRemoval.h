#pragma once

#include <string>
#include <vector>

namespace host {

/// The files of a store's directory that go with a certificate.
struct StoreRemoval {
    std::vector<std::string> certificates;  ///< paths; each holds it, and nothing else
    std::vector<std::string> keys;          ///< of its key alone, beside such a file under its name
    std::string mixed;                      ///< a file that holds it among others; "" for none
};

/// Looks for a certificate in a directory. \param id  SHA-1 of its encoding, small hex digits.
StoreRemoval PlanRemoval(const std::string& directory, const std::string& id);

}  // namespace host
