#pragma once

#include "model/session.h"

namespace veldra {

/// Builds the point table of the current part, with label offsets, moved district labels, object
/// selection and title lines 2 to 4. Throws FatalError when the file cannot be read, and on a point
/// kind or flag beyond 16 bits.
void punkt_lesen(Session& session);

}  // namespace veldra
