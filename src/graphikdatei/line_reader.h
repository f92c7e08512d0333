#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/os/files.h"

namespace veldra {

class LongWork;

/// Reads a file line by line as bytes. A line ends with LF; one CR before it belongs to the end.
/// The last line needs no end. Holds a window of the file, never the whole.
class LineReader {
 public:
    /// Throws FatalError, naming file and reason, when the file cannot be opened. `work` hears of
    /// each window that is read.
    explicit LineReader(const std::string& path, LongWork* work = nullptr);

    /// Moves to the next line; false at the end of the file. The line stays valid until the next
    /// call. Throws FatalError when reading fails.
    bool next(std::string_view& line);

    /// Number of the line read last, from 1.
    [[nodiscard]] std::int64_t line_number() const { return line_number_; }

 private:
    bool refill();

    LongWork* work_;
    InputFile file_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;    ///< first byte not yet handed out
    std::size_t scanned_ = 0;  ///< bytes before it hold no line end
    std::size_t end_ = 0;      ///< end of what was read
    std::int64_t line_number_ = 0;
};

}  // namespace veldra
