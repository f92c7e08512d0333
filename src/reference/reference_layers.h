#pragma once

#include "drawing/layer_frame.h"
#include "drawing/target.h"
#include "shell/session.h"

namespace veldra {

/// Draws the administrative boundaries of the level `obj_verw` from the boundary file, read anew
/// each time. Nothing without a reference system or without the file.
void DrawBoundaries(Session& session, const LayerFrame& frame, DrawingTarget& target);

/// Draws the numbering district grid inside `area` (ground coordinates) and sets its labels
/// `lbl_nubez`.
void DrawGrid(Session& session, const LayerFrame& frame, DrawingTarget& target,
              const TargetBox& area);

/// Hides and disables all labels of numbering districts.
void HideGridLabels(Session& session);

}  // namespace veldra
