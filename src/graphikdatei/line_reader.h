#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "os/files.h"

namespace veldra {

class LongWork;

/// Reads a file line by line as bytes. A line ends with LF; one CR before it belongs to the end.
/// The last line needs no end. Holds a window of 256 KB of the file, never the whole; of a line
/// that fills it the first 32768 bytes are handed out, more than a line with tokens can have.
class LineReader {
 public:
    /// Throws FatalError, naming file and reason, when the file cannot be opened. `work` hears of
    /// each window that is read, and how much of the file has been read by then.
    explicit LineReader(const std::string& path, LongWork* work = nullptr);

    /// Moves to the next line; false at the end of the file. The line stays valid until the next
    /// call. Throws FatalError when reading fails.
    bool next(std::string_view& line) { return take_line(line) || next_of_windows(line); }

    /// Number of the line read last, from 1.
    [[nodiscard]] std::int64_t line_number() const { return line_number_; }

 private:
    /// The next line if the window holds its end.
    bool take_line(std::string_view& line) {
        const char* const bytes = buffer_.data();
        const void* const found = std::memchr(bytes + scanned_, '\n', end_ - scanned_);
        if (found == nullptr) {
            return false;
        }
        const auto at = static_cast<std::size_t>(static_cast<const char*>(found) - bytes);
        const bool carriage_return = at > begin_ && bytes[at - 1] == '\r';
        line = std::string_view(bytes + begin_, at - begin_ - (carriage_return ? 1 : 0));
        begin_ = scanned_ = at + 1;
        ++line_number_;
        return true;
    }
    bool next_of_windows(std::string_view& line);
    bool cut_line(std::string_view& line);
    bool refill();
    bool fill();
    void tell_work(std::size_t count);

    LongWork* work_;
    InputFile file_;
    std::uint64_t size_ = 0;   ///< bytes of the file
    std::uint64_t read_ = 0;   ///< bytes of it that have been read
    bool at_the_end_ = false;  ///< and that this was all of it has been told
    std::vector<char> buffer_;
    std::size_t begin_ = 0;    ///< first byte not yet handed out
    std::size_t scanned_ = 0;  ///< bytes before it hold no line end
    std::size_t end_ = 0;      ///< end of what was read
    std::int64_t line_number_ = 0;
};

}  // namespace veldra
