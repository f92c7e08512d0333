#pragma once

#include <optional>
#include <string>

#include "drawing/boundary_lines.h"
#include "drawing/geometry.h"
#include "drawing/layer_frame.h"
#include "model/session.h"
#include "model/target.h"
#include "text/fatal_error.h"

namespace veldra {

/// The boundary file exists and cannot be read; what() names it and the reason.
class UnreadableBoundaries : public FatalError {
 public:
    using FatalError::FatalError;
};

/// The boundaries that the session's last drawing read.
[[nodiscard]] inline BoundaryCache& boundary_cache(Session& session) {
    return session.boundaries.of<BoundaryCache>();
}

/// The boundary file of the settings. A relative path is looked up in the current folder, then in
/// that of the graphic file.
[[nodiscard]] std::string boundary_path(const Session& session);
/// The same for another path than that of the settings, Windows-1252.
[[nodiscard]] std::string boundary_path(const Session& session, const std::string& datei);

/// The boundaries of the selected level in the document's system, read anew when the file or
/// anything else that they depend on has changed. Null without a reference system or without a
/// file. Valid until the next call. Throws UnreadableBoundaries.
const BoundaryLines* boundary_lines(Session& session);

/// What of a boundary is drawn beside the legend: nothing of one that lies beneath it, the rest of
/// one that ends there. One that crosses the whole box stays whole.
[[nodiscard]] std::optional<Segment> boundary_beside(const TargetBox& legend,
                                                     const Segment& segment);

/// Draws boundaries up to the first header of the code `end` in the pens of their levels.
void draw_boundary_lines(const BoundaryLines& lines, const std::optional<BoundaryCode>& end,
                         const Settings& settings, const LayerFrame& frame, DrawingTarget& target);

/// Draws the administrative boundaries of the level `obj_verw`. Throws UnreadableBoundaries.
void DrawBoundaries(Session& session, const LayerFrame& frame, DrawingTarget& target);

}  // namespace veldra
