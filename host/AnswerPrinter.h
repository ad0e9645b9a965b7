#pragma once

#include "host/Answer.h"

#include <string>
#include <string_view>

namespace host {

/// The answer for people: indented JSON, as deep as makes sense (deeper levels stay at that
/// indentation), ended by a line feed.
/// \param longest  strings of more characters than this are cut, with a note of their length; 0
///                 cuts none.
/// A text that is not JSON comes as it is, made visible and cut.
std::string PrettyAnswer(const CAnswer& answer, std::size_t longest);

/// The same with members in front of the answer's own; always JSON, an improper answer as in
/// LineAnswer().
/// \param members  as JSON has them between the braces; not empty
std::string PrettyAnswer(const CAnswer& answer, const std::string& members);
/// The same for a text that is JSON.
std::string PrettyJson(std::string_view json, std::size_t longest);

/// The answer as one line of JSON, without line feed. An improper one becomes an object
/// {"hostError": reason, "answer": text} of the same line.
std::string LineAnswer(const CAnswer& answer);

/// {"hostError": reason}: stands for an answer that there is none of.
std::string LineError(std::string_view reason);

/// A JSON object with members in front of its own; both not empty.
std::string WithMembers(const std::string& members, std::string_view object);

/// "64 octets: 00 01 02 ...": what a terminal is told of raw octets.
std::string SummariseOctets(std::span<const unsigned char> octets);

}  // namespace host
