#pragma once

#include <cstdint>
#include <optional>

#include "shell/session.h"

namespace veldra {

/// Hears from reading and drawing while they run. Whoever works tells first how far it is.
class LongWork {
 public:
    enum class Step : std::uint8_t { unknown, reading, drawing };

    virtual ~LongWork() = default;
    /// Called every few thousand records or drawing operations. False when the work is to end; only
    /// while something stands ready to clear up after it.
    virtual bool goes_on() = 0;

    /// The command runs through the file this many times.
    void expect_readings(int readings);
    /// The file has been read up to this share of it, 0 to 1.
    void tell_reading(double share);
    /// The file has been read to its end once more.
    void tell_read();
    /// The picture has been drawn up to this share of its rows, 0 to 1.
    void tell_drawing(double share);

    [[nodiscard]] Step step() const { return step_; }
    /// How much of the step is done, 0 to 1; of all readings together. None if nobody has told.
    [[nodiscard]] std::optional<double> share() const { return share_; }

 protected:
    /// A command begins: nothing is known of it.
    void forget_shares();

 private:
    Step step_ = Step::unknown;
    std::optional<double> share_;
    int expected_readings_ = 1;
    int readings_ = 0;
};

/// Thrown by work that was told to end.
struct WorkCancelled {};

/// Tells the listener, if there is one, that work goes on; throws WorkCancelled if it shall not.
inline void report_work(LongWork* work) {
    if (work != nullptr && !work->goes_on()) {
        throw WorkCancelled();
    }
}

/// Tells the listener, if there is one, how often the file will be read.
inline void expect_readings(LongWork* work, int readings) {
    if (work != nullptr) {
        work->expect_readings(readings);
    }
}

/// After the reading of a file has been given up: no file is loaded, and nothing of it is left.
void forget_file(Session& session);

}  // namespace veldra
