#include "os/termination.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace veldra {

namespace {

constexpr std::array termination_signals{SIGTERM, SIGHUP, SIGINT};

/// All that a signal handler can reach. Handlers are not inherited by programs that are started
/// from here, as blocked signals would be.
std::atomic<int> writing_end{-1};
static_assert(std::atomic<int>::is_always_lock_free);

void put_request(int signal) {
    const auto request = static_cast<char>(signal);
    // A full pipe holds requests enough.
    [[maybe_unused]] const ssize_t ignored = ::write(writing_end, &request, sizeof request);
}

void note_request(int signal) {
    const int error = errno;
    put_request(signal);
    errno = error;
}

bool has_handler(int signal, void (*handler)(int)) {
    struct sigaction present {};
    return ::sigaction(signal, nullptr, &present) == 0 && present.sa_handler == handler;
}

void handle(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationRequests::TerminationRequests(Ignored ignored) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) == 0) {
        reading_end_ = ends[0];
        writing_end = ends[1];
        for (const int signal : termination_signals) {
            if (ignored == Ignored::taken || !has_handler(signal, SIG_IGN)) {
                handle(signal, note_request);
            }
        }
    }
}

TerminationRequests::~TerminationRequests() {
    if (reading_end_ >= 0) {
        for (const int signal : termination_signals) {
            if (has_handler(signal, note_request)) {
                handle(signal, SIG_DFL);
            }
        }
        ::close(writing_end.exchange(-1));
        ::close(reading_end_);
    }
}

int TerminationRequests::wait() const {
    pollfd waiting{reading_end_, POLLIN, 0};
    char request = 0;
    while (::read(reading_end_, &request, sizeof request) != sizeof request) {
        ::poll(&waiting, 1, -1);
    }
    return request;
}

void TerminationRequests::wake() const {
    put_request(0);
}

void TerminationRequests::take() const {
    std::array<char, 64> requests{};
    while (::read(reading_end_, requests.data(), requests.size()) > 0) {
    }
}

}  // namespace veldra
