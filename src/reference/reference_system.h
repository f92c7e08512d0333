#pragma once

#include <array>
#include <cstdint>

#include "model/session.h"
#include "reference/coordinate_chain.h"
#include "reference/datum_shift.h"

namespace veldra {

/// The network part's centre and the number of its strip or zone.
struct ReferencePoint {
    double rechts = 0;  ///< metres
    double hoch = 0;
    std::int32_t number = 0;  ///< digits above the sixth of the easting
};
[[nodiscard]] ReferencePoint reference_point(const Session& session);

/// The way from reference data in `reference` to the document in its selected system; `rows` are
/// the datum rows of the data, one for each system. A row of zeros stands for a system without one.
[[nodiscard]] ChainSetup chain_setup(const Session& session, const PlaneSystem& reference,
                                     const std::array<DatumRow, 3>& rows);

/// Settles the reference system of the part that has been read: obj_bezu, ellipsoid and mapping
/// from the size of the eastings (numbers up to 15 are strips, greater ones UTM zones), and the
/// meridian strip of the numbering districts, which a user's choice keeps while it lies near.
void ResolveSystem(Session& session);

}  // namespace veldra
