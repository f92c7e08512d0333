#pragma once

#include <cstddef>
#include <thread>

#include "os/termination.h"

namespace veldra {

/// To be called first of all. What cannot be written becomes an error of the one who writes, where
/// the system would end the process (SIGPIPE, SIGXFSZ). A standard stream that is closed stays
/// unusable, but its number is taken: else the next file that is opened would get it, and messages
/// would go into that file.
void prepare_process();

/// Reads up to `size` bytes from the standard input as the process was given it; 0 at its end. A
/// stream that is closed, a socket or another user's pipe cannot be opened anew by a path. Throws
/// FatalError.
std::size_t read_standard_input(char* buffer, std::size_t size);

/// Ends the process by the signal that asks for it (SIGTERM, SIGHUP, SIGINT), as long as this
/// lives, after all temporary files and folders have been removed. Signals that the process was
/// started to ignore stay ignored. There is one at a time in a process, and no other
/// TerminationRequests then.
class CleanTermination {
 public:
    CleanTermination();
    ~CleanTermination();
    CleanTermination(const CleanTermination&) = delete;
    CleanTermination& operator=(const CleanTermination&) = delete;

 private:
    TerminationRequests requests_{TerminationRequests::Ignored::stay_ignored};
    std::thread waiting_;
};

}  // namespace veldra
