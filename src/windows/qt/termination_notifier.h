#pragma once

#include <QObject>
#include <functional>

#include "os/termination.h"

class QSocketNotifier;

namespace veldra {

/// Calls back from the event loop when the system asks the program to end.
class TerminationNotifier final : public QObject {
    Q_OBJECT

 public:
    explicit TerminationNotifier(std::function<void()> requested);

 private:
    TerminationRequests requests_;
    QSocketNotifier* notifier_ = nullptr;
};

}  // namespace veldra
