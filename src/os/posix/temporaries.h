#pragma once

#include <mutex>
#include <string>

namespace veldra {

/// Access to the list of files and folders of this process that must not outlive it. There is one
/// list in a process, as signals are the process's, and what a signal ends clears nothing up by
/// itself. While a hold lives, no other thread changes the list or clears it away; whoever makes or
/// removes such a file does so under it, so that none is missed.
class TemporariesHold {
 public:
    TemporariesHold();
    void add(const std::string& path) const;
    void forget(const std::string& path) const;
    /// Removes all that is on the list, folders with what they hold.
    void clear_away() const;

 private:
    std::unique_lock<std::recursive_mutex> lock_;
};

}  // namespace veldra
