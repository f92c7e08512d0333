#pragma once

#include "drawing/layer_frame.h"
#include "model/session.h"
#include "model/target.h"

namespace veldra {

/// Kinds 1 to 6 of point values, the slots of widths, colours and scales; another kind is a range
/// error: 1 position changes, 2 position residuals, 3 error ellipses, 4 height changes, 5 height
/// residuals, 6 height errors.

/// Values as vectors from their points; the epochs of a change form one polyline.
void DrawVectors(Session& session, const LayerFrame& frame, DrawingTarget& target, int kind);

/// Residuals of kind 2 or 5 coloured by test value, component by component.
void DrawTestResiduals(Session& session, const LayerFrame& frame, DrawingTarget& target, int kind);

/// Error ellipses of new points.
void DrawEllipses(Session& session, const LayerFrame& frame, DrawingTarget& target);

/// An ellipse in the pen that is set: centre in ground coordinates, semi-axes a and b in metres of
/// ground, a along the azimuth t in gon, clockwise from north.
class LayerSurface;
void DrawErrorEllipse(LayerSurface& surface, double x, double y, double a, double b, double t);

}  // namespace veldra
