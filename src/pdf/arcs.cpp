#include "pdf/arcs.h"

#include <cmath>
#include <numbers>

namespace veldra {

namespace {

/// Equal pieces with handles of 4/3 tan(angle/4), which meet the circle in the middle too.
UnitArcs make_arcs(int count) {
    const double angle = 2 * std::numbers::pi / count;
    const double handle = 4.0 / 3.0 * std::tan(angle / 4);
    UnitArcs arcs;
    for (int i = 0; i < count; ++i) {
        const double c1 = std::cos(i * angle);
        const double s1 = std::sin(i * angle);
        const double c2 = std::cos((i + 1) * angle);
        const double s2 = std::sin((i + 1) * angle);
        arcs.push_back(
            {c1 - handle * s1, s1 + handle * c1, c2 + handle * s2, s2 - handle * c2, c2, s2});
    }
    arcs.back().x3 = 1;
    arcs.back().y3 = 0;
    return arcs;
}

}  // namespace

const UnitArcs& unit_arcs(double radius) {
    // Largest distances from the unit circle: 1.8e-2, 1.5e-3, 2.7e-4, 4.2e-6.
    static const UnitArcs two = make_arcs(2);
    static const UnitArcs three = make_arcs(3);
    static const UnitArcs four = make_arcs(4);
    static const UnitArcs eight = make_arcs(8);
    if (radius <= 500) {
        return two;
    }
    if (radius <= 5000) {
        return three;
    }
    return radius <= 30000 ? four : eight;
}

}  // namespace veldra
