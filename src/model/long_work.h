#pragma once

#include <cstdint>
#include <optional>

namespace veldra {

/// Hears from reading, drawing and writing while they run. Whoever works tells first how far it is.
class LongWork {
 public:
    enum class Step : std::uint8_t { unknown, reading, drawing, writing };

    virtual ~LongWork() = default;
    /// Called every few thousand records or drawing operations. False when the work is to end; only
    /// while something stands ready to clear up after it.
    virtual bool goes_on() = 0;

    /// The command runs through the file this many times, from now on.
    void expect_readings(int readings);
    /// The file has been read up to this share of it, 0 to 1.
    void tell_reading(double share);
    /// The file has been read to its end once more.
    void tell_read();
    /// The command writes this many files in a row, from now on.
    void expect_writings(int writings);
    /// The file has been written up to this share of it, 0 to 1.
    void tell_writing(double share);
    /// One more file has been written; what comes next will be told.
    void tell_written();
    /// The picture has been drawn up to this share of its rows, 0 to 1.
    void tell_drawing(double share);

    [[nodiscard]] Step step() const { return step_; }
    /// How much of the step is done, 0 to 1; of all readings or all writings together. None if
    /// nobody has told.
    [[nodiscard]] std::optional<double> share() const { return share_; }

 protected:
    /// A command begins: nothing is known of it.
    void forget_shares();

 private:
    /// Runs through a file, of which there are several.
    struct Runs {
        /// How much of all is done when that much of the present one is.
        [[nodiscard]] double share(double of_this_one) const;
        int expected = 1;
        int done = 0;
    };

    Step step_ = Step::unknown;
    std::optional<double> share_;
    Runs readings_;
    Runs writings_;
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

/// Tells the listener, if there is one, how many files will be written.
inline void expect_writings(LongWork* work, int writings) {
    if (work != nullptr) {
        work->expect_writings(writings);
    }
}

/// Follows the reading of a file from which another one is written: how far the one has been read
/// is how far the other has been written. Writing is never given up.
class FollowedWriting final : public LongWork {
 public:
    /// `listener` hears of it; null: nobody does.
    explicit FollowedWriting(LongWork* listener) : listener_(listener) {}

    /// Always true.
    bool goes_on() override;
    /// The file has taken its place.
    void finish();

 private:
    LongWork* listener_;
};

}  // namespace veldra
