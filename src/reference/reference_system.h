#pragma once

#include <cstdint>

#include "settings/settings.h"
#include "shell/session.h"

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

/// The network part's centre and the number of its strip or zone.
struct ReferencePoint {
    double rechts = 0;  ///< metres
    double hoch = 0;
    std::int32_t number = 0;  ///< digits above the sixth of the easting
};
[[nodiscard]] ReferencePoint reference_point(const Session& session);

/// Settles the reference system of the part that has been read: obj_bezu, ellipsoid and mapping
/// from the size of the eastings (numbers up to 15 are strips, greater ones UTM zones), and the
/// meridian strip of the numbering districts, which a user's choice keeps while it lies near.
void ResolveSystem(Session& session);

}  // namespace veldra
