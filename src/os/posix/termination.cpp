#include "os/termination.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace veldra {

namespace {

constexpr std::array termination_signals{SIGTERM, SIGHUP, SIGINT};

/// All that a signal handler can reach. Handlers are not inherited by programs that are started
/// from here, as blocked signals would be.
std::atomic<int> writing_end{-1};
static_assert(std::atomic<int>::is_always_lock_free);

void note_request(int /*signal*/) {
    const int error = errno;
    constexpr char request = 1;
    // A full pipe holds requests enough.
    [[maybe_unused]] const ssize_t ignored = ::write(writing_end, &request, sizeof request);
    errno = error;
}

void handle_signals(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    for (const int signal : termination_signals) {
        ::sigaction(signal, &action, nullptr);
    }
}

}  // namespace

TerminationRequests::TerminationRequests() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) == 0) {
        reading_end_ = ends[0];
        writing_end = ends[1];
        handle_signals(note_request);
    }
}

TerminationRequests::~TerminationRequests() {
    if (reading_end_ >= 0) {
        handle_signals(SIG_DFL);
        ::close(writing_end.exchange(-1));
        ::close(reading_end_);
    }
}

void TerminationRequests::take() const {
    std::array<char, 64> requests{};
    while (::read(reading_end_, requests.data(), requests.size()) > 0) {
    }
}

}  // namespace veldra
