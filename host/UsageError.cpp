#include "host/UsageError.h"

#include "host/ModeTable.h"
#include "host/Suggestion.h"
#include "host/Terminal.h"

#include <algorithm>
#include <unistd.h>
#include <vector>

namespace {

bool IsOption(const std::string& word) {
    return word.size() > 1 && word.front() == '-';
}

bool IsFile(const std::string& word) {
    return ::access(word.c_str(), F_OK) == 0;
}

std::string NoSuchOption(const CLI::App& app, const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    // With the value an option is not in the list.
    std::vector<std::string> names;
    for (const CLI::Option* const option : app.get_options()) {
        for (const std::string& each : option->get_lnames()) {
            names.push_back("--" + each);
        }
    }
    if (std::ranges::find(names, name) != names.end()) {
        return name + " belongs after " + app.get_name();
    }
    std::string meant = host::DidYouMean(name, names);
    // A file whose name begins with a hyphen.
    if (meant.empty() && IsFile(word)) {
        meant = "; a file of that name is ./" + word;
    }
    return (app.get_parent() != nullptr ? app.get_name() + " has" : "there is") +
           std::string(" no option ") + name + meant;
}

std::string NoSuchCommand(const CLI::App& program, const std::string& word) {
    std::vector<std::string> names;
    for (const CLI::App* const command : program.get_subcommands({})) {
        names.push_back(command->get_name());
    }
    std::string meant = host::DidYouMean(word, names);
    // An operation, or a file, was typed where a command belongs.
    if (meant.empty() && host::ModeByName(word)) {
        meant = "; did you mean cmhost call " + word + "?";
    } else if (meant.empty() && IsFile(word)) {
        meant = "; did you mean cmhost describe " + word + "?";
    }
    return "there is no command \"" + word + "\"" + meant;
}

// What was typed and has no meaning is told before what is missing: most often it was meant for
// that.
std::string Sentence(const CLI::App& program, const CLI::App& command,
                     const CLI::ParseError& error) {
    // The library names the first fault it meets, which is often that something is missing.
    const std::vector<std::string> words = program.remaining(/*recurse=*/true);
    const auto option = std::ranges::find_if(words, IsOption);
    if (&command == &program) {
        const auto name = std::ranges::find_if_not(words, IsOption);
        if (name != words.end()) {
            return NoSuchCommand(program, *name);
        }
    }
    if (option != words.end()) {
        return NoSuchOption(command, *option);
    }
    if (!words.empty()) {
        return command.get_name() + " takes no further argument \"" + words.front() + "\"";
    }
    return error.what();
}

}  // namespace

namespace host {

std::string UsageErrorText(const CLI::App& program, const CLI::ParseError& error) {
    const std::vector<CLI::App*> parsed = program.get_subcommands();
    const CLI::App& command = parsed.empty() ? program : *parsed.front();
    return "cmhost: " + Harmless(Sentence(program, command, error)) + "\n`cmhost " +
           (parsed.empty() ? "" : command.get_name() + " ") + "--help` tells more.\n";
}

}  // namespace host
