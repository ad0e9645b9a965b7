#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace host {

/// Makes the standard streams safe to use; the first thing that main() does. A closed one becomes
/// one that fails, so that no file opened later takes its place, and a reader that went away or a
/// limit of file sizes is an error of the writing call instead of a signal.
void PrepareStandardStreams();

/// Writes text or octets. Throws CHostError (usage) with the system's reason.
void Put(std::string_view text, std::FILE* stream = stdout);
/// Brings what was written on its way. Throws CHostError (usage) with the system's reason, also
/// when an earlier write failed.
void Flush(std::FILE* stream = stdout);

/// One line for the user on the standard error, made visible: "cmhost: TEXT".
void Note(const std::string& text);

}  // namespace host
