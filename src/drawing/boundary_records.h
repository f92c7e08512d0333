#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace veldra {

/// Codes of the objects in a boundary file, from coarse to fine.
enum class BoundaryCode : std::uint8_t { lnd, rbz, krs, kfs, gem, so1, so2, so3, other };

/// The code of a header's token, whatever its case.
[[nodiscard]] BoundaryCode boundary_code(std::string_view token);
/// Index 1 to 7 of a code's pen in the settings; 0 for a code that has none.
[[nodiscard]] std::size_t boundary_level(BoundaryCode code);
/// Reading ends at the first header of this code; none if the whole file is wanted.
[[nodiscard]] std::optional<BoundaryCode> boundary_end(std::int16_t obj_verw);

/// A line of a boundary file.
struct BoundaryRecord {
    enum class Kind : std::uint8_t { none, header, first_vertex, next_vertex };

    Kind kind = Kind::none;
    BoundaryCode code = BoundaryCode::other;
    double rechts = 0;  ///< metres; 0 where there is no number
    double hoch = 0;
};

/// Takes a line apart. Its first character decides; a line that begins otherwise is none.
[[nodiscard]] BoundaryRecord read_boundary_record(std::string_view line);

}  // namespace veldra
