#pragma once

#include <cstdint>

#include "model/session.h"
#include "view/viewport.h"

namespace veldra {

// All of these change the viewport only; the caller draws the picture anew.

/// Halves the ground in view about its centre. False, and nothing happens, when the view is 10 m
/// wide or high or less.
bool zoom_in(Session& session);
/// Doubles the ground in view about its centre; there is no upper limit.
void zoom_out(Session& session);

/// Where the view goes; the content of the picture goes the other way.
enum class ShiftTo : std::uint8_t { rechts, links, hoch, runter };
/// Moves the view by a third of its span. It cannot be undone.
void shift_view(Session& session, ShiftTo direction);

/// Fits everything that is shown into the picture. It cannot be undone.
void show_whole(Session& session);

/// Shows the rectangle between two corners in any order. False, and nothing happens, unless both
/// of its spans exceed 5 m.
bool zoom_to_band(Session& session, const WorldPoint& a, const WorldPoint& b);

/// Multiplies the scale by `factor` (above 1: closer) and keeps `fixed` at its place in the
/// picture. False, and nothing happens, when it would go closer on a view of 10 m or less.
bool zoom_about(Session& session, const WorldPoint& fixed, double factor);

/// Makes the last zoom one step with those since `first`, which was the step to undo before it:
/// undo goes back to the view before all of them.
void join_zooms(Session& session, const Undo& first);

/// Moves the view by metres of ground. It cannot be undone.
void pan_view(Session& session, double rechts, double hoch);

/// Restores the view before the last zoom.
void undo_zoom(Session& session);

}  // namespace veldra
