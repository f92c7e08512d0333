#pragma once

#include "model/session.h"

namespace veldra {

/// Fills the observation lines of the current part with the kind that obj_beob selects: 1
/// horizontal, 2 height, 3 GPS vectors, anything else none. The point table must have been read.
/// Throws FatalError when the file cannot be read, and on two opposite GPS vectors of equal easting
/// at both ends, which no row can hold.
void beob_lesen(Session& session);

/// Sets the class of a row's end from the point with these coordinates, if there is one: of the
/// first end for a positive index, of the second for a negative one.
void lin_klasse_setzen(Session& session, double rechts, double hoch, std::int32_t index);

}  // namespace veldra
