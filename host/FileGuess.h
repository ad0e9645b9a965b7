#pragma once

#include "host/OtherKind.h"

#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// The operations that describe what a file holds.
enum class Description : std::uint8_t { kCertificate, kCrl, kSignature, kEnvelope };

/// "mode" of the operation.
std::uint32_t ModeOf(Description description);

/// How to have a file described.
struct FileGuess {
    /// All descriptions, the likeliest first.
    std::vector<Description> order;
    /// What the file seems to be when no operation describes it; null for nothing known.
    const OtherKind* other = nullptr;
};

/// Judges a file by the label of its first PEM block and by the first members of its first object.
/// Reads no further; what the file really is, the module says. Cost: unwrapping PEM or Base64.
FileGuess GuessFile(std::string& content);

}  // namespace host
