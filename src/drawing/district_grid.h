#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "reference/coordinate_chain.h"

namespace veldra {

/// Kinds of numbering districts (`obj_nube`).
namespace districts {
constexpr std::int16_t none = 0;
constexpr std::int16_t tk25 = 1;
constexpr std::int16_t klv = 2;  ///< kilometre squares, easting then northing
constexpr std::int16_t alk = 3;  ///< kilometre squares, hundreds of kilometres first
constexpr std::int16_t tk50 = 4;
constexpr std::int16_t tk100 = 5;
}  // namespace districts

/// What a grid depends on.
struct DistrictInputs {
    std::int16_t obj_nube = districts::none;
    std::int16_t obj_bezu = 0;
    ChainSetup chain;
    std::int32_t obj_nube_meridian = 0;
    /// Least easting and northing, greatest easting and northing of the ground in view, metres.
    std::array<double, 4> view{};

    bool operator==(const DistrictInputs&) const = default;
};

/// Nodes of map sheets or kilometre squares in the document's coordinates. Nodes count from 1, by
/// columns from west to east and in a column from south to north; element 0 is unused.
struct DistrictGrid {
    std::int32_t grid_spalten = 0;
    std::int32_t grid_zeilen = 0;
    bool grid_zu_gross = false;  ///< too many nodes to be numbered
    std::vector<double> grid_rechts;
    std::vector<double> grid_hoch;
    /// Number of the tile north-east of the node, "" if it has none. Empty for a large grid.
    std::vector<std::string> grid_bez;
    /// The four tiles around the node, for the edge of a plot: two lines with CR LF between them.
    std::vector<std::string> grid_bez_ecke;
    /// False for a node outside the domain of a mapping; its coordinates are 0.
    std::vector<bool> valid;

    [[nodiscard]] std::int32_t nodes() const { return grid_spalten * grid_zeilen; }
    [[nodiscard]] std::size_t node(std::int32_t column, std::int32_t row) const {
        return static_cast<std::size_t>(column - 1) * static_cast<std::size_t>(grid_zeilen) +
               static_cast<std::size_t>(row);
    }
};

/// Map sheets span this many sheets of the TK 25 on each axis.
[[nodiscard]] std::int64_t sheet_factor(std::int16_t obj_nube);
/// What stands before the digits of a map sheet's number: nothing, "L " or "C ".
[[nodiscard]] std::string sheet_prefix(std::int16_t obj_nube);
/// Number of the kilometre square with its south-west corner at (`column`, `row`) kilometres, both
/// from 0 to 9999: both numbers of four digits, or for the ALK the hundreds of both before the rest
/// of both.
[[nodiscard]] std::string square_number(std::int16_t obj_nube, std::int64_t column,
                                        std::int64_t row);

/// Nodes that a grid may have before it goes without numbers.
constexpr std::int64_t most_numbered_nodes = 32767;
/// Nodes beyond which nothing is built: the tiles would be smaller than a pixel by far.
constexpr std::int64_t most_nodes = 10'000'000;

/// The sheets of the TK 25, TK 50 or TK 100. Empty without a reference system.
[[nodiscard]] DistrictGrid BuildTkGrid(const DistrictInputs& inputs);
/// Kilometre squares of the strip `obj_nube_meridian`. Empty without a reference system, and where
/// the view reaches below zero.
[[nodiscard]] DistrictGrid BuildKmGrid(const DistrictInputs& inputs);

/// The grid drawn last, kept while nothing that it depends on changes.
struct DistrictCache {
    std::optional<DistrictInputs> inputs;
    DistrictGrid grid;
};

}  // namespace veldra
