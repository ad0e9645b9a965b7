#include "host/StandardStreams.h"

#include "host/HostError.h"
#include "host/ProgressBar.h"
#include "host/Terminal.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

[[noreturn]] void Fail(const std::FILE* stream) {
    throw host::CHostError(host::kExitUsage,
                           std::string("cannot write to the standard ") +
                               (stream == stderr ? "error" : "output") +
                               (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
}

}  // namespace

namespace host {

void PrepareStandardStreams() {
    // A file that is opened later would take the number of a closed stream, and get the program's
    // output.
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(number, F_GETFD) < 0 && errno == EBADF) {
            // The wrong way round: using it fails as using a closed one does.
            ::open("/dev/null", number == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
    // Writing then fails with an error that is told, instead of ending the program unsaid.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void Put(std::string_view text, std::FILE* stream) {
    if (std::fwrite(text.data(), 1, text.size(), stream) != text.size()) {
        Fail(stream);
    }
}

void Flush(std::FILE* stream) {
    errno = 0;
    if (std::fflush(stream) != 0 || std::ferror(stream) != 0) {
        Fail(stream);
    }
}

void Note(const std::string& text) {
    const std::string line =
        std::string(CProgressBar::Erase()) + "cmhost: " + Harmless(text) + "\n";
    // Its failing is not told: nobody reads that stream.
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace host
