#pragma once

#include <functional>

namespace veldra {

/// Calls back when the display goes away, which the toolkit answers by ending the process at once:
/// nothing can be shown any more, no event comes, and what functions keep for the whole run may be
/// gone. There is one at a time in a process.
class DisplayLossNotifier {
 public:
    explicit DisplayLossNotifier(std::function<void()> lost);
    ~DisplayLossNotifier();
    DisplayLossNotifier(const DisplayLossNotifier&) = delete;
    DisplayLossNotifier& operator=(const DisplayLossNotifier&) = delete;
};

}  // namespace veldra
