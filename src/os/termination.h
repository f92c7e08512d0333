#pragma once

namespace veldra {

/// The system's requests to end the program (SIGTERM, SIGHUP, SIGINT), turned into bytes to read.
/// They have no effect of their own while this lives. There is one at a time in a process.
class TerminationRequests {
 public:
    TerminationRequests();
    ~TerminationRequests();
    TerminationRequests(const TerminationRequests&) = delete;
    TerminationRequests& operator=(const TerminationRequests&) = delete;

    /// Readable while a request waits; -1 if the system refuses the means.
    [[nodiscard]] int descriptor() const { return reading_end_; }
    /// Takes the requests that wait.
    void take() const;

 private:
    int reading_end_ = -1;
};

}  // namespace veldra
