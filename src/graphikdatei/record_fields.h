#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "graphikdatei/line_reader.h"
#include "model/tables.h"
#include "text/fatal_error.h"
#include "text/tokens.h"

namespace veldra {

/// The records of a file that a pass may want, and the place of an error in it. Lines are told by
/// their first character before they are cut into words.
class RecordSource {
 public:
    /// `initials`: first letters of the wanted keywords, in upper case. `work` follows the reading.
    RecordSource(const std::string& path, std::string_view initials, LongWork* work = nullptr);

    /// Moves to the next line that may be a wanted record; false at the end of the file.
    bool next(std::string_view& line) {
        while (reader_.next(line)) {
            if (!line.empty() && wanted_[static_cast<unsigned char>(line.front())]) {
                return true;
            }
        }
        return false;
    }

    /// Number of the line read last, from 1.
    [[nodiscard]] std::int64_t line_number() const { return reader_.line_number(); }

    /// The run-time error `code` at the line read last.
    [[nodiscard]] FatalError error(int code, std::string_view field) const;
    /// A number as a 16-bit integer; throws the overflow error if it is out of range.
    [[nodiscard]] std::int16_t integer(double value, std::string_view field) const;

 private:
    std::string path_;
    LineReader reader_;
    std::array<bool, 256> wanted_{};
};

/// What Record::number may give for a token that is missing: no token reads so.
inline constexpr double absent = std::numeric_limits<double>::quiet_NaN();

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

/// The moved label of a numbering district; none if a token is missing.
[[nodiscard]] std::optional<NubezOffsetRow> district_label(Record& record);

/// Number of the title line (from 0) that a TITEL2 to TITEL4 record sets, or -1.
[[nodiscard]] int title_line(const Record& record);

}  // namespace veldra
