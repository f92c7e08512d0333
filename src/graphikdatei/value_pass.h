#pragma once

#include "model/session.h"

namespace veldra {

/// Attaches changes, residuals, ellipses and height errors to the point table, in the modes
/// obj_wert_lage and obj_wert_hoehe; drops those of an earlier reading first. The point table must
/// have been read. Throws FatalError when the file cannot be read and on a 16-bit overflow.
void wert_lesen(Session& session);

}  // namespace veldra
