#pragma once

#include <functional>

#include "drawing/layer_frame.h"
#include "drawing/target.h"
#include "drawing/text_measurer.h"
#include "shell/session.h"
#include "shell/user_interface.h"

namespace veldra {

/// Renders the current network part at the current viewport into an empty target, places the
/// labels, and brings window caption, menus and toolbar in `session.window` into line. A part
/// without anything to draw is reported in a message box and loses its mark for plotting.
void DrawAll(Session& session, DrawingTarget& target, TextMeasurer& measurer, UserInterface& ui);

/// The layers of observations, signatures and values in their fixed order, without boundaries,
/// grid and labels.
void draw_network(Session& session, const LayerFrame& frame, DrawingTarget& target);

/// Draws on a target that `session.work` follows. A drawing that the user gives up leaves what has
/// been drawn, without any labels.
void draw_or_give_up(Session& session, DrawingTarget& target,
                     const std::function<void(DrawingTarget&)>& draw);

}  // namespace veldra
