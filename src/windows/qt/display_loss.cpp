#include "windows/qt/display_loss.h"

#include <cstdlib>
#include <utility>

namespace veldra {

namespace {

/// All that an exit handler can reach. Empty unless a notifier lives: the usual end of the program
/// comes here, too.
std::function<void()>& at_loss() {
    static std::function<void()> call;
    return call;
}

void call_at_exit() {
    if (const auto call = std::exchange(at_loss(), {})) {
        call();
    }
}

}  // namespace

DisplayLossNotifier::DisplayLossNotifier(std::function<void()> lost) {
    at_loss() = std::move(lost);
    // Behind the first use, so that the handler runs before what it uses goes.
    static const bool registered = std::atexit(call_at_exit) == 0;
    static_cast<void>(registered);
}

DisplayLossNotifier::~DisplayLossNotifier() {
    at_loss() = {};
}

}  // namespace veldra
