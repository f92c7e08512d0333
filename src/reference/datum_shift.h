#pragma once

#include "model/settings.h"

namespace veldra {

/// Geographic coordinates, degrees.
struct GeographicPoint {
    double latitude = 0;
    double longitude = 0;
};

/// The datum transition by five parameters, linear about 50° of latitude. Angles in degrees,
/// parameters in seconds of arc (and seconds of arc per degree).
[[nodiscard]] GeographicPoint DatumShift(const DatumRow& row, const GeographicPoint& point);
/// The row for the other way: every parameter negated, which inverts the transition to the first
/// order only.
[[nodiscard]] DatumRow negated(const DatumRow& row);

}  // namespace veldra
