#pragma once

#include <cstdint>

namespace veldra {

/// The system's requests to end the program (SIGTERM, SIGHUP, SIGINT), turned into bytes to read.
/// They have no effect of their own while this lives. There is one at a time in a process.
class TerminationRequests {
 public:
    /// What becomes of signals that the process was started to ignore, as `nohup` does.
    enum class Ignored : std::uint8_t { taken, stay_ignored };

    explicit TerminationRequests(Ignored ignored = Ignored::taken);
    ~TerminationRequests();
    TerminationRequests(const TerminationRequests&) = delete;
    TerminationRequests& operator=(const TerminationRequests&) = delete;

    /// Readable while a request waits; -1 if the system refuses the means.
    [[nodiscard]] int descriptor() const { return reading_end_; }
    /// Takes the requests that wait.
    void take() const;
    /// Waits for a request and gives its signal; 0 if `wake` was called instead.
    [[nodiscard]] int wait() const;
    /// Ends a `wait` of another thread.
    void wake() const;

 private:
    int reading_end_ = -1;
};

}  // namespace veldra
