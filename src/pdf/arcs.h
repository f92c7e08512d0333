#pragma once

#include <vector>

namespace veldra {

/// A piece of the unit circle as a Bezier curve; it starts where the piece before it ends, the
/// first one at (1, 0).
struct UnitArc {
    double x1, y1, x2, y2, x3, y3;
};
using UnitArcs = std::vector<UnitArc>;

/// Pieces of a whole circle or, stretched, ellipse of this radius (or larger semi-axis) in
/// 1/1000 mm: as many as are needed to stay within 0.01 mm of it up to 2 m.
[[nodiscard]] const UnitArcs& unit_arcs(double radius);

}  // namespace veldra
