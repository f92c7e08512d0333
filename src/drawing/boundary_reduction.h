#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "os/files.h"

namespace veldra {

/// What a reduction came to.
struct ReductionResult {
    std::int64_t segments = 0;  ///< in the input, with those that close a polygon
    std::int64_t dropped = 0;   ///< of these, segments that occur earlier in either direction
};

/// Told from time to time which share of the input is done, 0 to 1.
using ReductionProgress = std::function<void(double)>;

/// Writes a copy of a boundary file without the segments that occur twice, in either direction: the
/// first occurrence stays, so a segment keeps its coarsest level. Points are compared by their text
/// (from the third character of the line to the last one that is no blank). A run of points whose
/// first and last point differ is closed by a segment that joins the two. Object headers end a run
/// and stay as they are, in their places; lines that are neither points nor headers are left out.
/// Takes time and memory in proportion to the input. Throws FatalError when a file cannot be read
/// or written; `output` is replaced as a whole or not at all. Who has chosen its name decides
/// whether a link of that name is followed.
ReductionResult reduce_boundaries(const std::string& input, const std::string& output,
                                  const ReductionProgress& progress,
                                  NamedBy named_by = NamedBy::user);

}  // namespace veldra
