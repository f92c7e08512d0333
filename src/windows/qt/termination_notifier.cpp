#include "windows/qt/termination_notifier.h"

#include <QSocketNotifier>
#include <utility>

namespace veldra {

TerminationNotifier::TerminationNotifier(std::function<void()> requested) {
    if (requests_.descriptor() < 0) {
        return;
    }
    notifier_ = new QSocketNotifier(requests_.descriptor(), QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this, requested = std::move(requested)] {
        requests_.take();
        requested();
    });
}

}  // namespace veldra
