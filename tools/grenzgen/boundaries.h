#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <string_view>

namespace veldra {

/// Where invented boundaries lie and how fine they are.
struct BoundaryPlan {
    std::int64_t centre_rechts = 0;  ///< centimetres, with the digits of strip or zone
    std::int64_t centre_hoch = 0;
    std::int64_t cell = 150000;  ///< side of the smallest areas, centimetres
    int tiles = 1;               ///< the pattern of 16 by 16 cells is repeated so often each way
    int halvings = 2;            ///< a side of a cell has 2 to this power segments
    /// Writing stops behind the object that reaches this number of vertices.
    std::int64_t most_vertices = std::numeric_limits<std::int64_t>::max();
};

/// Takes pieces of a file in their order.
using BoundarySink = std::function<void(std::string_view)>;

/// Writes a boundary file of all levels, coarse ones first: areas within areas, each with its whole
/// outline, so that neighbours have the same border twice and finer levels repeat the borders of
/// coarser ones. Lines end with CR LF. Integers only: the same plan gives the same bytes
/// everywhere. Gives the number of vertices.
std::int64_t write_boundaries(const BoundarySink& sink, const BoundaryPlan& plan);

/// A plan of about this many vertices around 2 500 000, 5 600 000.
[[nodiscard]] BoundaryPlan large_boundary_plan(std::int64_t vertices);

}  // namespace veldra
