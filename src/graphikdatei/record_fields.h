#pragma once

#include <cstdint>
#include <string_view>

#include "graphikdatei/line_reader.h"
#include "graphikdatei/tokens.h"
#include "shell/fatal_error.h"

namespace veldra {

/// A file being read, for the place of an error.
class RecordSource {
 public:
    explicit RecordSource(const std::string& path) : path_(path), reader_(path) {}

    bool next(std::string_view& line) { return reader_.next(line); }

    /// The run-time error `code` at the line read last.
    [[nodiscard]] FatalError error(int code, std::string_view field) const;
    /// A number as a 16-bit integer; throws the overflow error if it is out of range.
    [[nodiscard]] std::int16_t integer(double value, std::string_view field) const;

 private:
    std::string path_;
    LineReader reader_;
};

/// A flag of a value record: 0 if absent, the integer of a token of one character, 1 for any
/// longer token.
[[nodiscard]] std::int16_t flag_value(const Word& word);

/// The two coordinates of a record, tokens 2 and 3, in metres.
struct Position {
    double rechts = 0;
    double hoch = 0;
};
[[nodiscard]] inline Position read_position(Record& record) {
    return {record.number(2), record.number(3)};
}

}  // namespace veldra
