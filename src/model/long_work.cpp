#include "model/long_work.h"

#include <algorithm>

namespace veldra {

double LongWork::Runs::share(double of_this_one) const {
    return (done + std::clamp(of_this_one, 0.0, 1.0)) / std::max(expected, done + 1);
}

void LongWork::expect_readings(int readings) {
    readings_ = {readings, 0};
    step_ = Step::reading;
    share_.reset();
}

void LongWork::tell_reading(double share) {
    step_ = Step::reading;
    share_ = readings_.share(share);
}

void LongWork::tell_read() {
    tell_reading(1);
    ++readings_.done;
}

void LongWork::expect_writings(int writings) {
    writings_ = {writings, 0};
    step_ = Step::writing;
    share_.reset();
}

void LongWork::tell_writing(double share) {
    step_ = Step::writing;
    share_ = writings_.share(share);
}

void LongWork::tell_written() {
    ++writings_.done;
    step_ = Step::unknown;
    share_.reset();
}

void LongWork::tell_drawing(double share) {
    step_ = Step::drawing;
    share_ = std::clamp(share, 0.0, 1.0);
}

void LongWork::forget_shares() {
    readings_ = {};
    writings_ = {};
    step_ = Step::unknown;
    share_.reset();
}

bool FollowedWriting::goes_on() {
    if (listener_ != nullptr) {
        listener_->tell_writing(share().value_or(0));
        // A wish to end the work is heard by what follows the writing.
        static_cast<void>(listener_->goes_on());
    }
    return true;
}

void FollowedWriting::finish() {
    if (listener_ != nullptr) {
        listener_->tell_written();
    }
}

}  // namespace veldra
