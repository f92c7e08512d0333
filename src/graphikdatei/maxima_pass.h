#pragma once

#include "model/session.h"

namespace veldra {

/// Finds the largest value of each kind over the whole file, all network parts together, and the
/// labels of their points. Throws FatalError when the file cannot be read.
void maxima_lesen(Session& session);

}  // namespace veldra
