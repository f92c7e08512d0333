#pragma once

#include "drawing/layer_frame.h"
#include "model/session.h"
#include "model/target.h"

namespace veldra {

/// Points as filled circles: size by point class, blue for control points, red for new points.
void DrawPointSignatures(Session& session, const LayerFrame& frame, DrawingTarget& target);

/// Places the labels of points and epochs in `session.lbl_pubez` and announces each to the target.
/// A label out of the target's view stays hidden. Points without signatures get a small dot.
void DrawPointLabels(Session& session, const LayerFrame& frame, DrawingTarget& target);

}  // namespace veldra
