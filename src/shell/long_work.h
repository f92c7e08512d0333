#pragma once

#include "shell/session.h"

namespace veldra {

/// Hears from reading and drawing while they run.
class LongWork {
 public:
    virtual ~LongWork() = default;
    /// Called every few thousand records or drawing operations. False when the work is to end; only
    /// while something stands ready to clear up after it.
    virtual bool goes_on() = 0;
};

/// Thrown by work that was told to end.
struct WorkCancelled {};

/// Tells the listener, if there is one, that work goes on; throws WorkCancelled if it shall not.
inline void report_work(LongWork* work) {
    if (work != nullptr && !work->goes_on()) {
        throw WorkCancelled();
    }
}

/// After the reading of a file has been given up: no file is loaded, and nothing of it is left.
void forget_file(Session& session);

}  // namespace veldra
