#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// What the lines of a graphic file are, whatever the selection shows of them.
namespace veldra::batch {

/// A line that no pass takes: its keyword is unknown, or it is a record of a part before the first.
struct UnknownLine {
    std::int64_t line = 0;  ///< from 1
    std::string word;       ///< the first one, UTF-8
};

/// A coordinate of a record whose text is no plain number.
struct OddCoordinate {
    std::int64_t line = 0;
    std::string kind;  ///< keyword, UTF-8
    int token = 0;     ///< place in the record, the keyword is 1
    std::string text;  ///< UTF-8
};

/// Each line of a file under exactly one kind.
struct LineLedger {
    std::int64_t lines = 0;
    std::map<std::string, std::int64_t> kinds;  ///< by keyword (UTF-8); blank_kind, unknown_kind
    std::vector<UnknownLine> unknown;
    std::vector<OddCoordinate> odd_coordinates;
};

inline constexpr const char* blank_kind = "leer";
inline constexpr const char* unknown_kind = "unbekannt";

/// Goes through a file once. Throws FatalError when it cannot be read, and when the lines of the
/// kinds are not all lines.
[[nodiscard]] LineLedger ledger_of(const std::string& path);

}  // namespace veldra::batch
