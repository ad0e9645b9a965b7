#pragma once

#include <stdexcept>
#include <string>

namespace host {

/// What the program ends with.
enum ExitCode : int {
    kExitDone = 0,          ///< Answered, and every "errorCode" is 0.
    kExitAnsweredBad = 1,   ///< An answer carries an error code or is none.
    kExitUsage = 2,         ///< Wrong command line, or a file that cannot be read or written.
    kExitNoModule = 3,      ///< The module does not load.
    kExitNoDisplay = 4,     ///< A window cannot be opened.
    kExitModuleFailed = 5,  ///< The module took the process down, or did not answer in time.
};

/// A failure of the program's own, with the exit code it ends in. what() is one UTF-8 sentence.
class CHostError : public std::runtime_error {
  public:
    CHostError(ExitCode code, const std::string& text) : std::runtime_error(text), m_code(code) {}

    ExitCode GetExitCode() const { return m_code; }

  private:
    ExitCode m_code;
};

}  // namespace host
