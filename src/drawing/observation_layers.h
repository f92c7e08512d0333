#pragma once

#include <cstdint>

#include "drawing/layer_frame.h"
#include "model/session.h"
#include "model/target.h"

namespace veldra {

/// Horizontal observations leave orientation directions to DrawOrientations; heights and GPS
/// vectors have none.
enum class ObservationForm : std::uint8_t { horizontal, height_and_gps };

/// Observation lines as two halves, solid where a direction was observed and dotted where not,
/// with the stroke or cross of the undirected observation in the middle.
void DrawObservations(Session& session, const LayerFrame& frame, DrawingTarget& target,
                      ObservationForm form);

/// Observation lines as three thirds (forward, undirected, backward), coloured by test value.
void DrawTestObservations(Session& session, const LayerFrame& frame, DrawingTarget& target,
                          ObservationForm form);

/// Stubs towards remote targets, half solid and half dotted, with the target's name along them.
void DrawOrientations(Session& session, const LayerFrame& frame, DrawingTarget& target);

}  // namespace veldra
