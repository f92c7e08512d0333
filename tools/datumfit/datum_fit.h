#pragma once

#include <functional>
#include <vector>

#include "reference/datum_shift.h"

namespace veldra {

/// A point in both datums, degrees.
struct DatumPoint {
    GeographicPoint from;
    GeographicPoint to;
};

/// Distances on the ground between a transition and the points that it should reach, metres.
struct Deviation {
    double largest = 0;
    double mean = 0;
};

/// DHDN (Bessel) to ETRS 89 (GRS 80) by the seven parameters of EPSG 1777: shifts 598.1, 73.7,
/// 418.2 m, rotations 0.202, 0.045, -2.455 seconds of arc as a position vector transformation,
/// scale 6.7 ppm. Ellipsoidal height 0. Formulas: EPSG Guidance Note 7-2, method 9606.
[[nodiscard]] GeographicPoint dhdn_to_etrs89(const GeographicPoint& point);

/// A grid over Germany, 47.25° to 55° north and 5.75° to 15.25° east, every quarter of a degree.
[[nodiscard]] std::vector<DatumPoint> germany(
    const std::function<GeographicPoint(const GeographicPoint&)>& transformation);

/// The row that reaches the points best: the sum of the squares of the distances in metres is
/// least.
[[nodiscard]] DatumRow fit(const std::vector<DatumPoint>& points);

/// The row with the four decimals that the profile file keeps.
[[nodiscard]] DatumRow rounded(const DatumRow& row);

[[nodiscard]] Deviation deviation(const DatumRow& row, const std::vector<DatumPoint>& points);

}  // namespace veldra
