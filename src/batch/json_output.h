#pragma once

#include <string>
#include <vector>

#include "drawing/district_grid.h"
#include "drawing/recording_target.h"
#include "model/session.h"

namespace veldra::batch {

/// The session's tables as one JSON object in UTF-8. Rows count from 1, element 0 is left out;
/// booleans are 0 and -1; numbers read back exactly.
[[nodiscard]] std::string tables_json(const Session& session);

/// A grid of numbering districts and the system that it stands in as one JSON object. Nodes are in
/// the order of their index from 1; coordinates outside the domain of a mapping are null.
[[nodiscard]] std::string district_json(const ObjectSelection& obj, const DistrictGrid& grid);

/// One JSON array a line for each operation, in order. Coordinates are in the shortest form that
/// reads back to the same 32-bit float.
[[nodiscard]] std::string operations_json(const std::vector<Operation>& operations);

}  // namespace veldra::batch
