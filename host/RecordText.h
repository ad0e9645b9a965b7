#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

/// How records are laid out for people.
struct RecordTextOptions {
    std::size_t width = 80;   ///< columns of a line; at least 40 are used
    bool russian = false;     ///< labels; the values are in the module's language
    bool isEnvelope = false;  ///< the certificates name who can read a message
    /// The text is a description (ca::ObjectDescription), not an answer.
    bool isDescription = false;
    /// Of the lists' entries those of one serial number were asked for.
    bool isSelection = false;
};

/// The records of an answer as indented text, UTF-8: a line for each member with its label, values
/// aligned and folded; extensions with their texts. Other forms of what is shown and octets are
/// left out, hexadecimal numbers longer than any digest are cut to the line. Nothing in the text
/// steers a terminal, whatever the answer holds. Without a line feed at the end. \param answer  the
/// JSON text of a proper answer. Records nested deeper than any provider nests them are left out.
std::string RecordText(std::string_view answer, const RecordTextOptions& options);

}  // namespace host
