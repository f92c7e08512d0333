#pragma once

#include "model/session.h"

namespace veldra {

/// Reads the file-wide records: builds the table of network parts, takes the title, the plot
/// settings of each part and the vector scales, and makes part 1 the current one (0 if the file
/// has none). Throws FatalError when the file cannot be read, on a NETZTEIL line that ends with its
/// keyword, and on a 16-bit overflow; the session's tables are then in an undefined state.
void kopf_lesen(Session& session);

}  // namespace veldra
