#pragma once

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <optional>
#include <stdexcept>
#include <system_error>

#include <sys/ptrace.h>
#include <sys/types.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veldra::testing_support {

/// Exit code of a child that the system does not allow what its test needs.
constexpr int not_permitted = 77;

namespace detail {

inline pid_t checked(pid_t result, const char* what) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return result;
}

inline pid_t fork_child(const std::function<int()>& body) {
    const pid_t child = checked(::fork(), "fork");
    if (child == 0) {
        int code = EXIT_FAILURE;
        try {
            code = body();
        } catch (...) {
        }
        ::_exit(code);  // no leak check and no handlers of the test program
    }
    return child;
}

}  // namespace detail

/// Runs `body` in a process of its own and gives its exit code; -1 if a signal ended it.
inline int run_in_child(const std::function<int()>& body) {
    const pid_t child = detail::fork_child(body);
    int status = 0;
    detail::checked(::waitpid(child, &status, 0), "waitpid");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A child process that goes from one system call to the next as it is told to.
class SteppedChild {
 public:
    explicit SteppedChild(const std::function<int()>& body)
        : child_(detail::fork_child([&body] {
              if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
                  return not_permitted;
              }
              ::raise(SIGSTOP);
              return body();
          })) {
        wait();
        if (running()) {
            constexpr long options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL;
            detail::checked(
                static_cast<pid_t>(::ptrace(PTRACE_SETOPTIONS, child_, nullptr, options)),
                "ptrace");
        }
    }
    ~SteppedChild() { kill(); }
    SteppedChild(const SteppedChild&) = delete;
    SteppedChild& operator=(const SteppedChild&) = delete;

    /// Goes on to the next beginning or end of a system call; false once the child has ended.
    bool step() {
        int signal = 0;
        while (running()) {
            detail::checked(static_cast<pid_t>(::ptrace(PTRACE_SYSCALL, child_, nullptr, signal)),
                            "ptrace");
            wait();
            if (!running() || WSTOPSIG(status_) == (SIGTRAP | 0x80)) {
                break;
            }
            signal = WSTOPSIG(status_);
        }
        return running();
    }

    /// Lets it run to its end and gives its exit code; -1 if a signal ended it.
    int finish() {
        while (step()) {
        }
        return exit_code();
    }

    /// Ends it at once, as a power failure of this one program would.
    void kill() {
        if (running()) {
            ::kill(child_, SIGKILL);
            while (running()) {
                wait();
            }
        }
    }

    [[nodiscard]] bool running() const { return WIFSTOPPED(status_); }
    [[nodiscard]] int exit_code() const { return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1; }

    /// Number of the system call that is about to begin; none at the end of one.
    [[nodiscard]] std::optional<long> beginning_call() const {
        __ptrace_syscall_info info{};
        detail::checked(
            static_cast<pid_t>(::ptrace(PTRACE_GET_SYSCALL_INFO, child_, sizeof info, &info)),
            "ptrace");
        if (info.op != PTRACE_SYSCALL_INFO_ENTRY) {
            return std::nullopt;
        }
        return static_cast<long>(info.entry.nr);
    }

#if defined(__x86_64__)
    static constexpr bool can_fail_calls = true;

    /// Makes the system call that is about to begin fail, undone, with this error.
    void fail_call(int error) {
        user_regs_struct registers{};
        ::ptrace(PTRACE_GETREGS, child_, nullptr, &registers);
        registers.orig_rax = ~0ULL;  // no system call has this number
        ::ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
        if (step()) {
            ::ptrace(PTRACE_GETREGS, child_, nullptr, &registers);
            registers.rax = static_cast<unsigned long long>(-static_cast<long long>(error));
            ::ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
        }
    }
#else
    static constexpr bool can_fail_calls = false;
    void fail_call(int /*error*/) {
        throw std::logic_error("not known for this processor");
    }
#endif

 private:
    void wait() {
        detail::checked(::waitpid(child_, &status_, 0), "waitpid");
    }

    pid_t child_;
    int status_ = 0;
};

}  // namespace veldra::testing_support
