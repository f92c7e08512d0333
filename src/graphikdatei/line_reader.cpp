#include "graphikdatei/line_reader.h"

#include <cstring>

#include "model/long_work.h"
#include "text/tokens.h"

namespace veldra {

namespace {
constexpr std::size_t window_size = std::size_t{256} * 1024;
}

LineReader::LineReader(const std::string& path, LongWork* work)
    : work_(work), file_(path), size_(file_.size()), buffer_(window_size) {}

/// Moves the window on until it holds the end of the next line, or of the file.
bool LineReader::next_of_windows(std::string_view& line) {
    scanned_ = end_;
    while (refill()) {
        if (take_line(line)) {
            return true;
        }
        scanned_ = end_;
        if (begin_ == 0 && end_ == buffer_.size()) {
            return cut_line(line);
        }
    }
    if (begin_ == end_) {
        return false;
    }
    line = std::string_view(buffer_.data() + begin_, end_ - begin_);
    begin_ = scanned_ = end_;
    ++line_number_;
    return true;
}

/// The line that fills the whole window: its beginning stays there, the rest is read over.
bool LineReader::cut_line(std::string_view& line) {
    constexpr std::size_t kept = longest_line + 1;
    bool ended = false;
    begin_ = scanned_ = end_ = kept;
    while (!ended && fill()) {
        const void* const found = std::memchr(buffer_.data() + kept, '\n', end_ - kept);
        ended = found != nullptr;
        begin_ =
            ended ? static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.data()) + 1
                  : kept;
        end_ = ended ? end_ : kept;
    }
    scanned_ = begin_;
    line = std::string_view(buffer_.data(), kept);
    ++line_number_;
    return true;
}

bool LineReader::refill() {
    if (begin_ > 0) {
        std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        scanned_ -= begin_;
        begin_ = 0;
    }
    return fill();
}

/// Reads into the rest of the window; false at the end of the file.
bool LineReader::fill() {
    report_work(work_);
    const std::size_t count = file_.read(buffer_.data() + end_, buffer_.size() - end_);
    end_ += count;
    tell_work(count);
    return count > 0;
}

void LineReader::tell_work(std::size_t count) {
    read_ += count;
    if (work_ == nullptr || at_the_end_) {
        return;
    }
    at_the_end_ = count == 0;
    if (at_the_end_) {
        work_->tell_read();
    } else if (read_ <= size_) {
        work_->tell_reading(static_cast<double>(read_) / static_cast<double>(size_));
    }
}

}  // namespace veldra
