#include "os/process.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

#include "os/posix/temporaries.h"
#include "os/system_error.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

void do_nothing(int /*signal*/) {}

/// A handler, unlike an ignored signal, is not handed on to programs that are started from here.
void set_aside(int signal) {
    struct sigaction action {};
    action.sa_handler = do_nothing;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

/// Opened the wrong way round, so that using the stream fails as it did.
void keep_taken(int stream) {
    if (::fcntl(stream, F_GETFD) >= 0 || errno != EBADF) {
        return;
    }
    const int handle = ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    if (handle >= 0 && handle != stream) {
        ::dup2(handle, stream);
        ::close(handle);
    }
}

void end_by(int signal) {
    // Never given back: nobody may make another temporary file now.
    const TemporariesHold hold;
    hold.clear_away();
    ::signal(signal, SIG_DFL);
    ::kill(::getpid(), signal);
    constexpr int ended_by_signal = 128;  // as shells tell it
    ::_exit(ended_by_signal + signal);
}

}  // namespace

void prepare_process() {
    set_aside(SIGPIPE);
    set_aside(SIGXFSZ);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        keep_taken(stream);
    }
}

std::size_t read_standard_input(char* buffer, std::size_t size) {
    while (true) {
        const ssize_t count = ::read(STDIN_FILENO, buffer, size);
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            throw file_error("Datei kann nicht gelesen werden", "/dev/stdin", errno);
        }
    }
}

CleanTermination::CleanTermination() {
    if (requests_.descriptor() >= 0) {
        waiting_ = std::thread([this] {
            const int signal = requests_.wait();
            if (signal > 0) {
                end_by(signal);
            }
        });
    }
}

CleanTermination::~CleanTermination() {
    if (waiting_.joinable()) {
        requests_.wake();
        waiting_.join();
    }
}

}  // namespace veldra
