#pragma once

#include <vector>

#include "network.h"

namespace veldra::netzsim {

/// A point known in two systems. Control points determine the parameters, the others are only
/// transformed.
struct IdenticalPoint {
    Position source;
    Position target;
    bool control = false;
};

/// Differences at the points of a transformation, metres, and the test values of the target
/// coordinates of the control points (EP is not defined here and stays 0).
struct TransformationResidual {
    Position v;  ///< transformed minus target
    std::array<Reliability, 3> reliability = {};
};

struct TransformationResult {
    std::vector<TransformationResidual> points;  ///< in the order of the points
    int redundancy_plane = 0;
    int redundancy_height = 0;
};

/// Helmert transformation with four parameters in the plane, and for the heights a shift with an
/// inclination in both directions. The target coordinates of the control points are the
/// observations. Formulas: W. Niemeier, "Ausgleichungsrechnung", 2nd ed., de Gruyter 2008.
[[nodiscard]] TransformationResult transform(const std::vector<IdenticalPoint>& points,
                                             double sigma_plane, double sigma_height);

}  // namespace veldra::netzsim
